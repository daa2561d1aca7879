#include "ProvaIni.h"

#include "frame/ui/Documenti.h"
#include "frame/ui/Fine.h"
#include "frame/ui/Schermo.h"
#include "frame/ui/SchermoPdf.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QUrl>
#include <QVBoxLayout>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

// A work screen as the later screens build it: three fields, an exit button.
class SchermoProva : public ProvaIni
{
protected:
    void SetUp() override
    {
        ProvaIni::SetUp();
        tastiera() = StatoTastiera();
        installaApriUrl([this](const QUrl &u) {
            m_aperti.append(u);
            return true;
        });
        installaFineProgramma([this] { ++m_fine; });

        m_schermo.setObjectName("GesProva");
        m_schermo.setWindowTitle("GESTIONE DI PROVA");
        auto *colonna = new QVBoxLayout(&m_schermo);
        for (int i = 0; i < 3; ++i) {
            m_txt.append(new QLineEdit(&m_schermo));
            colonna->addWidget(m_txt.last());
        }
        m_uscita = new QPushButton("&USCITA", &m_schermo);
        colonna->addWidget(m_uscita);
        QObject::connect(m_uscita, &QPushButton::clicked, [this] { ++m_uscite; });
        m_txt[1]->setMaxLength(3);
        m_aiuto = new Schermo(&m_schermo);
        m_aiuto->campi(m_txt, {ModoTesto, ModoCifre, ModoImporto});
    }

    void TearDown() override
    {
        installaApriUrl({});
        installaFineProgramma({});
    }

    void Mostra()
    {
        m_schermo.show();
        m_schermo.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_schermo));
        m_txt[0]->setFocus();
        QCoreApplication::processEvents();
    }

    void Premi(Qt::Key tasto, Qt::KeyboardModifiers mod = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), tasto, mod);
        QCoreApplication::processEvents();
    }

    QWidget m_schermo;
    QList<QLineEdit *> m_txt;
    QPushButton *m_uscita = nullptr;
    Schermo *m_aiuto = nullptr;
    QList<QUrl> m_aperti;
    int m_fine = 0;
    int m_uscite = 0;
};

QSizeF PaginaPdf(const QString &file)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    const QRegularExpression box(R"(/MediaBox \[0 0 ([\d.]+) ([\d.]+)\])");
    const auto m = box.match(QString::fromLatin1(f.readAll()));
    return m.hasMatch() ? QSizeF(m.captured(1).toDouble(), m.captured(2).toDouble()) : QSizeF();
}

} // namespace

TEST_F(SchermoProva, OgniCampoFiltraSecondoIlSuoModo)
{
    Mostra();
    QTest::keyClicks(m_txt[0], "ab1");
    EXPECT_EQ(m_txt[0]->text(), "AB1");
    // Digits only, and a full field moves on as typing it does.

    m_txt[1]->setFocus();
    QTest::keyClicks(m_txt[1], "9a87");
    QCoreApplication::processEvents();
    EXPECT_EQ(m_txt[1]->text(), "987");
    EXPECT_EQ(QApplication::focusWidget(), m_txt[2]);
}

TEST_F(SchermoProva, InvioPassaAlCampoSeguenteColorandolo)
{
    Mostra();
    m_txt[0]->setText(" ROSSI ");
    m_txt[0]->clearFocus();
    m_txt[0]->setFocus();
    EXPECT_EQ(tastiera().CampoPrecedente, "ROSSI");
    Premi(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), m_txt[1]);
    EXPECT_EQ(m_aiuto->campoAttivo(), 1);
    EXPECT_EQ(m_txt[1]->palette().color(QPalette::Base), QColor(255, 255, 192));
    EXPECT_EQ(m_txt[0]->palette().color(QPalette::Base), QColor(Qt::white));
}


TEST_F(SchermoProva, F2PremeUscitaCtrlAltF2ChiedeConferma)
{
    Mostra();
    Premi(Qt::Key_F2);
    EXPECT_EQ(m_uscite, 1);
    Premi(Qt::Key_F2, Qt::AltModifier); // Alt+F2 counts as F2
    EXPECT_EQ(m_uscite, 2);
    EXPECT_TRUE(tastiera().TastoAlt);

    m_messaggi.rispondi(Risposta::No);
    Premi(Qt::Key_F2, Qt::ControlModifier | Qt::AltModifier);
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    const Richiesta &r = m_messaggi.richieste()[0];
    EXPECT_EQ(r.testo, "FINE DI KELVAR?");
    EXPECT_EQ(r.titolo, "USCITA FORZATA");
    EXPECT_EQ(r.pulsanti, Pulsanti::SiNo);
    EXPECT_EQ(r.icona, Icona::Esclamazione);
    EXPECT_EQ(r.predefinito, 1);
    EXPECT_EQ(m_fine, 0);
    EXPECT_EQ(m_uscite, 2);

    m_messaggi.rispondi(Risposta::Si);
    Premi(Qt::Key_F2, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(m_fine, 1);
}


TEST_F(SchermoProva, CtrlUnoConIlPdfScriveUnaPaginaOrizzontale)
{
    ScriviIni(m_ini, "PDF", "UseAutosave", "1");
    ScriviIni(m_ini, "PDF", "AutosaveFilename", " <Title> ");
    ScriviIni(m_ini, "PDF", "AutosaveDirectory", m_cartella.percorso() + "/");
    RilevaPdf();
    ASSERT_TRUE(PdfPronto());
    EXPECT_EQ(pdf().CartellaPdf, m_cartella.percorso());
    const QString file = m_cartella.file(pdf().NomePdf + ".pdf");
    m_cartella.scrivi(pdf().NomePdf + ".pdf", "vecchio");

    m_schermo.resize(900, 300);
    Mostra();
    sessione().CodiceStop = 5;
    Premi(Qt::Key_1, Qt::ControlModifier);
    const QSizeF pagina = PaginaPdf(file);
    ASSERT_TRUE(pagina.isValid()) << qPrintable(file);
    EXPECT_GT(pagina.width(), pagina.height());
    ASSERT_EQ(m_aperti.size(), 1);
    EXPECT_EQ(m_aperti[0], QUrl::fromLocalFile(file));
    EXPECT_EQ(sessione().CodiceStop, 0);
}

TEST_F(SchermoProva, SenzaPdfLaSchermataVaPerPosta)
{
    Mostra();
    RilevaPdf();
    EXPECT_TRUE(pdf().StampantePdf.isEmpty());
    Premi(Qt::Key_0, Qt::ControlModifier);
    ASSERT_EQ(m_aperti.size(), 1);
    EXPECT_EQ(m_aperti[0].toString(), "mailto:" + IndirizzoAssistenza);
    EXPECT_EQ(sessione().CodiceStop, 0);
}

TEST(Pdf, ImpostazioniDelloScrittore)
{
    CartellaProva cartella;
    impostazioni().IniLocale = cartella.scrivi(
        "sorvane.ini", "[PDF]\nUseAutosave=1\nAutosaveFilename=<Author>\n"
                       "AutosaveDirectory=/tmp\n");
    RilevaPdf();
    EXPECT_EQ(pdf().StampantePdf, "PDFCREATOR"); // set, yet the path is off
    EXPECT_FALSE(PdfPronto());

    const QString nome = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
    ScriviIni(impostazioni().IniLocale, "PDF", "AutosaveFilename", "<Title>");
    ScriviIni(impostazioni().IniLocale, "PDF", "FilenameSubstitutions",
              "Altro|Nuovo\\" + nome + "\\|Schermata");
    RilevaPdf();
    EXPECT_TRUE(PdfPronto());
    EXPECT_EQ(pdf().NomePdf, "Schermata");
    EXPECT_EQ(pdf().CartellaPdf, "/tmp");
}

