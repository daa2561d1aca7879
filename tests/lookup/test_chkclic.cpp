// The client search's screen, shown headless over a real data folder and
// driven through its widgets: the live search, the months, the sort of the
// headings, the choice of a client.

#include "support/Finestre.h"
#include "ProvaAnagrafiche.h"

#include "lookup/ChkCliC.h"
#include "store/Cliente.h"

#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <memory>

namespace sorvane::prova {
namespace {

class SchermoAnagrafiche : public ProvaAnagrafiche
{
protected:
    void SetUp() override
    {
        ProvaAnagrafiche::SetUp();
        PulisciCliente();
        Cliente(1, QStringLiteral("ROSSI MARIO"),
                {{QStringLiteral("CliVisite"), QStringLiteral("SNNNNNNNNNNN ")},
                 {QStringLiteral("CliLocalita"), QStringLiteral("MILANO")}});
        Cliente(2, QStringLiteral("ROSSI ANNA"),
                {{QStringLiteral("CliVisite"), QStringLiteral("NSNNNNNNNNNN ")},
                 {QStringLiteral("CliIndirizzo"), QStringLiteral("VIA DELL'ORTO 3")},
                 {QStringLiteral("CliLocalita"), QStringLiteral("BARI")}});
        Cliente(3, QStringLiteral("VERDI LUIGI"),
                {{QStringLiteral("CliCategoria"), QStringLiteral("ZZZZZ")}});
    }
    void TearDown() override
    {
        m_schermo.reset();
        PulisciCliente();
        ProvaAnagrafiche::TearDown();
    }

    ChkCliC &Apri()
    {
        m_schermo = std::make_unique<ChkCliC>();
        m_schermo->resize(1200, 700);
        MostraAttiva(m_schermo.get());
        return *m_schermo;
    }
    QList<int> Righe() const
    {
        QList<int> codici;
        for (int r = 0; r < m_schermo->risultato()->rowCount(); ++r)
            codici << m_schermo->risultato()->Codice(r);
        return codici;
    }

    std::unique_ptr<ChkCliC> m_schermo;
};

TEST_F(SchermoAnagrafiche, NienteFinoAlPrimoCriterioPoiLaRicercaVivaEIChiusi)
{
    ChkCliC &s = Apri();
    EXPECT_TRUE(Righe().isEmpty()) << "no search at load";
    EXPECT_FALSE(s.CmdR(3)->isVisible());
    EXPECT_EQ(s.CmdR(1)->text(), QStringLiteral("&RICERCA"));

    // A box left changed searches; the Enter moves on.
    s.Btxt(BoxNome)->setFocus();
    QTest::keyClicks(s.Btxt(BoxNome), QStringLiteral("rossi"));
    QTest::keyClick(s.Btxt(BoxNome), Qt::Key_Return);
    Attendi();
    EXPECT_EQ(s.Btxt(BoxNome)->text(), QStringLiteral("ROSSI"));
    EXPECT_EQ(Righe(), (QList<int>{2, 1}));
    EXPECT_EQ(s.CmdR(1)->text(), QStringLiteral("&SELEZIONA"));
    EXPECT_TRUE(s.CmdR(3)->isVisible() && s.CmdR(4)->isVisible());

    s.Btxt(BoxNome)->clear();
    s.chkChiuso()->click();
    Attendi();
    EXPECT_EQ(Righe(), QList<int>{3});
}

TEST_F(SchermoAnagrafiche, UnMeseConUnClickSpegneLAltro)
{
    ChkCliC &s = Apri();
    s.Mese(0)->click();
    Attendi();
    EXPECT_TRUE(s.MeseAcceso(0));
    EXPECT_EQ(Righe(), QList<int>{1});
    s.Mese(1)->click();
    Attendi();
    EXPECT_FALSE(s.MeseAcceso(0));
    EXPECT_TRUE(s.MeseAcceso(1));
    EXPECT_EQ(Righe(), QList<int>{2});
    // Enter on a month is a click: off again, every open client.
    s.Mese(1)->setFocus();
    QTest::keyClick(s.Mese(1), Qt::Key_Return);
    // The button's click comes once its press has been drawn.
    EXPECT_TRUE(QTest::qWaitFor([&s] { return !s.MeseAcceso(1); }));
    EXPECT_EQ(Righe(), (QList<int>{2, 1}));
}

TEST_F(SchermoAnagrafiche, LeIntestazioniOrdinanoEIlDoppioClickOInvioSceglie)
{
    ChkCliC &s = Apri();
    s.CmdR(2)->click();
    Attendi();
    QHeaderView *h = s.GridRic()->horizontalHeader();
    QTest::mousePress(h->viewport(), Qt::RightButton, {},
                      QPoint(h->sectionViewportPosition(AnaLocalita) + 4, 4));
    Attendi();
    EXPECT_EQ(s.ordine().colonna, AnaLocalita);
    EXPECT_EQ(Righe(), (QList<int>{1, 2})) << "MILANO before BARI";
    QTest::mousePress(h->viewport(), Qt::LeftButton, {},
                      QPoint(h->sectionViewportPosition(AnaLocalita) + 4, 4));
    Attendi();
    EXPECT_EQ(Righe(), (QList<int>{2, 1}));
    EXPECT_EQ(s.risultato()->index(0, AnaIndirizzo).data().toString().trimmed(),
              QStringLiteral("VIA DELL'ORTO 3"));

    // CmdR(1) hands the focus to the grid; a double click answers.
    s.CmdR(1)->click();
    Attendi();
    EXPECT_EQ(QApplication::focusWidget(), s.GridRic());
    EXPECT_EQ(s.CmdR(1)->text(), QStringLiteral("&RICERCA"));
    const QPoint punto = s.GridRic()->visualRect(s.risultato()->index(0, AnaRagSoc)).center();
    QTest::mouseClick(s.GridRic()->viewport(), Qt::LeftButton, {}, punto);
    QTest::mouseDClick(s.GridRic()->viewport(), Qt::LeftButton, {}, punto);
    Attendi();
    EXPECT_EQ(s.result(), int(QDialog::Accepted));
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(Cli().Codice, 2);
    EXPECT_EQ(Cli().Ragsoc, QStringLiteral("ROSSI ANNA"));
    EXPECT_EQ(Cli().Localita.trimmed(), QStringLiteral("BARI"));

    // From the keyboard: the arrows move in the grid, Enter answers.
    ChkCliC &t = Apri();
    t.CmdR(2)->click();
    Attendi();
    t.CmdR(1)->click();
    Attendi();
    QTest::keyClick(t.GridRic(), Qt::Key_Down);
    QTest::keyClick(t.GridRic(), Qt::Key_Return);
    Attendi();
    EXPECT_EQ(t.result(), int(QDialog::Accepted));
    EXPECT_EQ(Cli().Codice, Righe().value(1));
}

TEST_F(SchermoAnagrafiche, LeLarghezzeDelleColonneRestano)
{
    {
        ChkCliC &s = Apri();
        s.GridRic()->setColumnWidth(AnaRagSoc, 321);
        s.CmdR(0)->click();
        Attendi();
        EXPECT_EQ(Cli().Codice, 0);
    }
    m_schermo.reset();
    ChkCliC &s = Apri();
    EXPECT_EQ(s.GridRic()->columnWidth(AnaRagSoc), 321);
}

} // namespace
} // namespace sorvane::prova
