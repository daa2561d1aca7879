#include "store/Cambi.h"

#include "ProvaAccesso.h"
#include "frame/core/Impostazioni.h"

#include <gtest/gtest.h>

using namespace sorvane;
using sorvane::prova::ProvaAccesso;

namespace {

class Cambi : public ProvaAccesso
{
protected:
    void SetUp() override
    {
        ProvaAccesso::SetUp();
        const QString sql = QStringLiteral("INSERT INTO TabCambi VALUES (?, ?, ?)");
        Scrivi(sql, {QStringLiteral("CHF"), 36000.0, 1.6});
        Scrivi(sql, {QStringLiteral("CHF"), 37300.0, 1.5});
        Scrivi(sql, {QStringLiteral("USD"), 37000.0, 0.93});
        Scrivi(sql, {QStringLiteral("USD"), 37400.0, 0.88});
        statoCambi().DataCambioTrovata = 1;
    }
};

} // namespace

TEST_F(Cambi, EuroELireNonLeggonoLaTabella)
{
    Scrivi(QStringLiteral("DROP TABLE TabCambi"));
    EXPECT_EQ(CercaCambio(QStringLiteral("EUR"), 37000), 1);
    EXPECT_EQ(statoCambi().DataCambioTrovata, NessunCambioLetto);
    EXPECT_EQ(CercaCambio(QStringLiteral("   "), 37000), 1);
    EXPECT_EQ(CercaCambio(QStringLiteral("LIT"), 1), 1936.27);
    impostazioni().CambioLire = 2000;
    EXPECT_EQ(CercaCambio(QStringLiteral("LIT "), 99999), 2000);
    EXPECT_EQ(statoCambi().DataCambioTrovata, NessunCambioLetto);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());

    // Without the table any other code is told once and answers 0.
    EXPECT_EQ(CercaCambio(QStringLiteral("USD"), 37000), 0);
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    EXPECT_TRUE(m_messaggi.richieste().first().testo.startsWith(
        QStringLiteral("ERRORE IN APERTURA ARCHIVIO CAMBI\n")));
    EXPECT_FALSE(tabelle().ArchivioAperto);
}

TEST_F(Cambi, LUltimoCambioAllaDataDellaStessaMoneta)
{
    EXPECT_DOUBLE_EQ(CercaCambio(QStringLiteral("USD"), 37000), 0.93);
    EXPECT_EQ(statoCambi().DataCambioTrovata, 37000);
    EXPECT_DOUBLE_EQ(CercaCambio(QStringLiteral("USD"), 37399.9), 0.93);
    EXPECT_DOUBLE_EQ(CercaCambio(QStringLiteral("usd"), 50000), 0.88);
    EXPECT_EQ(statoCambi().DataCambioTrovata, 37400);

    // Before USD's first rate the search lands on CHF's last: not an answer.
    EXPECT_EQ(CercaCambio(QStringLiteral("USD"), 36999), 0);
    EXPECT_EQ(statoCambi().DataCambioTrovata, NessunCambioLetto);
    // Before every rate, and a currency without rates.
    EXPECT_EQ(CercaCambio(QStringLiteral("CHF"), 35000), 0);
    EXPECT_EQ(CercaCambio(QStringLiteral("YEN"), 37000), 0);
    EXPECT_FALSE(tabelle().ArchivioAperto);
    EXPECT_FALSE(tabelle().RsArchivio.IsOpen());
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());
}

TEST_F(Cambi, LaMonetaDelCambioUnoSegueLaConfigurazione)
{
    Scrivi(QStringLiteral("INSERT INTO TabCambi VALUES ('EUR', 37000.0, 1.01)"));
    impostazioni().CodEur = QStringLiteral("EU");
    EXPECT_EQ(CercaCambio(QStringLiteral("EU"), 37000), 1);
    EXPECT_DOUBLE_EQ(CercaCambio(QStringLiteral("EUR"), 37000), 1.01);
    impostazioni().CodLit = QStringLiteral("ITL");
    EXPECT_EQ(CercaCambio(QStringLiteral("ITL"), 37000), 1936.27);
    EXPECT_EQ(CercaCambio(QStringLiteral("LIT"), 37000), 0);
}
