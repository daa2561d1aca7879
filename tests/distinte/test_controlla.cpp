#include "ProvaDistinte.h"

#include "frame/core/Impostazioni.h"

#include <gtest/gtest.h>

using namespace sorvane;
using sorvane::prova::ProvaDistinte;

namespace {

class Controlla : public ProvaDistinte
{
};

} // namespace

TEST_F(Controlla, IlGiornoEIlMeseSoliENonLaData)
{
    Data(QStringLiteral("31"), QStringLiteral("4"), QStringLiteral("2024"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoGiorno), 0);
    EXPECT_EQ(m_controllo.ControllaCampo(CampoMese), 0);
    EXPECT_EQ(m_controllo.ControllaCampo(CampoAnno), 3);
    EXPECT_EQ(sessione().CodiceStop, 3);
    EXPECT_EQ(m_controllo.DataMovimento, "31/4/2024");

    // The message, then the focus back to the day.
    EXPECT_EQ(MostraErroreCampo(), 1);
    EXPECT_EQ(sessione().CodiceStop, 1);
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    const Richiesta r = m_messaggi.richieste().first();
    EXPECT_EQ(r.testo, "DATA MOVIMENTO ERRATA");
    EXPECT_EQ(r.titolo, "KELVAR - ERRORE N. 3");
    EXPECT_EQ(r.icona, Icona::Stop);

    for (const char *giorno : {"0", "32", " ", "X"}) {
        m_campi.imposta(CampoGiorno, QString::fromLatin1(giorno));
        EXPECT_EQ(m_controllo.ControllaCampo(CampoGiorno), 1) << giorno;
    }
    m_campi.imposta(CampoMese, QStringLiteral("13"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoMese), 2);
    m_messaggi.pulisci();
    EXPECT_EQ(MostraErroreCampo(), 2);
    EXPECT_EQ(m_messaggi.testi(), QStringList{"MESE ERRATO"});
}

TEST_F(Controlla, OltreCentottantaGiorniSiChiedePrimaEDopo)
{
    const int oggi = GiornoDaData(QDate(2024, 6, 15));
    for (int distanza : {0, 180, -180}) {
        Giorno(oggi + distanza);
        EXPECT_EQ(m_controllo.ControllaCampo(CampoAnno), 0) << distanza;
    }
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());

    // The question is answered from the script; Cancel stays for the rest.
    m_messaggi.gestore = [](const Richiesta &r) -> std::optional<Risposta> {
        if (r.pulsanti == Pulsanti::SiNo)
            return std::nullopt;
        return Risposta::Annulla;
    };
    m_messaggi.rispondi(Risposta::Si);
    m_messaggi.rispondi(Risposta::No);
    Giorno(oggi - 181);
    EXPECT_EQ(m_controllo.ControllaCampo(CampoAnno), 0);
    EXPECT_EQ(m_controllo.CampoFuoco, 0);
    Giorno(oggi + 181);
    EXPECT_EQ(m_controllo.ControllaCampo(CampoAnno), 0);
    // No keeps the date: only the focus goes back to the day.
    EXPECT_EQ(m_controllo.CampoFuoco, CampoGiorno);
    EXPECT_EQ(sessione().CodiceStop, 0);
    EXPECT_EQ(m_campi.testo(CampoGiorno), "13");
    EXPECT_EQ(m_campi.testo(CampoMese), "12");

    ASSERT_EQ(m_messaggi.richieste().size(), 2);
    for (const Richiesta &r : m_messaggi.richieste()) {
        EXPECT_EQ(r.testo, "DATA DI OLTRE 6 MESI: CONFERMI?");
        EXPECT_EQ(r.titolo, "KELVAR - DATA VECCHIA");
        EXPECT_EQ(r.pulsanti, Pulsanti::SiNo);
    }
}

TEST_F(Controlla, IlCodiceClienteRiempieIlNome)
{
    m_campi.imposta(CampoCodiceCliente, QStringLiteral(" 12"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoCodiceCliente), 0);
    EXPECT_EQ(m_campi.testo(CampoNomeCliente), "ROSSI MARIO");
    EXPECT_EQ(m_controllo.ClienteCorrente, 12);
    EXPECT_EQ(m_controllo.CampoFuoco, 0);

    // Left with the down arrow the name is skipped.
    m_controllo.UltimoTasto = TastoGiu;
    m_campi.imposta(CampoCodiceCliente, QStringLiteral("14"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoCodiceCliente), 0);
    EXPECT_EQ(m_campi.testo(CampoNomeCliente), "BIANCHI LUCA");
    EXPECT_EQ(m_controllo.CampoFuoco, CampoCausale);

    m_campi.imposta(CampoCodiceCliente, QStringLiteral("99"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoCodiceCliente), 4);
    EXPECT_EQ(MostraErroreCampo(), 4);
    EXPECT_EQ(m_messaggi.testi(), QStringList{"CLIENTE NON CODIFICATO"});

    // Blank or 0: the client may come from the name.
    for (const char *codice : {" ", "0", ""}) {
        m_campi.imposta(CampoCodiceCliente, QString::fromLatin1(codice));
        EXPECT_EQ(m_controllo.ControllaCampo(CampoCodiceCliente), 0) << codice;
    }
    EXPECT_EQ(m_ricerche, 0);
}

TEST_F(Controlla, UnNomeSoloRiempieIDueCampi)
{
    m_campi.imposta(CampoCodiceCliente, QStringLiteral(" "));
    m_campi.imposta(CampoNomeCliente, QStringLiteral("ROSSI MARI "));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoNomeCliente), 0);
    EXPECT_EQ(m_campi.testo(CampoCodiceCliente), "12");
    EXPECT_EQ(m_campi.testo(CampoNomeCliente), "ROSSI MARIO");
    EXPECT_EQ(m_controllo.ClienteCorrente, 12);
    EXPECT_TRUE(m_posizioni.isEmpty());

    // A closed client is not offered; no match keeps code 5, without words.
    m_campi.imposta(CampoNomeCliente, QStringLiteral("BIANCHI LUI"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoNomeCliente), 5);
    EXPECT_EQ(MostraErroreCampo(), 5);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());

    // Blank passes without a search.
    const int ricerche = m_ricerche;
    m_campi.imposta(CampoNomeCliente, QStringLiteral("  "));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoNomeCliente), 0);
    EXPECT_EQ(m_ricerche, ricerche);
}

TEST_F(Controlla, PiuNomiApronoLaListaSottoIlCampo)
{
    struct Campi : CampiInMemoria
    {
        PosizioneCampo posizione(int indice) const override
        {
            return indice == CampoNomeCliente ? PosizioneCampo{1000, 2000, 600, 285}
                                              : PosizioneCampo{};
        }
    } campi;
    ControlloCampi controllo(campi);
    controllo.ricerca = m_controllo.ricerca;
    campi.imposta(CampoCodiceCliente, QStringLiteral("7"));
    campi.imposta(CampoNomeCliente, QStringLiteral("ROSSI"));

    m_scelta = 13;
    EXPECT_EQ(controllo.ControllaCampo(CampoNomeCliente), 0);
    ASSERT_EQ(m_posizioni.size(), 1);
    EXPECT_EQ(m_posizioni.first(), qMakePair(1000, 600 + 285 + 2000 + 360));
    EXPECT_EQ(campi.testo(CampoCodiceCliente), "13");
    EXPECT_EQ(campi.testo(CampoNomeCliente), "ROSSI MARTA");
    EXPECT_EQ(controllo.ClienteCorrente, 13);

    // Left without a choice: the code is emptied and the name gets the focus.
    m_scelta = 0;
    campi.imposta(CampoNomeCliente, QStringLiteral("ROSSI"));
    EXPECT_EQ(controllo.ControllaCampo(CampoNomeCliente), 5);
    EXPECT_EQ(campi.testo(CampoCodiceCliente), "");
    EXPECT_EQ(controllo.CampoFuoco, CampoNomeCliente);
    EXPECT_EQ(controllo.ClienteCorrente, 13);
}

TEST_F(Controlla, LaCausaleSiAllineaESiCerca)
{
    m_campi.imposta(CampoCausale, QStringLiteral(" 1"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoCausale), 0);
    EXPECT_EQ(m_campi.testo(CampoCausale), "001");
    EXPECT_EQ(m_controllo.CauDes, QStringLiteral("VERSAMENTO"));

    m_campi.imposta(CampoCausale, QStringLiteral("abc"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoCausale), 0);
    EXPECT_EQ(m_controllo.CauDes, QStringLiteral("RISCATTO"));

    m_campi.imposta(CampoCausale, QStringLiteral("2"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoCausale), 6);
    EXPECT_FALSE(m_controllo.CauDes.has_value());
    MostraErroreCampo();
    EXPECT_EQ(m_messaggi.testi(), QStringList{"CAUSALE NON CODIFICATA"});

    // Blank passes while typing, not in a button's check.
    m_campi.imposta(CampoCausale, QStringLiteral(" "));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoCausale), 0);
    m_controllo.rigoroso = true;
    EXPECT_EQ(m_controllo.ControllaCampo(CampoCausale), 6);

    // Another user of the shared code table does not mislead the lookup.
    m_controllo.rigoroso = false;
    ChiudiTabella();
    tabelle().NomeTabella = QStringLiteral("TabCausali");
    ApriTabella(TabellaPerNome);
    m_campi.imposta(CampoCausale, QStringLiteral("1"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoCausale), 0);
    EXPECT_EQ(m_controllo.CauDes, QStringLiteral("VERSAMENTO"));
}

TEST_F(Controlla, LaMonetaVuotaPrendeLaBaseSenzaCambio)
{
    // Without the rate table any lookup would be told to the user.
    Scrivi(QStringLiteral("DROP TABLE TabCambi"));
    impostazioni().CodBase = QStringLiteral("LIT");
    Data(QStringLiteral("1"), QStringLiteral("6"), QStringLiteral("2024"));
    m_campi.imposta(CampoMoneta, QStringLiteral("  "));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoMoneta), 0);
    EXPECT_EQ(m_campi.testo(CampoMoneta), "LIT");
    EXPECT_EQ(m_controllo.ControllaCampo(CampoMoneta), 0);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());
}

TEST_F(Controlla, LaMonetaSenzaCambioNonECodificata)
{
    Data(QStringLiteral("15"), QStringLiteral("6"), QStringLiteral("2024"));
    m_campi.imposta(CampoMoneta, QStringLiteral("USD"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoMoneta), 0);
    m_campi.imposta(CampoMoneta, QStringLiteral("EUR"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoMoneta), 0);

    // The first rate of USD is ten days before today.
    Data(QStringLiteral("4"), QStringLiteral("6"), QStringLiteral("2024"));
    m_campi.imposta(CampoMoneta, QStringLiteral("USD"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoMoneta), 17);
    m_campi.imposta(CampoMoneta, QStringLiteral("CHF"));
    Data(QStringLiteral("15"), QStringLiteral("6"), QStringLiteral("2024"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoMoneta), 17);
    EXPECT_EQ(MostraErroreCampo(), 17);
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    EXPECT_EQ(m_messaggi.richieste().first().testo, "MONETA NON CODIFICATA");
    EXPECT_EQ(m_messaggi.richieste().first().titolo, "KELVAR - ERRORE N. 17");
}

TEST_F(Controlla, IlControlloDelPulsanteSiFermaAlPrimoErrore)
{
    Data(QStringLiteral("10"), QStringLiteral("6"), QStringLiteral("2024"));
    m_campi.imposta(CampoCodiceCliente, QStringLiteral("12"));
    m_campi.imposta(CampoCausale, QStringLiteral(" "));
    m_campi.imposta(CampoMoneta, QStringLiteral(" "));
    m_campi.imposta(CampoImporto, QStringLiteral(" "));
    EXPECT_EQ(m_controllo.ControllaInserimento(), 6);
    EXPECT_EQ(m_controllo.ControllaModifica(), 6);

    m_campi.imposta(CampoCausale, QStringLiteral("1"));
    EXPECT_EQ(m_controllo.ControllaModifica(), 0);
    EXPECT_EQ(m_controllo.ControllaInserimento(), 18);
    EXPECT_EQ(m_campi.testo(CampoMoneta), "EUR");
    MostraErroreCampo();
    EXPECT_EQ(m_messaggi.testi(), QStringList{"IMPORTO NON INDICATO"});

    m_campi.imposta(CampoImporto, QStringLiteral("1.250,50"));
    EXPECT_EQ(m_controllo.ControllaInserimento(), 0);
    EXPECT_EQ(sessione().CodiceStop, 0);

    // The slices and the cheque have no check.
    for (int i : {7, 12, 16, 19, 20})
        EXPECT_EQ(m_controllo.ControllaCampo(i), 0) << i;
}
