#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"

#include <gtest/gtest.h>

using namespace sorvane;

TEST(Messaggi, SenzaRisponditoreVinceIlPulsantePredefinito)
{
    EXPECT_EQ(Messaggio("x", "t", Icona::Esclamazione, Pulsanti::SiNo, 1), Risposta::No);
    EXPECT_EQ(sessione().EsitoMsg, 7);
    EXPECT_EQ(Messaggio("x", "t", Icona::Stop, Pulsanti::RiprovaAnnulla), Risposta::Riprova);
    EXPECT_EQ(sessione().EsitoMsg, 4);
}

TEST(Messaggi, IlRisponditoreRegistraERispondeInOrdine)
{
    MessaggiRegistrati m;
    m.rispondi(Risposta::Annulla);
    EXPECT_EQ(Messaggio("primo", "T1", Icona::Stop, Pulsanti::RiprovaAnnulla), Risposta::Annulla);
    EXPECT_EQ(Messaggio("secondo", "T2", Icona::Domanda, Pulsanti::SiNo), Risposta::Si);
    ASSERT_EQ(m.richieste().size(), 2);
    EXPECT_EQ(m.richieste()[0].titolo, "T1");
    EXPECT_EQ(m.testi(), QStringList({"primo", "secondo"}));
}
