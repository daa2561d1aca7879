// The field checks both slip screens share, at their edges and with the
// words the user reads; the usual paths are typed through the screens.

#include "ProvaDistinte.h"

#include "frame/core/Impostazioni.h"

#include <gtest/gtest.h>

using namespace sorvane;
using sorvane::prova::ProvaDistinte;

namespace {

class Controlla : public ProvaDistinte
{
protected:
    // The words shown for a failing filter field, and the field that gets
    // the focus afterwards.
    QPair<QString, int> Errore(int indice, const QString &testo)
    {
        m_campi.imposta(indice, testo);
        if (m_controllo.ControllaCampo(indice) != indice)
            return {QStringLiteral("passa"), 0};
        m_messaggi.pulisci();
        const int fuoco = MostraErroreCampo();
        const QStringList testi = m_messaggi.testi();
        return {testi.isEmpty() ? QString() : testi.first(), fuoco};
    }
};

} // namespace

TEST_F(Controlla, IlGiornoEIlMeseSoliENonLaData)
{
    Data("31", "4", "2024");
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

TEST_F(Controlla, UnNomeSoloRiempieIDueCampi)
{
    m_campi.imposta(CampoCodiceCliente, QStringLiteral(" "));
    m_campi.imposta(CampoNomeCliente, QStringLiteral("ROSSI MARI "));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoNomeCliente), 0);
    EXPECT_EQ(m_campi.testo(CampoCodiceCliente), "12");
    EXPECT_EQ(m_campi.testo(CampoNomeCliente), "ROSSI MARIO");
    EXPECT_EQ(m_controllo.ClienteCorrente, 12);

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

TEST_F(Controlla, LaCausaleMinuscolaVuotaOSullaTabellaComune)
{
    m_campi.imposta(CampoCausale, QStringLiteral("abc"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoCausale), 0);
    EXPECT_EQ(m_controllo.CauDes, QStringLiteral("RISCATTO"));

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

TEST_F(Controlla, LaMonetaSenzaCambioNonECodificata)
{
    Data("15", "6", "2024");
    m_campi.imposta(CampoMoneta, QStringLiteral("USD"));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoMoneta), 0);

    // The first rate of USD is ten days before today.
    Data("4", "6", "2024");
    EXPECT_EQ(m_controllo.ControllaCampo(CampoMoneta), 17);
    m_campi.imposta(CampoMoneta, QStringLiteral("CHF"));
    Data("15", "6", "2024");
    EXPECT_EQ(m_controllo.ControllaCampo(CampoMoneta), 17);
    EXPECT_EQ(MostraErroreCampo(), 17);
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    EXPECT_EQ(m_messaggi.richieste().first().testo, "MONETA NON CODIFICATA");
    EXPECT_EQ(m_messaggi.richieste().first().titolo, "KELVAR - ERRORE N. 17");

    // Blank takes the base currency: without the rate table any lookup
    // would be told to the user.
    m_messaggi.pulisci();
    Cambia(QStringLiteral("DROP TABLE TabCambi"));
    impostazioni().CodBase = QStringLiteral("LIT");
    m_campi.imposta(CampoMoneta, QStringLiteral("  "));
    EXPECT_EQ(m_controllo.ControllaCampo(CampoMoneta), 0);
    EXPECT_EQ(m_campi.testo(CampoMoneta), "LIT");
    EXPECT_EQ(m_controllo.ControllaCampo(CampoMoneta), 0);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());
}

TEST_F(Controlla, IlControlloDelPulsanteSiFermaAlPrimoErrore)
{
    Data("10", "6", "2024");
    m_campi.imposta(CampoCodiceCliente, QStringLiteral("12"));
    m_campi.imposta(CampoCausale, QStringLiteral("1"));
    m_campi.imposta(CampoMoneta, QStringLiteral(" "));
    m_campi.imposta(CampoImporto, QStringLiteral(" "));
    // The amount is wanted only for a new movement; a change still takes
    // no amount that is no number.
    EXPECT_EQ(m_controllo.ControllaModifica(), 0);
    m_campi.imposta(CampoSpese, QStringLiteral("1,000,5"));
    EXPECT_EQ(m_controllo.ControllaModifica(), 30);
    m_campi.imposta(CampoSpese, QString());
    EXPECT_EQ(m_controllo.ControllaInserimento(), 18);
    EXPECT_EQ(m_campi.testo(CampoMoneta), "EUR");
    MostraErroreCampo();
    EXPECT_EQ(m_messaggi.testi(), QStringList{"IMPORTO NON INDICATO"});
}

// The amount and the expenses read a text alike: what is no number stops
// the field with the amount's words and sends the focus back to it.
TEST_F(Controlla, ImportoESpeseNonNumericiNonPassano)
{
    prova::LocaleFissato it(prova::Italiano());
    const struct
    {
        int campo;
        const char *testo;
        int codice;
    } righe[] = {
        // "2.500,50" typed: the "." came out as ",".
        {CampoImporto, "2,500,50", 18}, {CampoImporto, "2.500,5", 0},
        {CampoImporto, "0", 18}, {CampoImporto, "1/2/3", 18},
        {CampoSpese, "1.000", 0}, {CampoSpese, " ", 0}, {CampoSpese, "2,500,50", ErroreSpese},
    };
    for (const auto &r : righe) {
        SCOPED_TRACE(r.testo);
        m_campi.imposta(r.campo, QString::fromUtf8(r.testo));
        EXPECT_EQ(m_controllo.ControllaCampo(r.campo), r.codice);
    }
    m_messaggi.pulisci(); // the last: the expenses
    EXPECT_EQ(MostraErroreCampo(), CampoSpese);
    EXPECT_EQ(m_messaggi.testi(), QStringList{"IMPORTO NON INDICATO"});
}

// The filter's words are one code late, and stay so.
TEST_F(Controlla, IlFiltroHaLeParoleDelCampoDopo)
{
    using P = QPair<QString, int>;
    EXPECT_EQ(Errore(21, QStringLiteral("32")), P("MESE INIZIALE ERRATO", 21));
    EXPECT_EQ(Errore(22, QStringLiteral("13")), P("DATA MOVIMENTO INIZIALE ERRATA", 20));
    EXPECT_EQ(m_messaggi.richieste().first().titolo, "KELVAR - ERRORE N. 22");
    EXPECT_EQ(Errore(24, QStringLiteral("0")), P("MESE FINALE ERRATO", 24));
    EXPECT_EQ(Errore(25, QStringLiteral("13")), P("DATA MOVIMENTO FINALE ERRATA", 23));
    EXPECT_EQ(Errore(28, QStringLiteral("NESSUNO")), P(QString(), 28));
    // Of the period only the day and month to must be typed.
    EXPECT_EQ(Errore(24, QStringLiteral(" ")), P("MESE FINALE ERRATO", 24));

    // The dates joined: "//" (nothing typed) or a real date.
    m_campi.imposta(21, QStringLiteral("31"));
    m_campi.imposta(22, QStringLiteral("4"));
    EXPECT_EQ(Errore(23, QStringLiteral("2024")), P("GIORNO FINALE ERRATO", 23));
    m_campi.imposta(24, QStringLiteral("1"));
    m_campi.imposta(25, QStringLiteral("1"));
    EXPECT_EQ(Errore(26, QStringLiteral("24x")), P("CLIENTE NON CODIFICATO", 26));

    // The client by name leaves the movement's code alone.
    m_campi.imposta(28, QStringLiteral("ROSSI MART"));
    EXPECT_EQ(m_controllo.ControllaCampo(28), 0);
    EXPECT_EQ(m_campi.testo(27), "13");
    EXPECT_EQ(m_campi.testo(CampoCodiceCliente), "");
}
