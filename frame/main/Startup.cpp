#include "frame/main/Startup.h"

#include "frame/core/Giorni.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/ModuliOpzionali.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "frame/main/InfZerlo.h"
#include "frame/main/RigaComando.h"
#include "frame/main/Schermate.h"
#include "frame/ui/Fine.h"
#include "frame/ui/Finestra.h"
#include "frame/ui/Modale.h"
#include "frame/ui/SchermoPdf.h"
#include "store/Connessione.h"
#include "store/Tabelle.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QImageReader>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScreen>
#include <QShortcutEvent>
#include <QTimer>
#include <QVBoxLayout>

namespace sorvane {

namespace {

// The caption a screen's window gives the frame.
const char *const ProprietaTitolo = "titoloCornice";

// The frame's design size in twips.
constexpr int LarghezzaCornice = 9600;
constexpr int AltezzaCornice = 7200;

const char *const VociMenu[] = {
    "&Inserimento distinte", "&Gestione distinte", "&Stampa 04", "Stampa Interessi &Medi",
    "&Ins. Saldi 04",        "&Ditte",             "&Banche",    "&Causali",
};

QString Diagnosi(const QString &testo)
{
    return testo + QStringLiteral("< ");
}

// The classic colour value is 0x00BBGGRR.
QColor ColoreClassico(qint64 valore)
{
    return QColor(int(valore & 0xFF), int((valore >> 8) & 0xFF), int((valore >> 16) & 0xFF));
}

} // namespace

Startup::Startup(QWidget *parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("Startup"));
    m_titolo = QStringLiteral("SORVANE");
    setWindowTitle(m_titolo);
    TerminaProcesso = [](int codice) { QCoreApplication::exit(codice); };

    auto *centro = new QWidget(this);
    auto *colonna = new QVBoxLayout(centro);
    colonna->setContentsMargins(0, 0, 0, 0);
    colonna->setSpacing(0);

    Picture1 = new QFrame(centro);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    static_cast<QFrame *>(Picture1)->setFrameShape(QFrame::StyledPanel);
    auto *righe = new QVBoxLayout(Picture1);
    aspetta = new QLabel(QStringLiteral("ATTENDERE PREGO..."), Picture1);
    aspetta->setObjectName(QStringLiteral("aspetta"));
    Label1 = new QLabel(Picture1);
    Label1->setObjectName(QStringLiteral("Label1"));
    righe->addWidget(aspetta);
    righe->addWidget(Label1);
    Picture1->hide();

    m_area = new QMdiArea(centro);
    m_area->setObjectName(QStringLiteral("AreaSchermi"));
    connect(m_area, &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow *sotto) {
        if (sotto)
            aggiornaTitolo();
    });
    colonna->addWidget(Picture1);
    colonna->addWidget(m_area, 1);
    setCentralWidget(centro);

    costruisciMenu();
    // The menu's accelerators meet the open screen's in one window.
    qApp->installEventFilter(this);
    resize(InPixel(LarghezzaCornice), InPixel(AltezzaCornice));
    installaFineProgramma([this] { FineProgramma(); });
}

Startup::~Startup()
{
    installaFineProgramma({});
}

namespace {

// The control of the screen that answers Alt and `tasto` by its own
// caption's accelerator (a button, or a label's field), when it can be used.
QWidget *AcceleratoreDelloSchermo(QWidget *schermo, const QKeySequence &tasto)
{
    for (QWidget *w : schermo->findChildren<QWidget *>()) {
        QString testo;
        if (auto *pulsante = qobject_cast<QAbstractButton *>(w))
            testo = pulsante->text();
        else if (auto *etichetta = qobject_cast<QLabel *>(w); etichetta && etichetta->buddy())
            testo = etichetta->text();
        if (!testo.isEmpty() && w->isVisible() && w->isEnabled()
            && QKeySequence::mnemonic(testo) == tasto)
            return w;
    }
    return nullptr;
}

} // namespace

// An accelerator both of the menu and of the screen in hand ("&Uscita" and
// the screen's "&USCITA") belongs to the screen, as on a desktop frame: the
// menu would otherwise take it, and Alt+U would end the program.
bool Startup::eventFilter(QObject *oggetto, QEvent *evento)
{
    // Only a key of this window: a pop-up's own clashes are left to it.
    auto *destinatario = qobject_cast<QWidget *>(oggetto);
    if (evento->type() != QEvent::Shortcut || !static_cast<QShortcutEvent *>(evento)->isAmbiguous()
        || !destinatario || destinatario->window() != this)
        return QMainWindow::eventFilter(oggetto, evento);
    QMdiSubWindow *sotto = m_area->activeSubWindow();
    QWidget *w = sotto && sotto->widget()
                     ? AcceleratoreDelloSchermo(sotto->widget(),
                                                static_cast<QShortcutEvent *>(evento)->key())
                     : nullptr;
    if (!w)
        return QMainWindow::eventFilter(oggetto, evento);
    if (auto *pulsante = qobject_cast<QAbstractButton *>(w)) {
        pulsante->setFocus(Qt::ShortcutFocusReason);
        pulsante->animateClick();
    } else {
        static_cast<QLabel *>(w)->buddy()->setFocus(Qt::ShortcutFocusReason);
    }
    return true;
}

void Startup::costruisciMenu()
{
    Mu_end = menuBar()->addAction(QStringLiteral("&Uscita"));
    Mu_end->setObjectName(QStringLiteral("Mu_end"));
    connect(Mu_end, &QAction::triggered, this, [this] { Mu_end_Click(); });

    Mu_Distinte = menuBar()->addMenu(QStringLiteral("&Distinte"));
    Mu_Distinte->setObjectName(QStringLiteral("Mu_Distinte"));
    for (int i = 0; i < int(Mu_GesDis.size()); ++i) {
        Mu_GesDis[i] = Mu_Distinte->addAction(QString::fromUtf8(VociMenu[i]));
        Mu_GesDis[i]->setObjectName(QStringLiteral("Mu_GesDis%1").arg(i));
        connect(Mu_GesDis[i], &QAction::triggered, this, [this, i] { Mu_GesDis_Click(i); });
    }

    // The rates of the euro area and of the other currencies are kept from
    // here; the movement screens open the same screen only as a picker.
    Mu_Cambi = menuBar()->addMenu(QStringLiteral("Ca&mbi"));
    Mu_Cambi->setObjectName(QStringLiteral("Mu_Cambi"));
    const char *vociCambi[] = {"Valute area &EURO", "Valute e&xtraEURO"};
    for (int modo = 1; modo <= 2; ++modo) {
        QAction *voce = Mu_Cambi->addAction(QString::fromUtf8(vociCambi[modo - 1]));
        voce->setObjectName(QStringLiteral("Mu_Cambi%1").arg(modo));
        connect(voce, &QAction::triggered, this, [this, modo] {
            if (GestioneCambi)
                GestioneCambi(modo);
        });
    }

    Mu_newexe = menuBar()->addAction(QStringLiteral("&Verifica aggiornamenti"));
    Mu_newexe->setObjectName(QStringLiteral("Mu_newexe"));
    connect(Mu_newexe, &QAction::triggered, this, [this] { Mu_newexe_Click(); });
}

bool Startup::Avvia(const QString &rigaComando)
{
    return MDIForm_Initialize(rigaComando) && MDIForm_Load();
}

bool Startup::MDIForm_Initialize(const QString &rigaComando)
{
    Sessione &s = sessione();
    s.ModoProva = false;
    const ParametriAvvio p = SpezzaRigaComando(rigaComando);
    s.ModoProva = p.ModoProva;
    s.CodiceOperatore = p.Operatore;
    m_IndiceMenu = p.IndiceMenu;
    if (p.OffsetX)
        s.OffsetX = *p.OffsetX;
    if (p.OffsetY)
        s.OffsetY = *p.OffsetY;
    if (p.MancanoParametri()) {
        Messaggio(QStringLiteral("Mancano i parametri"));
        return false;
    }
    // The four files' names are fixed by the store; their folders come with
    // the settings.
    m_DaAprire = true;
    m_ConfigMancante = false;

    const QScreen *schermo = screen() ? screen() : QGuiApplication::primaryScreen();
    const QSize misura = schermo ? schermo->geometry().size() : QSize();
    const MisureSchermo m = MisuraSchermo(InTwips(misura.width()), InTwips(misura.height()));
    s.LarghezzaSchermo = m.LarghezzaSchermo;
    s.AltezzaSchermo = m.AltezzaSchermo;
    s.LarghezzaMax = m.LarghezzaMax;
    s.AltezzaMax = m.AltezzaMax;

    Impostazioni &imp = impostazioni();
    imp.IniLocale = TrovaIniLocale();
    if (imp.IniLocale.isEmpty()) {
        Messaggio(QStringLiteral("File di configurazione inesistente"),
                  NomeProgrammaMaiuscolo() + QStringLiteral(" -ERRORE"), Icona::Stop);
        m_ConfigMancante = true;
    }
    if (s.ModoProva)
        Messaggio(Diagnosi(QStringLiteral("file INI>") + imp.IniLocale));
    imp.IniServer = imp.IniLocale.isEmpty() ? QString() : TrovaIniServer(imp.IniLocale);
    if (s.ModoProva)
        Messaggio(Diagnosi(QStringLiteral("file INIsvr>") + imp.IniServer));
    s.OggiTesto = OggiComeTesto();
    RilevaPdf();
    return true;
}

bool Startup::MDIForm_Load()
{
    Sessione &s = sessione();
    if (s.ModoProva) {
        const QString mancante = m_ConfigMancante ? QStringLiteral("Vero") : QStringLiteral("Falso");
        Messaggio(Diagnosi(QStringLiteral("non OK>") + mancante));
    }
    if (m_ConfigMancante) {
        InfZerlo pannello(this);
        EseguiModale(pannello);
        return false;
    }
    QDir::setCurrent(QCoreApplication::applicationDirPath());
    if (!s.ModoProva) {
        Mu_end->setVisible(false);
        Mu_Distinte->menuAction()->setVisible(false);
        menuBar()->setVisible(false);
    }

    const Posizione pos = PosizionaCornice({s.OffsetX, s.OffsetY},
                                           InTwips(frameGeometry().width()), s.LarghezzaMax);
    s.OffsetX = pos.x;
    s.OffsetY = pos.y;
    move(InPixel(pos.x), InPixel(pos.y));

    s.ConnettiAccess = QStringLiteral("Access 2000;");
    s.NomeUtenteBreve = NomeUtente().left(5);
    LeggiPercorsi();
    CaricaImpostazioni();
    m_titolo = QStringLiteral("(") + s.CodiceOperatore + QStringLiteral(")");
    setWindowTitle(m_titolo);

    // The frame stands while the files open, so that their progress shows.
    Picture1->show();
    show();
    const bool aperto = ConnettiDatabase([this](const QString &testo) {
        Label1->setText(testo);
        Label1->repaint();
        QCoreApplication::processEvents();
    });
    Picture1->hide();
    if (!aperto || !archivi().DbDatiAperto)
        return false;

    // The report engine may be missing: the start goes on without it.
    const bool stampe = !AvviaStampe || AvviaStampe();
    s.EsitoReport = stampe ? 1 : 0;
    if (!stampe)
        Messaggio(QStringLiteral("ERRORE NELLA GESTIONE STAMPE"));
    if (CaricaListaCli)
        CaricaListaCli();
    applicaSfondo();
    m_caricato = true;
    // A window system that never activates the frame still gets its screen.
    QTimer::singleShot(0, this, [this] { MDIForm_Activate(); });
    return true;
}

void Startup::applicaSfondo()
{
    const QString ini = impostazioni().IniLocale;
    const QString colore = LeggiIni(ini, QStringLiteral("SFONDO"), QStringLiteral("colore"));
    if (!colore.trimmed().isEmpty())
        m_area->setBackground(ColoreClassico(qint64(Val(colore))));

    const QString immagine = LeggiIni(ini, QStringLiteral("SFONDO"), QStringLiteral("image"));
    if (immagine.trimmed().isEmpty() || !EsisteFile(PercorsoNativo(immagine)))
        return;
    QImageReader lettore(PercorsoNativo(immagine));
    const QImage figura = lettore.read();
    if (!figura.isNull()) {
        m_area->setBackground(QPixmap::fromImage(figura));
        return;
    }
    // Told once: the setting is emptied.
    Messaggio(QStringLiteral("IMMAGINE DI SFONDO NON APPLICABILE") + QLatin1Char('\n')
              + lettore.errorString());
    ScriviIni(ini, QStringLiteral("SFONDO"), QStringLiteral("image"), QString());
}

void Startup::MDIForm_Activate()
{
    sessione().CodiceChiamante = 70;
    tabelle().ColoriGrpAperto = false;
    sessione().ClienteCaricato = false;
    // Activations while the files open wait for the end of the load.
    if (m_DaAprire && m_caricato) {
        m_DaAprire = false;
        Mu_GesDis_Click(m_IndiceMenu);
    }
}

bool Startup::event(QEvent *evento)
{
    if (evento->type() == QEvent::WindowActivate)
        MDIForm_Activate();
    return QMainWindow::event(evento);
}

// The open screens go first, each through its own unload: one may still
// hold a movement typed and not added, and ask before it goes.
bool Startup::ChiudiSchermi()
{
    m_area->closeAllSubWindows();
    return m_area->subWindowList().isEmpty();
}

void Startup::closeEvent(QCloseEvent *evento)
{
    if (!m_finito && !ChiudiSchermi()) {
        evento->ignore();
        return;
    }
    if (!m_finito)
        FineProgramma();
    evento->accept();
}

// The frame's caption is the one of the screen in hand: the small tables'
// own, or the frame's with the screen's title as a desktop frame shows it;
// its own again once no screen is open.
QMdiSubWindow *Startup::apri(QWidget *schermo, bool riempi, const QString &titolo)
{
    schermo->setAttribute(Qt::WA_DeleteOnClose);
    const QSize progetto = schermo->size();
    QMdiSubWindow *sotto = m_area->addSubWindow(schermo);
    // The area would size the window by its layout's hint; the screen opens
    // at its design size, the window's border around it.
    if (schermo->testAttribute(Qt::WA_Resized))
        sotto->resize(progetto + sotto->sizeHint() - schermo->sizeHint());
    sotto->setProperty(ProprietaTitolo, titolo);
    // A screen that closes itself (its exit button) takes its window along:
    // the area would keep an empty one. Queued, so that a window already
    // going is not closed again.
    connect(schermo, &QObject::destroyed, sotto, &QWidget::close, Qt::QueuedConnection);
    // Once the area has let the closed screen go.
    connect(sotto, &QObject::destroyed, this,
            [this] { QTimer::singleShot(0, this, [this] { aggiornaTitolo(); }); });
    setWindowTitle(titolo);
    if (riempi)
        sotto->showMaximized();
    else
        sotto->show();
    return sotto;
}

void Startup::aggiornaTitolo()
{
    QMdiSubWindow *sotto = m_area->activeSubWindow();
    const QList<QMdiSubWindow *> aperti = m_area->subWindowList();
    if (!sotto && !aperti.isEmpty())
        sotto = aperti.last();
    setWindowTitle(sotto ? sotto->property(ProprietaTitolo).toString() : m_titolo);
}

void Startup::Mu_GesDis_Click(int indice)
{
    Sessione &s = sessione();
    s.ClienteCaricato = false;
    m_IndiceMenu = static_cast<std::int16_t>(indice);
    const FabbricaSchermo fabbrica = SchermoRegistrato(indice);
    if (indice == 8 || indice < 0 || indice > 9) {
        s.ModoProva = false;
    } else if (fabbrica && indice <= 7) {
        const PreparazioneCornice c = CorniceDelMenu(indice, s.ModoProva);
        if (c.massimizzata) {
            // Where no window manager honours the state, the frame takes the
            // screen's free area by itself.
            if (const QScreen *video = screen())
                setGeometry(video->availableGeometry());
            setWindowState(windowState() | Qt::WindowMaximized);
        } else {
            setWindowState(windowState() & ~(Qt::WindowMaximized | Qt::WindowMinimized));
            const QSize bordo = frameGeometry().size() - size();
            resize(InPixel(c.larghezza) - bordo.width(), InPixel(c.altezza) - bordo.height());
        }
        QWidget *schermo = fabbrica();
        if (schermo && (!c.massimizzata || s.CodiceStop == 0)) {
            const QString titolo =
                c.massimizzata ? QStringLiteral("%1 - [%2]").arg(m_titolo, schermo->windowTitle())
                               : c.titolo;
            apri(schermo, !c.massimizzata, titolo);
        } else {
            delete schermo;
        }
    }
    s.CodiceStop = 0;
}

void Startup::Mu_end_Click()
{
    if (ChiudiSchermi())
        FineProgramma();
}

void Startup::Mu_newexe_Click()
{
    if (VerificaAggiornamenti)
        VerificaAggiornamenti();
}

void Startup::FineProgramma()
{
    if (m_finito)
        return;
    m_finito = true;
    const QString stato =
        isMaximized() ? QStringLiteral("M")
                      : QStringLiteral("%1|%2|%3|%4|")
                            .arg(InTwips(x()))
                            .arg(InTwips(y()))
                            .arg(InTwips(width()))
                            .arg(InTwips(height()));
    const QString ini = impostazioni().IniLocale;
    const QString nome = NomeProgrammaMaiuscolo();
    // Shared with the suite's main programs: under our own name nothing is kept.
    if (nome == QLatin1String("KELVAR") || nome == QLatin1String("KELVARF"))
        ScriviIni(ini, QStringLiteral("PARAMETRI"), QStringLiteral("StartUp"), stato);

    const QString vault = LeggiIni(ini, QStringLiteral("RULVAT"), QStringLiteral("HANDLE"));
    if (!vault.trimmed().isEmpty() && AttivaProcesso(vault.trimmed().toLongLong()))
        Messaggio(QStringLiteral("RULVATORIA ANCORA ATTIVO"));

    if (FermaStampe)
        FermaStampe();
    ChiudiDatabase();
    if (TerminaProcesso)
        TerminaProcesso(0);
}

} // namespace sorvane
