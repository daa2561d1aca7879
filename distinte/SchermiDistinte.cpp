#include "distinte/SchermiDistinte.h"

#include "distinte/ControllaCampo.h"
#include "frame/core/Formato.h"
#include "frame/core/Sessione.h"
#include "frame/ui/Fine.h"
#include "frame/ui/Finestra.h"
#include "frame/ui/Schermo.h"
#include "lookup/CercaClienteCampo.h"
#include "store/Connessione.h"
#include "store/Griglie.h"
#include "store/Recordset.h"
#include "tables/GesCambi.h"
#include "tables/GesProd.h"
#include "tables/GesTabel.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPalette>
#include <QPushButton>
#include <QSqlQuery>
#include <QStyledItemDelegate>
#include <QStyle>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace sorvane {

namespace {

// The longest values of a field on the data file, trimmed; the few longest
// by characters hold the widest on the screen.
QStringList PiuLunghi(const QString &tabella, const QString &campo)
{
    QStringList testi;
    QSqlQuery q(DbDati());
    if (!q.exec(QStringLiteral("SELECT TRIM(%1) FROM %2 ORDER BY LENGTH(TRIM(%1)) DESC LIMIT 12")
                    .arg(campo, tabella)))
        return testi;
    while (q.next())
        testi.append(q.value(0).toString());
    return testi;
}

// The texts a column must show whole, by its heading; a mark or a column
// unknown here needs no more than its heading.
QStringList TestiPiuLarghi(const QString &testata)
{
    if (testata == QLatin1String("COD."))
        return PiuLunghi(QStringLiteral("TabProdotti"), QStringLiteral("Codice"))
               << QString(15, QLatin1Char('N'));
    if (testata == QLatin1String("DITTA"))
        return PiuLunghi(QStringLiteral("Societa"), QStringLiteral("SocNome"));
    if (testata == QLatin1String("NOMINATIVO"))
        return PiuLunghi(QStringLiteral("Clienti"), QStringLiteral("CliRagsoc"));
    if (testata == QLatin1String("CAUSALE"))
        return PiuLunghi(QStringLiteral("DistCausali"), QStringLiteral("Descrizione"));
    if (testata == QLatin1String("BANCA"))
        return PiuLunghi(QStringLiteral("DistBanche"), QStringLiteral("CodBanca"));
    const QHash<QString, QString> fissi = {
        {QStringLiteral("PRG"), QStringLiteral("999999")},
        {QStringLiteral("DATA"), QStringLiteral("00/00/0000")},
        {QStringLiteral("MON"), QStringLiteral("NNN")},
        {QStringLiteral("IMPORTO"), Format(99999999.99, QStringLiteral("Standard"))},
        {QStringLiteral("ASSEGNO"), QString(15, QLatin1Char('0'))},
        {QStringLiteral("Spese UT"), Format(99999.99, QStringLiteral("Standard"))},
    };
    const auto fisso = fissi.constFind(testata);
    return fisso == fissi.constEnd() ? QStringList() : QStringList{*fisso};
}

} // namespace

QLabel *EtichettaCampo(const QString &testo, QWidget *padre, QWidget *campo)
{
    auto *l = new QLabel(testo, padre);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (campo)
        l->setBuddy(campo);
    return l;
}

QString NomeCampoDistinta(int indice)
{
    if (indice >= CampoPrimoProdotto && indice < CampoPrimoGiro)
        return QStringLiteral("Prodotto %1").arg(indice - CampoPrimoProdotto + 1);
    if (indice >= CampoPrimoGiro && indice <= CampoUltimoGiro)
        return QStringLiteral("Giro %1").arg(indice - CampoPrimoGiro + 1);
    switch (indice) {
    case CampoGiorno: return QStringLiteral("Giorno");
    case CampoMese: return QStringLiteral("Mese");
    case CampoAnno: return QStringLiteral("Anno");
    case CampoCodiceCliente: return QStringLiteral("Codice cliente");
    case CampoNomeCliente: return QStringLiteral("Nome cliente");
    case CampoCausale: return QStringLiteral("Causale");
    case CampoMoneta: return QStringLiteral("Moneta");
    case CampoImporto: return QStringLiteral("Importo");
    case CampoAssegno: return QStringLiteral("Assegno");
    case CampoSpese: return QStringLiteral("Spese UT");
    case CampoGiornoDal: return QStringLiteral("Dal giorno");
    case CampoMeseDal: return QStringLiteral("Dal mese");
    case CampoAnnoDal: return QStringLiteral("Dall'anno");
    case CampoGiornoAl: return QStringLiteral("Al giorno");
    case CampoMeseAl: return QStringLiteral("Al mese");
    case CampoAnnoAl: return QStringLiteral("All'anno");
    case CampoCodiceFiltro: return QStringLiteral("Codice cliente del filtro");
    case CampoNomeFiltro: return QStringLiteral("Nome cliente del filtro");
    default: return QString();
    }
}

QHBoxLayout *InFila(std::initializer_list<QWidget *> widget, bool spinta)
{
    auto *r = new QHBoxLayout;
    r->setSpacing(6);
    for (QWidget *w : widget)
        r->addWidget(w);
    if (spinta)
        r->addStretch(1);
    return r;
}

QPushButton *PulsanteRiga(const QString &testo, const QString &nome, QWidget *padre)
{
    auto *b = new QPushButton(testo, padre);
    b->setObjectName(nome);
    b->setMinimumWidth(110);
    b->setAutoDefault(false);
    QSizePolicy p = b->sizePolicy();
    p.setRetainSizeWhenHidden(true);
    b->setSizePolicy(p);
    return b;
}

QHBoxLayout *FilaPulsanti(std::initializer_list<QWidget *> azioni, QWidget *uscita)
{
    auto *r = new QHBoxLayout;
    r->setSpacing(8);
    for (QWidget *b : azioni)
        r->addWidget(b);
    r->addStretch(1);
    r->addWidget(uscita);
    return r;
}

QGridLayout *RiquadroCampi(QFrame *riquadro)
{
    riquadro->setFrameShape(QFrame::StyledPanel);
    auto *g = new QGridLayout(riquadro);
    g->setContentsMargins(10, 8, 10, 8);
    g->setHorizontalSpacing(6);
    g->setVerticalSpacing(6);
    return g;
}

QGridLayout *PannelloModulo(QFrame *modulo, QLabel *titolo)
{
    modulo->setObjectName(QStringLiteral("pctMod"));
    modulo->setAutoFillBackground(true);
    QFont grassetto = titolo->font();
    grassetto.setBold(true);
    titolo->setFont(grassetto);
    QGridLayout *g = RiquadroCampi(modulo);
    g->addWidget(titolo, 0, 0, 1, 4);
    return g;
}

void DisponiSchermo(QWidget *schermo, QWidget *modulo, QWidget *lista)
{
    auto *colonna = new QVBoxLayout(schermo);
    colonna->setContentsMargins(10, 10, 10, 10);
    colonna->setSpacing(8);
    colonna->addWidget(modulo);
    colonna->addWidget(lista, 1);
    // Where the form takes the list's place, it keeps its own height: the
    // spare one stays blank below it.
    colonna->addStretch(0);
}

void DisponiLista(QWidget *lista, QWidget *filtro, QWidget *pulsanti, QWidget *griglia)
{
    lista->setObjectName(QStringLiteral("pctLista"));
    auto *colonna = new QVBoxLayout(lista);
    colonna->setContentsMargins(0, 0, 0, 0);
    colonna->setSpacing(8);
    colonna->addWidget(filtro);
    colonna->addWidget(pulsanti);
    colonna->addWidget(griglia, 1);
}

void PreparaGrigliaDistinte(QTableView *griglia, QStyledItemDelegate *delegato,
                            QObject *osservatore)
{
    griglia->setSelectionBehavior(QAbstractItemView::SelectRows);
    griglia->setSelectionMode(QAbstractItemView::SingleSelection);
    griglia->setEditTriggers(QAbstractItemView::NoEditTriggers);
    griglia->setWordWrap(false);
    griglia->setTabKeyNavigation(false);
    QPalette tavolozza = griglia->palette();
    tavolozza.setColor(QPalette::Base, Qt::white);
    tavolozza.setColor(QPalette::Text, Qt::black);
    tavolozza.setColor(QPalette::Highlight, QColor(0xDC, 0xE8, 0xF5));
    tavolozza.setColor(QPalette::HighlightedText, Qt::black);
    griglia->setPalette(tavolozza);
    griglia->setItemDelegate(delegato);
    griglia->verticalHeader()->setDefaultSectionSize(griglia->fontMetrics().height() + 6);
    griglia->verticalHeader()->setVisible(false);
    QHeaderView *testata = griglia->horizontalHeader();
    testata->setHighlightSections(false);
    // The spare width stays blank: the last column is as wide as the others'
    // rule makes it.
    testata->setStretchLastSection(false);
    testata->setSectionsClickable(false);
    testata->viewport()->installEventFilter(osservatore);
}

void LarghezzeDiApertura(QTableView *griglia, const QHash<QString, QStringList> &proprie)
{
    const QFontMetrics misura = griglia->fontMetrics();
    // The cell's text stands inside a margin on either side and the grid line.
    const int margine =
        2 * (griglia->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, griglia) + 1)
        + 4;
    const QHeaderView *testata = griglia->horizontalHeader();
    QHash<QString, int> perTestata; // the five codes are measured once
    for (int c = 0; c < testata->count(); ++c) {
        const QString titolo = griglia->model()->headerData(c, Qt::Horizontal).toString();
        auto larghezza = perTestata.find(titolo);
        if (larghezza == perTestata.end()) {
            larghezza = perTestata.insert(titolo, 0);
            const auto propri = proprie.constFind(titolo);
            for (const QString &testo :
                 propri == proprie.constEnd() ? TestiPiuLarghi(titolo) : *propri)
                *larghezza = std::max(*larghezza, misura.horizontalAdvance(testo) + margine);
        }
        griglia->setColumnWidth(c, std::max(*larghezza, testata->sectionSizeHint(c)));
    }
}

bool OrdinaDaTestata(QTableView *griglia, QObject *oggetto, QEvent *evento,
                     const std::function<void(int colonna, bool discendente)> &ordina)
{
    QHeaderView *testata = griglia->horizontalHeader();
    if (oggetto != testata->viewport() || evento->type() != QEvent::MouseButtonPress)
        return false;
    const auto *mouse = static_cast<QMouseEvent *>(evento);
    ordina(testata->logicalIndexAt(mouse->position().toPoint()),
           mouse->button() != Qt::LeftButton);
    return true;
}

void RiempiCombo(QComboBox *combo, const QString &sql, const QString &campo,
                 const std::optional<QString> &primo)
{
    combo->clear();
    combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    if (primo)
        combo->addItem(*primo);
    QSqlQuery q(DbDati());
    if (!q.exec(sql))
        return;
    while (q.next())
        combo->addItem(q.value(campo).toString().trimmed());
}

FuocoCampo FuocoDi(const QEvent *evento)
{
    if (evento->type() == QEvent::FocusIn)
        return FuocoCampo::Entrato;
    if (evento->type() != QEvent::FocusOut)
        return FuocoCampo::Nessuno;
    const Qt::FocusReason perche = static_cast<const QFocusEvent *>(evento)->reason();
    return perche == Qt::ActiveWindowFocusReason || perche == Qt::PopupFocusReason
               ? FuocoCampo::Nessuno
               : FuocoCampo::Lasciato;
}

int EventoCampo(const QList<QLineEdit *> &txt, const QObject *oggetto, const QEvent *evento,
                const std::function<void(int indice, FuocoCampo fuoco)> &fuoco)
{
    const int indice = IndiceCampo(txt, oggetto);
    if (indice == 0)
        return 0;
    const FuocoCampo f = FuocoDi(evento);
    if (f != FuocoCampo::Nessuno)
        fuoco(indice, f);
    return indice;
}

int IndiceCampo(const QList<QLineEdit *> &txt, const QObject *oggetto)
{
    for (int i = 1; i < txt.size(); ++i) {
        if (txt[i] == oggetto)
            return i;
    }
    return 0;
}

void RitornoCampo::vaiA(int indice) const
{
    if (QLineEdit *campo = m_txt.value(indice))
        campo->setFocus(Qt::OtherFocusReason);
}

void RitornoCampo::tornaA(int indice)
{
    m_ritorno = indice;
    QTimer::singleShot(0, m_schermo, [this, indice] {
        if (m_ritorno != indice)
            return;
        vaiA(indice);
        m_ritorno = 0;
    });
}

void RitornoCampo::entrato(int indice)
{
    if (indice == m_ritorno)
        m_ritorno = 0;
}

void ApriModulo(QWidget *lista, QWidget *modulo, QWidget *primo, bool nascondiLista)
{
    modulo->setEnabled(true);
    modulo->show();
    primo->setFocus(Qt::OtherFocusReason);
    if (nascondiLista)
        lista->hide();
    else
        lista->setEnabled(false);
}

void ChiudiModulo(QWidget *modulo)
{
    modulo->hide();
    modulo->setEnabled(false);
}

void TornaAllaLista(QWidget *lista, QWidget *modulo, QTableView *griglia)
{
    lista->setEnabled(true);
    lista->show();
    griglia->setFocus(Qt::OtherFocusReason);
    ChiudiModulo(modulo);
}

void PrimaVista(QWidget *schermo, bool &attivato, bool caricato, QWidget *primo)
{
    if (attivato)
        return;
    attivato = true;
    // The window state once the screen stands in its frame.
    RipristinaFinestra(schermo);
    if (!caricato) {
        QTimer::singleShot(0, schermo, &QWidget::close);
        return;
    }
    QTimer::singleShot(0, primo, [primo] { primo->setFocus(Qt::OtherFocusReason); });
}

void ScaricaSchermo(Schermo *regole, std::initializer_list<Recordset *> tabelle,
                    QTableView *griglia, const QString &chiave)
{
    regole->scarica();
    for (Recordset *t : tabelle)
        t->Close();
    // A grid that never had its columns has no widths to keep.
    if (griglia && griglia->model()->columnCount() > 0)
        SalvaLayoutGriglia(griglia, chiave, 0);
    SalvaFinestra(regole->schermo());
    if (!sessione().ModoProva)
        FineProgramma();
}

void CercaDalCampoMovimento(const QList<QLineEdit *> &txt, int campo, const QString &data,
                            bool &inRicerca)
{
    if (campo >= CampoPrimoProdotto && campo <= CampoUltimoGiro) {
        CercaProdotto(txt[campo], &inRicerca);
        return;
    }
    if (campo != CampoMoneta && campo != CampoCausale)
        return;
    inRicerca = true;
    if (campo == CampoMoneta)
        ScegliMonetaDelCampo(txt[campo], data);
    else
        CercaCausale(txt[campo]);
    inRicerca = false;
    txt[campo]->setFocus(Qt::OtherFocusReason);
}

void CercaClienteEProsegui(QLineEdit *codice, QLineEdit *nome, QWidget *dopo, bool &inRicerca)
{
    inRicerca = true;
    const bool scelto = CercaClienteDelCampo(codice, nome) > 0;
    inRicerca = false;
    if (scelto)
        dopo->setFocus(Qt::TabFocusReason);
    else
        codice->setFocus(Qt::OtherFocusReason);
}

} // namespace sorvane
