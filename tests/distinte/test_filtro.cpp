#include "ProvaDistinte.h"

#include <gtest/gtest.h>

using namespace sorvane;
using sorvane::prova::ProvaDistinte;

namespace {

class Filtro : public ProvaDistinte
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

// The filter's words are one code late, and stay so.
TEST_F(Filtro, LeParoleSonoQuelleDelCampoDopo)
{
    using P = QPair<QString, int>;
    EXPECT_EQ(Errore(21, QStringLiteral("32")), P("MESE INIZIALE ERRATO", 21));
    EXPECT_EQ(Errore(22, QStringLiteral("13")), P("DATA MOVIMENTO INIZIALE ERRATA", 20));
    EXPECT_EQ(m_messaggi.richieste().first().titolo, "KELVAR - ERRORE N. 22");
    EXPECT_EQ(Errore(24, QStringLiteral("0")), P("MESE FINALE ERRATO", 24));
    EXPECT_EQ(Errore(25, QStringLiteral("13")), P("DATA MOVIMENTO FINALE ERRATA", 23));
    EXPECT_EQ(Errore(27, QStringLiteral("99")), P("CLIENTE NON CODIFICATO", 27));
    EXPECT_EQ(Errore(28, QStringLiteral("NESSUNO")), P(QString(), 28));
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());

    // The dates joined: "//" (nothing typed) or a real date.
    m_campi.imposta(21, QStringLiteral("31"));
    m_campi.imposta(22, QStringLiteral("4"));
    EXPECT_EQ(Errore(23, QStringLiteral("2024")), P("GIORNO FINALE ERRATO", 23));
    m_campi.imposta(24, QStringLiteral("1"));
    m_campi.imposta(25, QStringLiteral("1"));
    EXPECT_EQ(Errore(26, QStringLiteral("24x")), P("CLIENTE NON CODIFICATO", 26));
}

TEST_F(Filtro, IlPeriodoPuoRestareVuoto)
{
    for (int i = 21; i <= 26; ++i)
        m_campi.imposta(i, QStringLiteral(" "));
    for (int i : {21, 22, 23, 26})
        EXPECT_EQ(m_controllo.ControllaCampo(i), 0) << i;
    // Only the day and month to must be typed.
    EXPECT_EQ(m_controllo.ControllaCampo(24), 24);
    EXPECT_EQ(m_controllo.ControllaCampo(25), 25);

    m_campi.imposta(21, QStringLiteral("0"));
    EXPECT_EQ(m_controllo.ControllaCampo(21), 0);
    m_campi.imposta(24, QStringLiteral("30"));
    m_campi.imposta(25, QStringLiteral("4"));
    m_campi.imposta(26, QStringLiteral("2024"));
    EXPECT_EQ(m_controllo.ControllaCampo(26), 0);

    // The client of the filter, by code or by name.
    m_campi.imposta(27, QStringLiteral("14"));
    EXPECT_EQ(m_controllo.ControllaCampo(27), 0);
    EXPECT_EQ(m_campi.testo(28), "BIANCHI LUCA");
    m_campi.imposta(27, QStringLiteral(" "));
    m_campi.imposta(28, QStringLiteral("ROSSI MART"));
    EXPECT_EQ(m_controllo.ControllaCampo(28), 0);
    EXPECT_EQ(m_campi.testo(27), "13");
    EXPECT_EQ(m_campi.testo(CampoCodiceCliente), "");
}
