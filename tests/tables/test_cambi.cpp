// The exchange screen's list on a real data folder: which currencies it
// shows, the rate of a day by index seek, an edited rate, the writing of a
// day's rates and of the list's order.

#include "ProvaCambi.h"
#include "../distinte/ProvaDistinte.h"

#include <gtest/gtest.h>

namespace sorvane::prova {
namespace {

using ListaCambi = ProvaCambi;

// The refusing trigger of the slip tests, on both engines.
struct Rifiuti : ProvaDistinte
{
    using ProvaDistinte::Rifiuta;
};

TEST_F(ListaCambi, LeValuteDelModoEIlCambioDelGiorno)
{
    ElencoCambi e;
    ASSERT_TRUE(e.caricaValute(RicercaValute, nullptr));
    EXPECT_EQ(Colonna(e, ColCodiceMoneta), (QStringList{"EUR", "USD", "GBP", "JPY"}));
    EXPECT_EQ(Colonna(e, ColDescrizione)[2], "STERLINA INGLESE");

    // USD's seek lands on JPY's last rate, EUR's finds nothing: no rate.
    e.caricaCambi(m_cambi, Giorno);
    EXPECT_EQ(Colonna(e, ColRapporto), (QStringList{"0", "0", "0,850000", "168,500000"}));
    EXPECT_EQ(Colonna(e, ColNonDelGiorno), (QStringList{"N", "N", "", "N"}));
    EXPECT_EQ(Colonna(e, ColOriginale), (QStringList{"", "", "0,850000", "168,500000"}));
    EXPECT_EQ(Colonna(e, ColVariazione), (QStringList{"", "", "", ""}));

    e.caricaCambi(m_cambi, Giorno + 1);
    EXPECT_EQ(Colonna(e, ColNonDelGiorno), (QStringList{"N", "N", "N", "N"}));
    EXPECT_EQ(e.cella(2, ColRapporto), "0,850000");
    e.caricaCambi(m_cambi, Giorno + 3);
    EXPECT_EQ(e.cella(1, ColRapporto), "1,080000");
    EXPECT_TRUE(e.delGiorno(1));
    e.caricaCambi(m_cambi, Giorno - 31);
    EXPECT_EQ(Colonna(e, ColRapporto), (QStringList{"0", "0", "0", "0"}));

    ASSERT_TRUE(e.caricaValute(CambiAreaEuro, nullptr));
    EXPECT_EQ(Colonna(e, ColCodiceMoneta), (QStringList{"EUR"}));
    ASSERT_TRUE(e.caricaValute(CambiExtraEuro, nullptr));
    EXPECT_EQ(Colonna(e, ColCodiceMoneta), (QStringList{"USD", "GBP", "JPY"}));
}

TEST_F(ListaCambi, UnTestoDiventaZeroEConfermaNeCancellaIlCambioDelGiorno)
{
    ElencoCambi e;
    ASSERT_TRUE(e.caricaValute(RicercaValute, nullptr));
    e.caricaCambi(m_cambi, Giorno);
    e.modificaRapporto(2, QStringLiteral("ABC"));
    EXPECT_EQ(e.cella(2, ColRapporto), "0");
    EXPECT_EQ(e.cella(2, ColVariazione), "-100,000");
    e.modificaRapporto(3, QStringLiteral(" 170 "));
    EXPECT_EQ(e.cella(3, ColRapporto), "170");
    EXPECT_EQ(e.cella(3, ColVariazione), "0,890");
    // Without a stored rate above 0 there is nothing to compare with.
    e.modificaRapporto(1, QStringLiteral("1,1"));
    EXPECT_EQ(e.cella(1, ColVariazione), "");
    e.modificaRapporto(0, QString());
    EXPECT_EQ(e.cella(0, ColRapporto), "0");

    QString errore;
    ASSERT_TRUE(e.conferma(m_cambi, Giorno, &errore)) << qPrintable(errore);
    EXPECT_EQ(Cambi("GBP"), (QStringList{"45423=0.84"}));
    EXPECT_EQ(Cambi("JPY"), (QStringList{"45448=168.5", "45453=170"}));
    EXPECT_EQ(Cambi("USD"), (QStringList{"45453=1.1", "45456=1.08"}));
    EXPECT_TRUE(Cambi("EUR").isEmpty());
    // The stored rate stays the base of the change until the day changes.
    EXPECT_EQ(e.cella(3, ColOriginale), "168,500000");
    // Again: a 0 without a row of the day deletes nothing and adds nothing.
    ASSERT_TRUE(e.conferma(m_cambi, Giorno, &errore)) << qPrintable(errore);
    EXPECT_EQ(Cambi("GBP"), (QStringList{"45423=0.84"}));
}

TEST_F(ListaCambi, UnaRigaRifiutataLasciaTuttiICambiComeErano)
{
    // The trigger stands in the file of the table.
    const QString schema = SchemaDi(Db(), TrovaTabella(QStringLiteral("TabCambi"))->archivio);
    Rifiuti::Rifiuta(schema + ".rifiuta_jpy", "INSERT", "TabCambi", "no", "NEW.CmbMoneta = 'JPY'");
    ElencoCambi e;
    ASSERT_TRUE(e.caricaValute(RicercaValute, nullptr));
    e.caricaCambi(m_cambi, Giorno);
    e.modificaRapporto(1, QStringLiteral("1,1"));
    e.modificaRapporto(2, QStringLiteral("0,9"));
    e.modificaRapporto(3, QStringLiteral("170"));
    QString errore;
    EXPECT_FALSE(e.conferma(m_cambi, Giorno, &errore));
    EXPECT_TRUE(errore.startsWith("ERRORE NELLA REGISTRAZIONE DEI CAMBI: NESSUN CAMBIO"))
        << qPrintable(errore);
    EXPECT_EQ(Cambi("USD"), (QStringList{"45456=1.08"}));
    EXPECT_EQ(Cambi("GBP"), (QStringList{"45423=0.84", "45453=0.85"}));
    EXPECT_EQ(Transazione::profondita(Db()), 0);
}

TEST_F(ListaCambi, LOrdineDiUnaParteRestaNeiPostiDiQuellaParte)
{
    // The currencies outside the euro move among their own places.
    ElencoCambi e;
    ASSERT_TRUE(e.caricaValute(CambiExtraEuro, nullptr));
    e.sposta(2, 0);
    EXPECT_EQ(Colonna(e, ColCodiceMoneta), (QStringList{"JPY", "USD", "GBP"}));
    QString errore;
    ASSERT_TRUE(e.salvaOrdine(&errore)) << qPrintable(errore);
    ASSERT_TRUE(e.caricaValute(RicercaValute, nullptr));
    EXPECT_EQ(Colonna(e, ColCodiceMoneta), (QStringList{"EUR", "JPY", "USD", "GBP"}));
    EXPECT_EQ(Valore(QStringLiteral("SELECT GesCmb FROM TabNazioni WHERE Codice = 'CHF'")), 0);

    // Places that tie are told apart by the new order.
    Scrivi(QStringLiteral("UPDATE TabNazioni SET GesCmb = 1 WHERE GesCmb > 0"));
    ASSERT_TRUE(e.caricaValute(RicercaValute, nullptr));
    const QStringList prima = Colonna(e, ColCodiceMoneta);
    e.sposta(0, e.size() - 1);
    ASSERT_TRUE(e.salvaOrdine(&errore)) << qPrintable(errore);
    const QStringList dopo = Colonna(e, ColCodiceMoneta);
    ASSERT_TRUE(e.caricaValute(RicercaValute, nullptr));
    EXPECT_EQ(Colonna(e, ColCodiceMoneta), dopo);
    EXPECT_EQ(dopo.last(), prima.first());
}

} // namespace
} // namespace sorvane::prova
