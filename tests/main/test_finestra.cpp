#include "ProvaIni.h"

#include "frame/ui/Finestra.h"

#include <QScreen>
#include <QWidget>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

// A 1600 x 1000 screen, a screen of 600 x 300 pixels (9000 x 4500 twips).
class StatoFinestra : public ProvaIni
{
protected:
    void SetUp() override
    {
        ProvaIni::SetUp();
        sessione().LarghezzaSchermo = 24000;
        sessione().AltezzaSchermo = 15000;
        sessione().LarghezzaMax = 24120;
        sessione().AltezzaMax = 15120;
        m_schermo.setObjectName("GesProva");
        m_schermo.resize(600, 300);
    }

    void Scrivi(const char *chiave, int valore)
    {
        ScriviIni(m_ini, "GesProva", chiave, QString::number(valore));
    }

    QWidget m_schermo;
};

} // namespace

TEST_F(StatoFinestra, SalvataERimessa)
{
    m_schermo.setGeometry(120, 80, 700, 420);
    SalvaFinestra(&m_schermo);
    EXPECT_EQ(LeggiIni(m_ini, "GesProva", "WSTATE"), "0");
    EXPECT_EQ(LeggiIni(m_ini, "GesProva", "DIMX"), "10500");
    EXPECT_EQ(LeggiIni(m_ini, "GesProva", "POSY"), "1200");

    QWidget altro;
    altro.setObjectName("GesProva");
    altro.resize(600, 300);
    RipristinaFinestra(&altro);
    EXPECT_EQ(altro.geometry(), QRect(120, 80, 700, 420));
}

TEST_F(StatoFinestra, UnaPosizioneFuoriSchermoTornaDentro)
{
    Scrivi("POSX", 20000);
    Scrivi("POSY", 14000);
    RipristinaFinestra(&m_schermo);
    EXPECT_EQ(m_schermo.pos(), QPoint(1000, 700));
    // Asked not to correct, it stays where it was saved.
    int correggi = 1;
    RipristinaFinestra(&m_schermo, correggi);
    EXPECT_EQ(m_schermo.pos(), QPoint(1333, 933));
}

// A window grown past the screen's edge comes back inside its free area.
TEST_F(StatoFinestra, UnaFinestraCresciutaTornaNelloSchermo)
{
    const QRect libero = m_schermo.screen()->availableGeometry();
    m_schermo.resize(200, 100);
    m_schermo.move(libero.right() - 150, libero.bottom() - 80);
    m_schermo.show();
    m_schermo.resize(400, 300);
    TieniSulloSchermo(&m_schermo);
    EXPECT_TRUE(libero.contains(m_schermo.frameGeometry()))
        << m_schermo.frameGeometry().x() << "," << m_schermo.frameGeometry().y();
}
