// GesProd: the screen, its list face and the way between the faces.

#include "tables/GesProd.h"

#include "frame/core/Campi.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "frame/ui/Finestra.h"
#include "frame/ui/Modale.h"
#include "frame/ui/Schermo.h"
#include "reports/Esporta.h"
#include "store/Griglie.h"
#include "store/Schema.h"
#include "store/Tabelle.h"
#include "tables/ElencoCodici.h"
#include "tables/GesCambi.h"
#include "tables/GesTabel.h"
#include "tables/ModelloProdotti.h"
#include "tables/ModelloQuote.h"

#include <QApplication>
#include <QCheckBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include <cmath>
#include <limits>

namespace sorvane {

namespace {

const QString ChiaveGriglia = QStringLiteral("GesProd");

// A search box takes the field's whole width, and shows at most `massimo`
// characters of it at once.
void Dimensiona(QLineEdit *box, const QString &campo, int massimo, int extra)
{
    const Tabella *t = TrovaTabella(QStringLiteral("TabProdotti"));
    const Colonna *c = t ? t->colonna(campo) : nullptr;
    const int larghezza = c && c->larghezza > 0 ? c->larghezza : massimo;
    box->setMaxLength(larghezza);
    box->setFixedWidth(std::min(larghezza, massimo) * box->fontMetrics().averageCharWidth()
                       + extra);
}

// The local INI's default percentage of a new product's fee shares; 0 when
// the key is missing or holds no number a single precision value can carry.
float PercentualeCommissioni()
{
    const QString testo = LeggiIni(impostazioni().IniLocale, QStringLiteral("PARAMETRI"),
                                   QStringLiteral("PercCommissioni"));
    double valore = 0;
    if (!LeggiNumero(testo, &valore)
        || std::abs(valore) > double(std::numeric_limits<float>::max()))
        return 0;
    return float(valore);
}

} // namespace

GesProd::GesProd(QWidget *padre, std::int16_t azione) : QDialog(padre), m_azione(azione)
{
    setObjectName(QStringLiteral("GesProd"));
    setWindowTitle(QStringLiteral("GESTIONE PRODOTTI"));
    costruisci();
    auto &t = tabelle();
    const QString codice = t.CodiceCercato;
    const QString descrizione = t.DescrizioneCercata;
    m_ricerca = m_codTab;
    m_check1->setChecked((m_azione > 1 ? m_azione - 2 : m_azione) == 1);
    riempiCombo();
    m_percCommissioni = PercentualeCommissioni();
    if (AltriSchermiAperti(this)) {
        if (!descrizione.trimmed().isEmpty()) {
            m_ricerca = m_descTab;
            m_descTab->setText(descrizione);
        } else {
            m_codTab->setText(codice);
        }
    }
    cerca();
    // Until the user drags them, columns as wide as what they hold.
    static const int caratteri[] = {12, 36, 10, 3, 3, 3, 5, 3, 8, 8, 8, 8, 8, 8, 10};
    const int c = fontMetrics().averageCharWidth();
    for (int k = 0; k < int(std::size(caratteri)); ++k)
        m_grid2->setColumnWidth(k, caratteri[k] * c + 16);
    CaricaLayoutGriglia(m_grid2, ChiaveGriglia);
    m_inCaricamento = false;
    QTimer::singleShot(0, this, [this] { m_ricerca->setFocus(); });
}

GesProd::~GesProd() = default;

void GesProd::costruisci()
{
    m_picture1 = costruisciElenco();
    m_picture2 = costruisciScheda();
    m_picture2->hide();
    auto *colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(10, 10, 10, 10);
    colonna->addWidget(m_picture1);
    colonna->addWidget(m_picture2);

    m_schermo = new Schermo(this);
    QList<QLineEdit *> campi{m_codTab, m_descTab, m_cod2, m_des2};
    QList<std::uint8_t> modi{ModoTesto, ModoTesto, ModoTesto, ModoTesto};
    for (int i = 1; i < m_txt.size(); ++i) {
        campi.append(m_txt[i]);
        const bool cifre = (i >= 3 && i <= 5) || (i >= 7 && i <= 9) || (i >= 11 && i <= 13)
                           || i == CampoPeriodo;
        modi.append(i <= CampoISIN ? ModoTesto : cifre ? ModoCifre : ModoImporto);
    }
    campi.append(m_txtNC);
    m_schermo->campi(campi, modi);
    // Enter on a row of the list chooses it, as CONFERMA does.
    m_schermo->tastoGiu = [this](int codice, int) {
        if (codice != tasti::Invio || focusWidget() != m_grid2)
            return false;
        Premi_cmdRt(0);
        return true;
    };
}

QWidget *GesProd::costruisciElenco()
{
    auto *p = new QWidget(this);
    p->setObjectName(QStringLiteral("Picture1"));
    const int c = fontMetrics().averageCharWidth();
    auto *lcod = new QLabel(QStringLiteral("C&odice"), p);
    m_codTab = new QLineEdit(p);
    m_codTab->setObjectName(QStringLiteral("CodTab"));
    Dimensiona(m_codTab, QStringLiteral("Codice"), 10, 2 * c + 12);
    lcod->setBuddy(m_codTab);
    auto *ldesc = new QLabel(QStringLiteral("&Descrizione"), p);
    m_descTab = new QLineEdit(p);
    m_descTab->setObjectName(QStringLiteral("DescTab"));
    Dimensiona(m_descTab, QStringLiteral("Descrizione"), 50, 2 * c + 14);
    ldesc->setBuddy(m_descTab);
    m_chkClose = new QCheckBox(QStringLiteral("C&hiusi"), p);
    m_chkClose->setObjectName(QStringLiteral("chkClose"));
    m_check1 = new QCheckBox(QStringLiteral("Gestio&ne"), p);
    m_check1->setObjectName(QStringLiteral("Check1"));

    m_elenco = new ModelloProdotti(this);
    m_grid2 = new QTableView(p);
    m_grid2->setObjectName(QStringLiteral("TDBGrid2"));
    m_grid2->setAccessibleName(QStringLiteral("Elenco prodotti"));
    m_grid2->setModel(m_elenco);
    m_grid2->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid2->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid2->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid2->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    m_grid2->verticalHeader()->hide();
    m_grid2->setTabKeyNavigation(false); // Tab leaves the list, the arrows walk it
    m_grid2->setMinimumSize(90 * c, 16 * (fontMetrics().height() + 4));
    m_grid2->horizontalHeader()->setSortIndicatorShown(true);
    m_grid2->horizontalHeader()->viewport()->installEventFilter(this);
    m_grid2->installEventFilter(this);

    int i = 0;
    for (const QString &testo : {QStringLiteral("&CONFERMA"), Seleziona,
                                 QStringLiteral("&USCITA")}) {
        auto *b = new QPushButton(testo, p);
        b->setObjectName(QStringLiteral("cmdRt_%1").arg(i));
        b->setAutoDefault(false);
        b->setMinimumWidth(120);
        connect(b, &QPushButton::clicked, this, [this, i] { Premi_cmdRt(i); });
        m_cmdRt.append(b);
        ++i;
    }
    m_cmdExcel = new QPushButton(QStringLiteral("&Excel"), p);
    m_cmdExcel->setObjectName(QStringLiteral("cmdExcel"));
    m_cmdExcel->setAutoDefault(false);
    connect(m_cmdExcel, &QPushButton::clicked, this, &GesProd::Esporta);

    auto *g = new QGridLayout(p);
    g->setContentsMargins(0, 0, 0, 0);
    g->addWidget(lcod, 0, 0);
    g->addWidget(m_codTab, 1, 0, Qt::AlignLeft);
    g->addWidget(ldesc, 0, 1);
    g->addWidget(m_descTab, 1, 1, Qt::AlignLeft);
    g->addWidget(m_chkClose, 1, 2);
    g->addWidget(m_check1, 1, 3);
    g->addWidget(m_grid2, 2, 0, 1, 5);
    auto *pulsanti = new QHBoxLayout;
    pulsanti->addWidget(m_cmdRt[0]);
    pulsanti->addWidget(m_cmdRt[1]);
    pulsanti->addWidget(m_cmdExcel);
    pulsanti->addStretch(1);
    pulsanti->addWidget(m_cmdRt[2]);
    g->addLayout(pulsanti, 3, 0, 1, 5);
    g->setColumnStretch(4, 1);
    g->setRowStretch(2, 1);

    QWidget::setTabOrder(m_codTab, m_descTab);
    QWidget::setTabOrder(m_descTab, m_chkClose);
    QWidget::setTabOrder(m_chkClose, m_check1);
    QWidget::setTabOrder(m_check1, m_grid2);
    QWidget::setTabOrder(m_grid2, m_cmdRt[0]);
    QWidget::setTabOrder(m_cmdRt[0], m_cmdRt[1]);
    QWidget::setTabOrder(m_cmdRt[1], m_cmdExcel);
    QWidget::setTabOrder(m_cmdExcel, m_cmdRt[2]);

    for (QLineEdit *campo : {m_codTab, m_descTab}) {
        campo->installEventFilter(this);
        connect(campo, &QLineEdit::textEdited, this, [this, campo] {
            m_ricerca = campo;
            cerca();
        });
    }
    connect(m_chkClose, &QCheckBox::toggled, this, [this] { cerca(); });
    connect(m_check1, &QCheckBox::toggled, this, [this] { aggiornaPulsanti(); });
    connect(m_grid2, &QTableView::doubleClicked, this, [this] { Premi_cmdRt(0); });
    return p;
}

void GesProd::cerca()
{
    RicercaProdotti r = m_elenco->ricerca();
    r.testo = m_ricerca->text();
    r.perDescrizione = m_ricerca == m_descTab;
    r.chiusi = m_chkClose->isChecked();
    interroga(r);
    aggiornaPulsanti();
}

void GesProd::interroga(const RicercaProdotti &ricerca)
{
    // A new query resets the grid's columns: their widths are kept.
    QList<int> larghezze;
    for (int k = 0; k < m_elenco->columnCount(); ++k)
        larghezze.append(m_grid2->columnWidth(k));
    m_elenco->cerca(ricerca);
    for (int k = 0; k < larghezze.size(); ++k)
        m_grid2->setColumnWidth(k, larghezze[k]);
}

void GesProd::OrdinaPerColonna(int colonna, bool ascendente)
{
    const QList<ColonnaProdotti> &colonne = ColonneProdotti();
    if (colonna < 0 || colonna >= colonne.size() || !colonne[colonna].ordinabile)
        return;
    RicercaProdotti r = m_elenco->ricerca();
    r.colonna = colonna;
    r.ascendente = ascendente;
    interroga(r);
    m_grid2->horizontalHeader()->setSortIndicator(
        colonna, ascendente ? Qt::AscendingOrder : Qt::DescendingOrder);
    aggiornaPulsanti();
}

void GesProd::aggiornaPulsanti()
{
    const QString testo = m_ricerca->text();
    // Two rows fetched tell "many" as well as all of them would.
    const int righe = m_elenco->rowCount();
    const PulsantiElenco p = AggiornaPulsanti(righe, testo, false);
    m_cmdRt[0]->setVisible(p.conferma);
    const bool gestione = p.secondo == Seleziona || m_check1->isChecked();
    m_cmdRt[1]->setVisible(!p.secondo.isEmpty() && gestione);
    if (!p.secondo.isEmpty())
        m_cmdRt[1]->setText(p.secondo);
}

bool GesProd::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (oggetto == m_grid2->horizontalHeader()->viewport()
        && (evento->type() == QEvent::MouseButtonPress
            || evento->type() == QEvent::MouseButtonDblClick)) {
        // The heading sorts through the search, never by itself.
        auto *mouse = static_cast<QMouseEvent *>(evento);
        if (evento->type() == QEvent::MouseButtonPress)
            OrdinaPerColonna(m_grid2->horizontalHeader()->logicalIndexAt(
                                 mouse->position().toPoint()),
                             mouse->button() == Qt::LeftButton);
        return true;
    }
    if (oggetto == m_grid2 && evento->type() == QEvent::FocusIn) {
        if (m_elenco->rowCount() == 0) {
            m_ricerca->setFocus();
            return false;
        }
        m_secondoPrima = m_cmdRt[1]->text();
        m_cmdRt[1]->setText(Ricerca);
        m_cmdRt[1]->show();
        if (!m_grid2->currentIndex().isValid())
            m_grid2->setCurrentIndex(m_elenco->index(0, 0));
    } else if (oggetto == m_grid2 && evento->type() == QEvent::FocusOut) {
        if (QApplication::focusWidget() != m_cmdRt[1]
            && static_cast<QFocusEvent *>(evento)->reason() != Qt::PopupFocusReason)
            aggiornaPulsanti();
    } else if (oggetto == m_codTab && evento->type() == QEvent::FocusOut && !m_inCaricamento
               && m_picture1->isVisible() && !m_schermo->inScarico()
               && static_cast<QFocusEvent *>(evento)->reason() != Qt::ActiveWindowFocusReason
               && static_cast<QFocusEvent *>(evento)->reason() != Qt::PopupFocusReason) {
        if (m_codTab->text().trimmed().isEmpty()) {
            // Nothing typed: the search goes on by description.
            if (QApplication::focusWidget() != m_descTab && focusWidget() == m_codTab)
                m_descTab->setFocus();
        } else if (m_elenco->rowCount() > 0) {
            caricaProdotto(m_elenco->codice(0));
        }
    } else if (evento->type() == QEvent::FocusOut && !m_schermo->inScarico()
               && m_picture2->isVisible()) {
        fuocoUscito(oggetto);
    } else if (evento->type() == QEvent::FocusIn && oggetto == m_txt.value(CampoMonetaProdotto)) {
        m_monetaEntrata = m_txt[CampoMonetaProdotto]->text().trimmed();
    } else if (evento->type() == QEvent::MouseButtonDblClick
               && oggetto == m_txt.value(CampoMonetaProdotto)) {
        sessione().CodiceStop = 0;
        ScegliMonetaDelCampo(m_txt[CampoMonetaProdotto], sessione().OggiTesto);
        m_monetaEntrata = m_txt[CampoMonetaProdotto]->text().trimmed();
        return true;
    } else if (oggetto == m_grid1 && evento->type() == QEvent::KeyPress
               && static_cast<QKeyEvent *>(evento)->key() == Qt::Key_Delete) {
        m_quote->elimina(m_grid1->currentIndex().row());
        return true;
    }
    return QDialog::eventFilter(oggetto, evento);
}

void GesProd::Premi_cmdRt(int indice)
{
    auto &t = tabelle();
    t.CodiceCercato.clear();
    t.DescrizioneCercata.clear();
    if (m_codTab->isVisible())
        t.CodiceCercato = m_codTab->text().trimmed();
    if (indice == 2) {
        reject();
        return;
    }
    const QString didascalia = m_cmdRt[1]->text();
    if (indice == 1 && didascalia == Seleziona) {
        m_grid2->setFocus();
        return;
    }
    if (indice == 1 && didascalia == Ricerca) {
        aggiornaPulsanti();
        m_ricerca->setFocus();
        return;
    }
    const QModelIndex attuale = m_grid2->currentIndex();
    QString codice = m_elenco->codice(attuale.isValid() ? attuale.row()
                                                        : (m_elenco->rowCount() == 1 ? 0 : -1));
    if (codice.isEmpty() && didascalia != Inserisci)
        codice = m_codTab->text().trimmed();
    caricaProdotto(codice);
    if (indice == 0) {
        accept();
        return;
    }
    mostraScheda(didascalia == Inserisci ? QString() : codice);
}

void GesProd::caricaProdotto(const QString &codice)
{
    auto &t = tabelle();
    const std::optional<Prodotto> p = LeggiProdotto(codice);
    t.CodiceCercato = p ? p->Codice : QString();
    t.DescrizioneCercata = p ? p->Descrizione.trimmed() : QString();
}

void GesProd::tornaAllaLista()
{
    pulisciScheda();
    m_txtNC->hide();
    m_lNC->hide();
    tabelle().CodiceCercato.clear();
    tabelle().DescrizioneCercata.clear();
    m_codTab->clear();
    m_descTab->clear();
    m_picture2->hide();
    m_picture1->show();
    m_ricerca = m_codTab;
    cerca();
    m_codTab->setFocus();
}

void GesProd::Esporta()
{
    EsportaGriglia(m_grid2, m_elenco, QStringLiteral("Prodotti"));
}

void GesProd::ChiudiMerci()
{
    // The list's query holds the product table open; letting it go frees it.
    m_elenco->clear();
}

void GesProd::done(int esito)
{
    if (esito != QDialog::Accepted) {
        tabelle().CodiceCercato.clear();
        tabelle().DescrizioneCercata.clear();
    }
    m_schermo->scarica();
    SalvaLayoutGriglia(m_grid2, ChiaveGriglia);
    ChiudiMerci();
    QDialog::done(esito);
}

bool CercaProdotto(QLineEdit *campo, bool *inRicerca)
{
    if (!campo || !campo->isEnabled() || campo->isReadOnly())
        return false;
    if (inRicerca)
        *inRicerca = true;
    auto &t = tabelle();
    t.CodiceCercato = campo->text().trimmed();
    t.DescrizioneCercata.clear();
    GesProd lookup(campo->window());
    CentraFinestra(&lookup);
    EseguiModale(lookup);
    if (!t.CodiceCercato.isEmpty())
        campo->setText(t.CodiceCercato);
    if (inRicerca)
        *inRicerca = false;
    campo->setFocus(Qt::OtherFocusReason);
    return true;
}

} // namespace sorvane
