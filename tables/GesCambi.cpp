#include "tables/GesCambi.h"

#include "frame/core/Campi.h"
#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/ui/Cursore.h"
#include "frame/ui/Finestra.h"
#include "frame/ui/Modale.h"
#include "frame/ui/Schermo.h"
#include "reports/Esporta.h"
#include "store/Connessione.h"
#include "store/Tabelle.h"
#include "tables/AggNazioni.h"
#include "tables/CambiModello.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

namespace sorvane {

namespace {

const char *const NomiCampi[] = {"", "Giorno", "Mese", "Anno"};

// The rate's editor passes its keys to the screen first, which lets only
// what an amount may hold through.
class DelegatoRapporto : public QStyledItemDelegate
{
public:
    DelegatoRapporto(QObject *filtro, QObject *padre)
        : QStyledItemDelegate(padre), m_filtro(filtro) {}
    QWidget *createEditor(QWidget *padre, const QStyleOptionViewItem &opzioni,
                          const QModelIndex &indice) const override
    {
        QWidget *editore = QStyledItemDelegate::createEditor(padre, opzioni, indice);
        editore->setAccessibleName(QStringLiteral("Rapporto"));
        editore->installEventFilter(m_filtro);
        return editore;
    }

private:
    QObject *m_filtro;
};

// A typed character through SoloImporto: dropped, let through, or sent on
// as the character it became. True when the key was dealt with here.
bool FiltraImporto(QObject *oggetto, QKeyEvent *tasto)
{
    const QString testo = tasto->text();
    if (testo.size() != 1 || !CarattereDigitato(testo[0].unicode())
        || tasto->modifiers().testFlag(Qt::ControlModifier))
        return false;
    const int prima = testo[0].unicode();
    int codice = prima;
    SoloImporto(codice);
    if (codice == prima)
        return false;
    if (codice != 0) {
        QKeyEvent nuovo(QEvent::KeyPress, tasto->key(), tasto->modifiers(),
                        QString(QChar(codice)));
        QCoreApplication::sendEvent(oggetto, &nuovo);
    }
    return true;
}

QLineEdit *CampoData(QWidget *padre, int indice, int lunghezza)
{
    auto *campo = new QLineEdit(padre);
    campo->setObjectName(QStringLiteral("txt%1").arg(indice));
    campo->setAccessibleName(QString::fromLatin1(NomiCampi[indice]));
    campo->setMaxLength(lunghezza);
    campo->setAlignment(Qt::AlignCenter);
    campo->setFixedWidth(campo->fontMetrics().horizontalAdvance(QString(lunghezza + 2, '0')));
    return campo;
}

QToolButton *Freccia(QWidget *padre, Qt::ArrowType verso, const QString &nome,
                     const QString &descrizione)
{
    auto *b = new QToolButton(padre);
    b->setObjectName(nome);
    b->setArrowType(verso);
    b->setAccessibleName(descrizione);
    b->setToolTip(descrizione);
    b->setFocusPolicy(Qt::NoFocus);
    b->setAutoRepeat(true);
    b->setFixedSize(22, 13);
    return b;
}

} // namespace

GesCambi::GesCambi(QWidget *padre) : QDialog(padre), m_modo(gesCambi().ModoCambi)
{
    setObjectName(QStringLiteral("GesCambi"));
    setWindowTitle(QStringLiteral("Gestione cambi"));
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    costruisci();
    resize(InPixel(11400), InPixel(7200));
    RipristinaFinestra(this);

    if (!ApriConRiprova(m_cambi, QStringLiteral("TabCambi"),
                        QStringLiteral("ERRORE IN APERTURA ARCHIVIO Cambi"), true))
        return;
    // The caller's field is in error: the rates are not to be touched now.
    if (sessione().CodiceStop > 0) {
        m_modello->blocca(true);
        m_cmdRp[1]->hide();
    }
    m_label2->hide();
    setWindowTitle(TitoloCambi(m_modo));
    if (m_modo == CambiAreaEuro) {
        scriviData(GiornoAreaEuro);
        m_spin->hide();
    } else {
        scriviData(gesCambi().DataCambi);
    }
    for (int i = 1; i <= 3; ++i)
        m_txt[i]->setEnabled(m_modo == CambiExtraEuro);
    caricaValute();
    caricaCambi();
}

GesCambi::~GesCambi()
{
    m_cambi.Close();
}

void GesCambi::costruisci()
{
    m_label1 = new QLabel(QStringLiteral("Valute del"), this);
    m_label1->setObjectName(QStringLiteral("Label1"));
    m_txt = {nullptr, CampoData(this, 1, 2), CampoData(this, 2, 2), CampoData(this, 3, 4)};
    m_label1->setBuddy(m_txt[1]);

    m_spin = new QWidget(this);
    m_spin->setObjectName(QStringLiteral("SpinButton1"));
    auto *frecce = new QVBoxLayout(m_spin);
    frecce->setContentsMargins(0, 0, 0, 0);
    frecce->setSpacing(0);
    m_spinSu = Freccia(m_spin, Qt::UpArrow, QStringLiteral("SpinButton1Su"),
                       QStringLiteral("Giorno successivo"));
    m_spinGiu = Freccia(m_spin, Qt::DownArrow, QStringLiteral("SpinButton1Giu"),
                        QStringLiteral("Giorno precedente"));
    frecce->addWidget(m_spinSu);
    frecce->addWidget(m_spinGiu);

    m_modello = new ModelloCambi(m_elenco, this);
    m_griglia = new QTableView(this);
    m_griglia->setObjectName(QStringLiteral("tdbgCambi"));
    m_griglia->setAccessibleName(QStringLiteral("Cambi delle valute"));
    m_griglia->setModel(m_modello);
    m_griglia->setItemDelegateForColumn(ColRapporto, new DelegatoRapporto(this, m_griglia));
    m_griglia->setSelectionMode(QAbstractItemView::SingleSelection);
    m_griglia->verticalHeader()->setDefaultSectionSize(m_griglia->fontMetrics().height() + 6);
    m_griglia->verticalHeader()->setFixedWidth(16);
    // In the picker a double click chooses; elsewhere it edits the rate.
    QAbstractItemView::EditTriggers modifica = QAbstractItemView::AnyKeyPressed
                                               | QAbstractItemView::EditKeyPressed
                                               | QAbstractItemView::SelectedClicked;
    if (m_modo != RicercaValute)
        modifica |= QAbstractItemView::DoubleClicked;
    m_griglia->setEditTriggers(modifica);
    const int cifra = m_griglia->fontMetrics().horizontalAdvance(QLatin1Char('0'));
    const int larghezze[ColonneCambi] = {6, 30, 16, 3, 10, 16};
    for (int c = 0; c < ColonneCambi; ++c)
        m_griglia->setColumnWidth(c, larghezze[c] * cifra + 12);
    m_griglia->horizontalHeader()->setStretchLastSection(true);

    const char *const testi[] = {"&USCITA", "&CONFERMA", "&MONETE"};
    for (int i = 0; i < 3; ++i) {
        auto *b = new QPushButton(QString::fromLatin1(testi[i]), this);
        b->setObjectName(QStringLiteral("CmdRp%1").arg(i));
        b->setAutoDefault(false);
        m_cmdRp.append(b);
    }
    m_cmdExcel = new QPushButton(QStringLiteral("E&XCEL"), this);
    m_cmdExcel->setObjectName(QStringLiteral("cmdExcel"));
    m_cmdExcel->setAutoDefault(false);

    m_label2 = new QLabel(this);
    m_label2->setObjectName(QStringLiteral("Label2"));
    m_label2->setFrameShape(QFrame::Box);
    m_label2->setAutoFillBackground(true);
    m_label2->setAttribute(Qt::WA_TransparentForMouseEvents);
    QPalette colori = m_label2->palette();
    colori.setColor(QPalette::Window, QColor(255, 255, 192));
    m_label2->setPalette(colori);

    auto *data = new QHBoxLayout;
    data->addWidget(m_label1);
    for (int i = 1; i <= 3; ++i) {
        if (i > 1)
            data->addWidget(new QLabel(QStringLiteral("/"), this));
        data->addWidget(m_txt[i]);
    }
    data->addWidget(m_spin);
    data->addStretch(1);
    auto *pulsanti = new QHBoxLayout;
    pulsanti->addWidget(m_cmdRp[1]);
    pulsanti->addWidget(m_cmdRp[2]);
    pulsanti->addWidget(m_cmdExcel);
    pulsanti->addStretch(1);
    pulsanti->addWidget(m_cmdRp[0]);
    auto *righe = new QVBoxLayout(this);
    righe->addLayout(data);
    righe->addWidget(m_griglia, 1);
    righe->addLayout(pulsanti);
    setTabOrder(m_txt[1], m_txt[2]);
    setTabOrder(m_txt[2], m_txt[3]);
    setTabOrder(m_txt[3], m_griglia);
    setTabOrder(m_griglia, m_cmdRp[1]);
    setTabOrder(m_cmdRp[1], m_cmdRp[2]);
    setTabOrder(m_cmdRp[2], m_cmdExcel);
    setTabOrder(m_cmdExcel, m_cmdRp[0]);

    m_schermo = new Schermo(this);
    m_schermo->campi(m_txt.mid(1), {ModoCifre, ModoCifre, ModoCifre});
    // Installed after the screen's own filter, so seen before it.
    for (int i = 1; i <= 3; ++i)
        m_txt[i]->installEventFilter(this);
    m_griglia->installEventFilter(this);
    m_griglia->viewport()->installEventFilter(this);

    connect(m_cmdRp[0], &QPushButton::clicked, this, &QDialog::reject);
    connect(m_cmdRp[1], &QPushButton::clicked, this, &GesCambi::Conferma);
    connect(m_cmdRp[2], &QPushButton::clicked, this, &GesCambi::Monete);
    connect(m_cmdExcel, &QPushButton::clicked, this, &GesCambi::Esporta);
    connect(m_spinGiu, &QToolButton::clicked, this, [this] { CambiaGiorno(-1); });
    connect(m_spinSu, &QToolButton::clicked, this, [this] { CambiaGiorno(1); });
    connect(m_griglia, &QTableView::doubleClicked, this, [this](const QModelIndex &i) {
        if (m_modo == RicercaValute)
            Scegli(i.row());
    });
}

void GesCambi::showEvent(QShowEvent *evento)
{
    QDialog::showEvent(evento);
    if (m_mostrato)
        return;
    m_mostrato = true;
    if (m_modo == CambiExtraEuro) {
        m_txt[1]->setFocus(Qt::OtherFocusReason);
    } else {
        m_griglia->setFocus(Qt::OtherFocusReason);
        if (m_elenco.size() > 0)
            m_griglia->setCurrentIndex(m_modello->index(0, ColRapporto));
    }
}

void GesCambi::done(int esito)
{
    m_schermo->scarica();
    SalvaFinestra(this);
    m_cambi.Close();
    QDialog::done(esito);
}

void GesCambi::caricaValute()
{
    QString errore;
    if (!m_elenco.caricaValute(m_modo, &errore))
        Messaggio(errore, QString(), Icona::Stop);
    m_modello->ricaricato();
}

void GesCambi::caricaCambi()
{
    CursoreAttesa();
    m_caricamento = true;
    const QString testo =
        m_txt[1]->text() + QLatin1Char('/') + m_txt[2]->text() + QLatin1Char('/') + m_txt[3]->text();
    const std::optional<QDate> data = LeggiData(testo);
    if (data) {
        m_giorno = GiornoDaData(*data);
    } else {
        m_giorno = GiornoDaData(QDate::currentDate());
        scriviData(m_giorno);
    }
    m_elenco.caricaCambi(m_cambi, m_giorno);
    m_caricamento = false;
    m_modello->righeCambiate();
    CursoreNormale();
}

void GesCambi::scriviData(double giorno)
{
    m_txt[1]->setText(Format(giorno, QStringLiteral("dd")));
    m_txt[2]->setText(Format(giorno, QStringLiteral("mm")));
    m_txt[3]->setText(Format(giorno, QStringLiteral("yyyy")));
    for (int i = 1; i <= 3; ++i)
        m_entrata[i] = m_txt[i]->text();
}

void GesCambi::CambiaGiorno(int passo)
{
    const std::optional<QDate> data = LeggiData(m_txt[1]->text() + QLatin1Char('/')
                                                + m_txt[2]->text() + QLatin1Char('/')
                                                + m_txt[3]->text());
    if (!data)
        return;
    scriviData(GiornoDaData(*data) + passo);
    caricaCambi();
}

bool GesCambi::controllaData(int campo)
{
    const QString testo = m_txt[campo]->text().trimmed();
    bool numero = false;
    const int valore = testo.toInt(&numero);
    QString errore;
    if (campo == 1 && !(numero && valore >= 1 && valore <= 31))
        errore = QStringLiteral("GIORNO DATA INDICE ERRATO");
    else if (campo == 2 && !(numero && valore >= 1 && valore <= 12))
        errore = QStringLiteral("MESE DATA INDICE ERRATO");
    else if (campo == 3
             && !IsDate(m_txt[1]->text() + QLatin1Char('/') + m_txt[2]->text() + QLatin1Char('/')
                        + testo))
        errore = QStringLiteral("DATA INDICE ERRATA");
    if (errore.isEmpty())
        return true;
    m_inErrore = true;
    Messaggio(errore, NomeProgrammaMaiuscolo() + QStringLiteral(" -ERRORE N. ")
                          + QString::number(campo),
              Icona::Stop);
    m_inErrore = false;
    m_txt[campo]->setFocus(Qt::OtherFocusReason);
    return false;
}

int GesCambi::campoData(QObject *oggetto) const
{
    for (int i = 1; i <= 3; ++i) {
        if (m_txt[i] == oggetto)
            return i;
    }
    return 0;
}

bool GesCambi::tastoData(int campo, int tasto)
{
    // Enter goes down, and from the year into the grid; the arrows walk the
    // three fields round.
    if ((tasto == Qt::Key_Return || tasto == Qt::Key_Enter) && campo == 3) {
        m_griglia->setFocus(Qt::TabFocusReason);
        return true;
    }
    int prossimo = 0;
    if (tasto == Qt::Key_Return || tasto == Qt::Key_Enter || tasto == Qt::Key_Down)
        prossimo = campo == 3 ? 1 : campo + 1;
    else if (tasto == Qt::Key_Up)
        prossimo = campo == 1 ? 3 : campo - 1;
    if (prossimo == 0)
        return false;
    m_txt[prossimo]->setFocus(Qt::TabFocusReason);
    return true;
}

bool GesCambi::tastoGriglia(QObject *oggetto, QKeyEvent *tasto)
{
    if (oggetto != m_griglia)
        return FiltraImporto(oggetto, tasto); // the rate's editor
    if (tasto->key() == Qt::Key_Return || tasto->key() == Qt::Key_Enter) {
        const QModelIndex attuale = m_griglia->currentIndex();
        if (m_modo == RicercaValute) {
            if (attuale.isValid())
                Scegli(attuale.row());
        } else if (attuale.row() + 1 < m_elenco.size()) {
            m_griglia->setCurrentIndex(m_modello->index(attuale.row() + 1, attuale.column()));
        }
        return true;
    }
    return FiltraImporto(oggetto, tasto);
}

bool GesCambi::mouseGriglia(QEvent *evento)
{
    // A row dragged with the right button takes its new place in the list,
    // and the list's order is stored.
    auto *mouse = static_cast<QMouseEvent *>(evento);
    const QPoint punto = mouse->position().toPoint();
    const int riga = m_griglia->rowAt(punto.y());
    if (evento->type() == QEvent::MouseButtonPress) {
        if (!(mouse->buttons() & Qt::RightButton) || riga < 0 || m_caricamento)
            return false;
        m_rigaTrascinata = riga;
        m_label2->setText(m_elenco.cella(riga, ColCodiceMoneta) + QStringLiteral("  ")
                          + m_elenco.cella(riga, ColDescrizione));
        m_label2->adjustSize();
    }
    if (m_rigaTrascinata < 0)
        return false;
    if (evento->type() == QEvent::MouseButtonRelease && mouse->button() == Qt::RightButton) {
        const int da = m_rigaTrascinata;
        m_rigaTrascinata = -1;
        m_label2->hide();
        if (riga < 0 || riga == da)
            return true;
        m_elenco.sposta(da, riga);
        m_modello->righeCambiate();
        m_griglia->setCurrentIndex(m_modello->index(riga, ColRapporto));
        QString errore;
        if (!m_elenco.salvaOrdine(&errore))
            Messaggio(errore, QString(), Icona::Stop);
        return true;
    }
    m_label2->move(m_griglia->viewport()->mapTo(this, punto) + QPoint(8, 8));
    m_label2->show();
    m_label2->raise();
    return true;
}

bool GesCambi::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (const int campo = campoData(oggetto); campo > 0) {
        if (evento->type() == QEvent::FocusIn) {
            m_entrata[campo] = m_txt[campo]->text();
        } else if (evento->type() == QEvent::FocusOut) {
            // A changed field is checked as it is left; the message box
            // takes the focus on its way and that is no leaving.
            if (!m_inErrore && !m_schermo->inScarico() && m_txt[campo]->isEnabled()
                && m_txt[campo]->text() != m_entrata[campo] && controllaData(campo)) {
                m_entrata[campo] = m_txt[campo]->text();
                caricaCambi();
            }
        } else if (evento->type() == QEvent::KeyPress) {
            return tastoData(campo, static_cast<QKeyEvent *>(evento)->key());
        }
        return QDialog::eventFilter(oggetto, evento);
    }
    if (oggetto == m_griglia->viewport()
        && (evento->type() == QEvent::MouseButtonPress || evento->type() == QEvent::MouseMove
            || evento->type() == QEvent::MouseButtonRelease))
        return mouseGriglia(evento);
    if (evento->type() == QEvent::KeyPress && oggetto != m_griglia->viewport())
        return tastoGriglia(oggetto, static_cast<QKeyEvent *>(evento));
    return QDialog::eventFilter(oggetto, evento);
}

void GesCambi::Conferma()
{
    // A rate still being typed counts: its editor hands it over as it
    // loses the focus.
    if (QWidget *fuoco = QApplication::focusWidget(); fuoco && m_griglia->isAncestorOf(fuoco))
        m_griglia->setFocus(Qt::OtherFocusReason);
    QString errore;
    if (!m_elenco.conferma(m_cambi, m_giorno, &errore))
        Messaggio(errore, QString(), Icona::Stop);
}

void GesCambi::Monete()
{
    MostraAggNazioni(this);
    caricaValute();
    caricaCambi();
}

void GesCambi::Esporta()
{
    QList<QList<QVariant>> righe;
    for (const RigaCambi &r : m_elenco.righe())
        righe.append(QList<QVariant>(r.begin(), r.end()));
    EsportaMatrice(m_griglia, MatriceValori(righe, ColonneCambi), QStringLiteral("GesCambi"));
}

void GesCambi::Scegli(int riga)
{
    if (riga < 0 || riga >= m_elenco.size())
        return;
    tabelle().CodiceCercato = m_elenco.cella(riga, ColCodiceMoneta);
    accept();
}

int MostraGesCambi(QWidget *padre)
{
    GesCambi schermo(padre);
    if (!schermo.aperto())
        return 0;
    return EseguiModale(schermo);
}

void GestisciCambi(QWidget *padre, int modo)
{
    gesCambi().ModoCambi = static_cast<std::uint8_t>(modo);
    gesCambi().DataCambi = GiornoDaData(QDate::currentDate());
    MostraGesCambi(padre);
}

QString ScegliMoneta(QWidget *padre, double giorno)
{
    gesCambi().ModoCambi = RicercaValute;
    gesCambi().DataCambi = giorno;
    tabelle().CodiceCercato.clear();
    MostraGesCambi(padre);
    return tabelle().CodiceCercato.trimmed();
}

void ScegliMonetaDelCampo(QLineEdit *campo, const QString &data)
{
    if (!campo->isEnabled() || campo->isReadOnly())
        return;
    const QDate giorno = LeggiData(data).value_or(QDate::currentDate());
    const QString codice = ScegliMoneta(campo->window(), GiornoDaData(giorno));
    if (!codice.isEmpty())
        campo->setText(codice);
}

} // namespace sorvane
