#include "ProvaCornice.h"

#include "distinte/ControllaCampo.h"
#include "distinte/GesDist.h"
#include "distinte/InsDist.h"
#include "frame/core/Ini.h"
#include "frame/main/InfZerlo.h"
#include "frame/ui/Fine.h"
#include "frame/ui/Finestra.h"
#include "frame/ui/Schermo.h"
#include "ledger04/ControllaCampo4.h"
#include "ledger04/GesDist4.h"
#include "ledger04/GesIntMd.h"
#include "ledger04/InsSald4.h"
#include "ledger04/Saldi04.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

using Avvio = ProvaCornice;

QWidget *SchermoFinto(const QString &nome, int codiceStop = 0)
{
    auto *w = new QWidget;
    w->setObjectName(nome);
    sessione().CodiceStop = static_cast<std::int16_t>(codiceStop);
    return w;
}

void Attendi()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
}

// What a user acts on, in view and enabled; the parts of a control (a
// grid's headings, a spin's arrows) are the control's own. A group of
// options is one stop, its checked option: the arrows walk the others.
QSet<QWidget *> Controlli(QWidget *schermo)
{
    auto controllo = [](QObject *w) {
        const auto *opzione = qobject_cast<QRadioButton *>(w);
        if (opzione && opzione->autoExclusive() && !opzione->isChecked())
            return false;
        return qobject_cast<QLineEdit *>(w) || qobject_cast<QComboBox *>(w)
               || qobject_cast<QAbstractButton *>(w) || qobject_cast<QAbstractItemView *>(w)
               || qobject_cast<PulsanteSpin *>(w);
    };
    QSet<QWidget *> controlli;
    for (QWidget *w : schermo->findChildren<QWidget *>()) {
        if (controllo(w) && !controllo(w->parent()) && w->isVisible() && w->isEnabled())
            controlli.insert(w);
    }
    return controlli;
}

// The walk reached every control, and nothing else.
void StessiControlli(const QSet<QWidget *> &giro, const QSet<QWidget *> &controlli)
{
    for (const auto &[a, b] : {std::pair(controlli, giro), std::pair(giro, controlli)}) {
        for (QWidget *w : a - b)
            ADD_FAILURE() << w->metaObject()->className() << ' ' << qPrintable(w->objectName())
                          << ' ' << qPrintable(w->accessibleName());
    }
}

// Tab from the field in focus round to it again: the controls on the way.
QSet<QWidget *> GiroDelTab()
{
    QSet<QWidget *> raggiunti;
    for (QWidget *w = QApplication::focusWidget(); w && !raggiunti.contains(w);
         w = QApplication::focusWidget()) {
        raggiunti.insert(w);
        QTest::keyClick(w, Qt::Key_Tab);
        Attendi();
    }
    return raggiunti;
}

// The letters of the buttons of a panel that may be pressed, one each.
QStringList AcceleratoriDoppi(QWidget *pannello)
{
    QStringList visti;
    QStringList doppi;
    for (QAbstractButton *b : pannello->findChildren<QAbstractButton *>()) {
        const QString tasto = QKeySequence::mnemonic(b->text()).toString();
        if (tasto.isEmpty())
            continue;
        if (visti.contains(tasto))
            doppi.append(b->text());
        visti.append(tasto);
    }
    return doppi;
}

// Tab from the field in focus reaches every control of the screen; the
// buttons of `pannello` have a letter each.
void GiroEAcceleratori(QWidget *schermo, QWidget *pannello)
{
    StessiControlli(GiroDelTab(), Controlli(schermo));
    EXPECT_TRUE(AcceleratoriDoppi(pannello).isEmpty())
        << qPrintable(AcceleratoriDoppi(pannello).join('|'));
}

// A fresh office's frame with its menu, active, past its first activation
// (index 9: nothing opens).
void AvviaColMenu(Startup &cornice)
{
    qputenv("SORVANE_INI", IniUfficio().toLocal8Bit());
    ASSERT_TRUE(cornice.Avvia(QString()));
    QApplication::setActiveWindow(&cornice);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&cornice));
    Attendi();
}

} // namespace

TEST_F(Avvio, SenzaIniIlPannelloPoiLaFine)
{
    UsaIni(m_cartella.file("manca.ini"));
    EXPECT_FALSE(m_cornice->Avvia(QString()));
    EXPECT_EQ(m_messaggi.testi(),
              QStringList({"File di configurazione inesistente", "file INI>< ", "file INIsvr>< ",
                           "non OK>Vero< "}));
    const Richiesta &prima = m_messaggi.richieste().first();
    EXPECT_EQ(prima.titolo, NomeProgrammaMaiuscolo() + " -ERRORE");
    EXPECT_EQ(prima.icona, Icona::Stop);
    EXPECT_EQ(m_modali, QStringList{"InfZerlo"});
    EXPECT_EQ(m_fine, 0); // nothing open, no closing routine
}

TEST_F(Avvio, SenzaOperatoreSiFermaSubito)
{
    UsaIni(IniUfficio());
    EXPECT_FALSE(m_cornice->Avvia("|1|0|0"));
    EXPECT_EQ(m_messaggi.testi(), QStringList{"Mancano i parametri"});
    EXPECT_TRUE(m_modali.isEmpty());
}

TEST_F(Avvio, DatabaseMancanteAnnullaChiudeSenzaNienteAperto)
{
    QDir().mkpath(m_cartella.file("dati"));
    QDir().mkpath(m_cartella.file("lavoro"));
    const QString ini = m_cartella.scrivi(
        "sorvane.ini", QStringLiteral("[PATH]\nFILE=%1/dati/\nWORK=%1/lavoro/\n"
                                      "[BASE]\nOPERATORE=ROSSI\n")
                           .arg(m_cartella.percorso())
                           .toUtf8());
    UsaIni(ini);
    int domande = 0;
    m_messaggi.gestore = [&domande](const Richiesta &r) -> std::optional<Risposta> {
        if (r.pulsanti != Pulsanti::RiprovaAnnulla)
            return std::nullopt;
        return ++domande == 1 ? Risposta::Riprova : Risposta::Annulla;
    };
    EXPECT_FALSE(m_cornice->Avvia("rossi|1"));
    EXPECT_EQ(domande, 2); // Retry tried again, Cancel ended
    EXPECT_FALSE(Db().isValid() && Db().isOpen());
    EXPECT_TRUE(m_cornice->area()->subWindowList().isEmpty());
    EXPECT_EQ(m_fine, 0);
}

TEST_F(Avvio, SenzaParametriLaProvaConIlMenuELaFine)
{
    const QString ini = IniUfficio();
    UsaIni(ini);
    bool fermate = false;
    m_cornice->AvviaStampe = [] { return false; };
    m_cornice->FermaStampe = [&fermate] { fermate = true; };
    ASSERT_TRUE(m_cornice->Avvia(QString()));

    const QStringList testi = m_messaggi.testi();
    ASSERT_EQ(testi.size(), 4) << qPrintable(testi.join('|'));
    EXPECT_EQ(testi[0], "file INI>" + ini + "< ");
    EXPECT_EQ(testi[1], "file INIsvr>" + ini + "< ");
    EXPECT_EQ(testi[2], "non OK>Falso< ");
    // A report engine that does not start leaves the start going.
    EXPECT_EQ(testi[3], "ERRORE NELLA GESTIONE STAMPE");
    EXPECT_TRUE(sessione().ModoProva);
    EXPECT_EQ(m_cornice->windowTitle(), "(UFFICIO)");
    EXPECT_EQ(sessione().ConnettiAccess, "Access 2000;");
    EXPECT_TRUE(archivi().DbDatiAperto);
    EXPECT_FALSE(m_cornice->menuBar()->isHidden());
    EXPECT_TRUE(m_cornice->Mu_end->isVisible());
    EXPECT_TRUE(m_cornice->Mu_Distinte->menuAction()->isVisible());
    // The rates' two management modes are the frame's own entries.
    QList<int> modi;
    m_cornice->GestioneCambi = [&modi](int modo) { modi.append(modo); };
    for (QAction *voce : m_cornice->Mu_Cambi->actions())
        voce->trigger();
    EXPECT_EQ(modi, (QList<int>{1, 2}));

    // The first activation dispatches index 9: nothing opens.
    m_cornice->MDIForm_Activate();
    EXPECT_FALSE(m_cornice->DaAprire());
    EXPECT_EQ(sessione().CodiceChiamante, 70);
    EXPECT_TRUE(m_cornice->area()->subWindowList().isEmpty());

    m_cornice->Mu_end_Click();
    EXPECT_TRUE(fermate);
    EXPECT_FALSE(archivi().DbDatiAperto);
    EXPECT_EQ(m_fine, 1);
}

TEST_F(Avvio, OperatoreSoloApreIlPrimoSchermoSenzaMenu)
{
    UsaIni(IniUfficio());
    RegistraSchermo(0, [] { return SchermoFinto("InsDist"); });
    ASSERT_TRUE(m_cornice->Avvia("rossi|"));
    EXPECT_FALSE(sessione().ModoProva);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty()) << qPrintable(m_messaggi.testi().join('|'));
    EXPECT_TRUE(m_cornice->menuBar()->isHidden());

    QCoreApplication::processEvents(); // the first activation
    EXPECT_FALSE(m_cornice->DaAprire());
    const auto aperti = m_cornice->area()->subWindowList();
    ASSERT_EQ(aperti.size(), 1);
    EXPECT_EQ(aperti[0]->widget()->objectName(), "InsDist");
    EXPECT_TRUE(m_cornice->windowState().testFlag(Qt::WindowMaximized));

    // The one screen closed ends the program through the closing routine.
    FineProgramma();
    EXPECT_EQ(m_fine, 1);
    EXPECT_FALSE(archivi().DbDatiAperto);
}

TEST_F(Avvio, IlMenuApreSoloGliSchermiRegistrati)
{
    sessione().ModoProva = true;
    RegistraSchermo(1, [] { return SchermoFinto("GesDist", 9); });
    RegistraSchermo(5, [] { return SchermoFinto("GesSoc"); });

    // A screen whose load failed is not shown; CodiceStop is cleared after.
    m_cornice->Mu_GesDis_Click(1);
    EXPECT_TRUE(m_cornice->area()->subWindowList().isEmpty());
    EXPECT_EQ(sessione().CodiceStop, 0);

    // Not registered yet: nothing.
    m_cornice->Mu_GesDis_Click(3);
    EXPECT_TRUE(m_cornice->area()->subWindowList().isEmpty());
    EXPECT_EQ(m_cornice->IndiceMenu(), 3);

    m_cornice->Mu_GesDis_Click(5);
    ASSERT_EQ(m_cornice->area()->subWindowList().size(), 1);
    EXPECT_EQ(m_cornice->windowTitle(), "GESTIONE DITTE PER LE DISTINTE");
    EXPECT_TRUE(sessione().ModoProva);


    // 8 and 12 leave the test mode, 9 keeps it.
    for (const auto &[indice, prova] :
         {std::pair(8, false), std::pair(12, false), std::pair(9, true)}) {
        sessione().ModoProva = true;
        m_cornice->Mu_GesDis_Click(indice);
        EXPECT_EQ(sessione().ModoProva, prova) << indice;
    }
}

TEST_F(Avvio, SfondoColoreEImmagineGuasta)
{
    const QString ini = m_cartella.file("sorvane.ini");
    QFile::copy(IniUfficio(), ini);
    const QString guasta = m_cartella.scrivi("sfondo.png", "non un'immagine");
    ScriviIni(ini, "SFONDO", "colore", "255"); // red, in the classic order
    ScriviIni(ini, "SFONDO", "image", guasta);
    UsaIni(ini);
    ASSERT_TRUE(m_cornice->Avvia("ROSSI|9"));
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    EXPECT_TRUE(m_messaggi.testi()[0].startsWith("IMMAGINE DI SFONDO NON APPLICABILE\n"));
    EXPECT_EQ(LeggiIni(ini, "SFONDO", "image"), "");
    EXPECT_EQ(m_cornice->area()->background().color(), QColor(255, 0, 0));
}

TEST_F(Avvio, LaFineAvvisaDelProgrammaDellaCassaforteAncoraAttivo)
{
    const QString ini = m_cartella.file("sorvane.ini");
    QFile::copy(IniUfficio(), ini);
    ScriviIni(ini, "RULVAT", "HANDLE", QString::number(QCoreApplication::applicationPid()));
    UsaIni(ini);
    ASSERT_TRUE(m_cornice->Avvia("ROSSI|9"));
    m_cornice->FineProgramma();
    EXPECT_EQ(m_messaggi.testi(), QStringList{"RULVATORIA ANCORA ATTIVO"});
    EXPECT_EQ(m_fine, 1);
    // Once only, however the end is reached again.
    m_cornice->FineProgramma();
    EXPECT_EQ(m_fine, 1);
}

TEST_F(Avvio, IlPannelloInformazioniTrovaOMancaLoStrumento)
{
    impostazioni().IniLocale = m_cartella.scrivi("sorvane.ini", "[BASE]\n");
    InfZerlo pannello;
    // Nothing configured: what Qt knows of the system.
    pannello.cmdInfoSys->click();
    EXPECT_EQ(m_modali, QStringList{"InfoSistema"});
    ScriviIni(impostazioni().IniLocale, "Shared Tools Location", "MSINFO",

              m_cartella.file("strumenti"));
    pannello.cmdInfoSys->click();
    EXPECT_EQ(m_messaggi.testi(), QStringList{"MSINFO32.EXE  NON TROVATO"});
}

TEST_F(Avvio, UnoSchermoNellaCorniceSegueLeRegoleComuni)
{
    RegistraSchermo(6, [] {
        QWidget *w = SchermoFinto("GesBanca");
        w->setWindowTitle("BANCHE");
        new Schermo(w);
        return w;
    });
    m_cornice->Mu_GesDis_Click(6);
    const auto aperti = m_cornice->area()->subWindowList();
    ASSERT_EQ(aperti.size(), 1);
    QWidget *schermo = aperti[0]->widget();
    QTest::keyClick(schermo, Qt::Key_F8, Qt::ControlModifier);
    EXPECT_EQ(aperti[0]->windowTitle(), "GesBanca !");
    QTest::keyClick(schermo, Qt::Key_F8, Qt::ControlModifier);
    EXPECT_EQ(aperti[0]->windowTitle(), "BANCHE");
}

// The slip screens from the menu: no field checked on the way in, the
// frame's caption theirs while they are open, every control on the Tab
// chain, one accelerator a button.
TEST_F(Avvio, GliSchermiDelleDistinteDalMenu)
{
    RegistraSchermo(0, [] { return new InsDist; });
    RegistraSchermo(1, [] { return new GesDist; });
    AvviaColMenu(*m_cornice);
    m_messaggi.pulisci();

    m_cornice->Mu_GesDis[1]->trigger();
    Attendi();
    auto *gestione = qobject_cast<GesDist *>(m_cornice->area()->activeSubWindow()->widget());
    ASSERT_NE(gestione, nullptr);
    EXPECT_EQ(QApplication::focusWidget(), gestione->txt(CampoGiornoDal));
    EXPECT_EQ(m_cornice->windowTitle(), "(UFFICIO) - [GESTIONE DISTINTA DOCUMENTI]");
    StessiControlli(GiroDelTab(), Controlli(gestione));
    // The list's buttons and the form's are never pressed together.
    for (QWidget *pannello : {gestione->pctLista(), gestione->pctMod()})
        EXPECT_TRUE(AcceleratoriDoppi(pannello).isEmpty())
            << qPrintable(AcceleratoriDoppi(pannello).join('|'));
    EXPECT_TRUE(m_messaggi.richieste().isEmpty()) << qPrintable(m_messaggi.testi().join('|'));
    // Its own exit takes its window along and gives the frame its caption.
    gestione->Command1(0)->click();
    Attendi();
    EXPECT_TRUE(m_cornice->area()->subWindowList().isEmpty());
    EXPECT_EQ(m_cornice->windowTitle(), "(UFFICIO)");

    m_cornice->Mu_GesDis_Click(0);
    Attendi();
    auto *entrata = qobject_cast<InsDist *>(m_cornice->area()->activeSubWindow()->widget());
    ASSERT_NE(entrata, nullptr);
    // The fields are checked as Tab leaves them: an amount is all they need.
    entrata->txt(CampoImporto)->setText("1");
    StessiControlli(GiroDelTab(), Controlli(entrata));
    EXPECT_TRUE(AcceleratoriDoppi(entrata).isEmpty())
        << qPrintable(AcceleratoriDoppi(entrata).join('|'));
    EXPECT_TRUE(m_messaggi.richieste().isEmpty()) << qPrintable(m_messaggi.testi().join('|'));
    // The frame's close box goes through the screen's own unload: the
    // movement typed and not added is asked about, and No keeps both.
    m_messaggi.pulisci();
    m_messaggi.gestore = [](const Richiesta &) { return Risposta::No; };
    EXPECT_FALSE(m_cornice->close());
    EXPECT_EQ(m_messaggi.testi(), QStringList{"MOVIMENTO NON AGGIUNTO: ESCO LO STESSO?"});
    EXPECT_EQ(m_cornice->area()->subWindowList().size(), 1);
    EXPECT_EQ(m_fine, 0);
    m_messaggi.gestore = [](const Richiesta &) { return Risposta::Si; };
    EXPECT_TRUE(m_cornice->close());
    Attendi();
    EXPECT_TRUE(m_cornice->area()->subWindowList().isEmpty());
    EXPECT_EQ(m_fine, 1);
}

// The 04 ledger's screens from the menu: no field checked on the way in,
// every control of each panel on the Tab chain, one accelerator a button.
TEST_F(Avvio, GliSchermiDel04DalMenu)
{
    RegistraSchermo(2, [] { return new GesDist4; });
    RegistraSchermo(3, [] { return new GesIntMd; });
    RegistraSchermo(4, [] { return new InsSald4; });
    AvviaColMenu(*m_cornice);
    m_messaggi.pulisci();

    for (int indice : {2, 3}) {
        m_cornice->Mu_GesDis_Click(indice);
        Attendi();
        auto *gestione =
            qobject_cast<Gestione04 *>(m_cornice->area()->activeSubWindow()->widget());
        ASSERT_NE(gestione, nullptr);
        EXPECT_EQ(QApplication::focusWidget(), gestione->txt(Campo04GiornoDal));
        GiroEAcceleratori(gestione, gestione->pctLista());
        gestione->NuovoMovimento04();
        Attendi();
        gestione->txt(Campo04Importo)->setText("1");
        GiroEAcceleratori(gestione, gestione->pctMod());
        EXPECT_TRUE(m_messaggi.richieste().isEmpty()) << qPrintable(m_messaggi.testi().join('|'));
        gestione->Command1(0)->click();
        Attendi();
    }

    m_cornice->Mu_GesDis_Click(4);
    Attendi();
    auto *saldi = qobject_cast<InsSald4 *>(m_cornice->area()->activeSubWindow()->widget());
    ASSERT_NE(saldi, nullptr);
    EXPECT_EQ(QApplication::focusWidget(), saldi->txt(CampoSaldoCodice));
    GiroEAcceleratori(saldi, saldi);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty()) << qPrintable(m_messaggi.testi().join('|'));

    // Alt+U is the screen's "&USCITA" before the menu's "&Uscita": the screen
    // goes, the program stays.
    QTest::keyClick(saldi->txt(CampoSaldoCodice), Qt::Key_U, Qt::AltModifier);
    QTest::qWait(300);
    Attendi();
    EXPECT_TRUE(m_cornice->area()->subWindowList().isEmpty());
    EXPECT_EQ(m_fine, 0);
    EXPECT_TRUE(m_cornice->isVisible());
}
