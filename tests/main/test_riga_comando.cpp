#include "frame/main/RigaComando.h"

#include <gtest/gtest.h>

using namespace sorvane;

TEST(RigaComando, SenzaBarraEUnaProvaConIlMenu)
{
    for (const QString riga : {QString(), QStringLiteral("   "), QStringLiteral("ROSSI 3")}) {
        const ParametriAvvio p = SpezzaRigaComando(riga);
        EXPECT_TRUE(p.ModoProva) << qPrintable(riga);
        EXPECT_EQ(p.IndiceMenu, 9);
        EXPECT_FALSE(p.MancanoParametri());
        EXPECT_EQ(p.OffsetX, 0);
        EXPECT_EQ(p.OffsetY, 0);
    }
}

TEST(RigaComando, UnaBarraInTestaNonHaOperatore)
{
    EXPECT_TRUE(SpezzaRigaComando("|1|100|200").MancanoParametri());
    EXPECT_TRUE(SpezzaRigaComando("   |1").MancanoParametri());
    EXPECT_TRUE(SpezzaRigaComando("\"\"|1").MancanoParametri());
}

TEST(RigaComando, OperatoreInMaiuscoloEIndiceDaLettereOVuotoEZero)
{
    ParametriAvvio p = SpezzaRigaComando("rossi|");
    EXPECT_EQ(p.Operatore, "ROSSI");
    EXPECT_FALSE(p.ModoProva);
    EXPECT_EQ(p.IndiceMenu, 0);

    p = SpezzaRigaComando("bianchi|abc");
    EXPECT_EQ(p.Operatore, "BIANCHI");
    EXPECT_FALSE(p.ModoProva);
    EXPECT_EQ(p.IndiceMenu, 0);

    // The numeric prefix, truncated.
    EXPECT_EQ(SpezzaRigaComando("A|2abc|0|0").IndiceMenu, 2);
    EXPECT_EQ(SpezzaRigaComando("A| 3.9 |0|0").IndiceMenu, 3);
}

TEST(RigaComando, IndiceNegativoPortaInProvaEOttoNo)
{
    ParametriAvvio p = SpezzaRigaComando("ROSSI|-1|10|20");
    EXPECT_TRUE(p.ModoProva);
    EXPECT_EQ(p.IndiceMenu, 9);
    EXPECT_EQ(p.OffsetX, 10);

    p = SpezzaRigaComando("ROSSI|8");
    EXPECT_FALSE(p.ModoProva);
    EXPECT_EQ(p.IndiceMenu, 8);
}

TEST(RigaComando, LeVirgoletteSparisconoPrimaDiSpezzare)
{
    ParametriAvvio p = SpezzaRigaComando("\"ro\"ssi\"|\"1\"|\"1500\"|\"2400\"");
    EXPECT_EQ(p.Operatore, "ROSSI");
    EXPECT_EQ(p.IndiceMenu, 1);
    EXPECT_EQ(p.OffsetX, 1500);
    EXPECT_EQ(p.OffsetY, 2400);

    // A "|" inside quotes still splits.
    p = SpezzaRigaComando("ROSSI|\"3|150\"|250");
    EXPECT_EQ(p.IndiceMenu, 3);
    EXPECT_EQ(p.OffsetX, 150);
    EXPECT_EQ(p.OffsetY, 250);
}

TEST(RigaComando, CoordinateSoloSeNumeriche)
{
    ParametriAvvio p = SpezzaRigaComando("ROSSI|1|abc|40");
    EXPECT_FALSE(p.OffsetX.has_value());
    EXPECT_EQ(p.OffsetY, 40);

    // The last field goes through the numeric reading: letters read 0.
    p = SpezzaRigaComando("ROSSI|1|10|xy");
    EXPECT_EQ(p.OffsetX, 10);
    EXPECT_EQ(p.OffsetY, 0);

    p = SpezzaRigaComando("ROSSI|1|12.6");
    EXPECT_EQ(p.OffsetX, 13);
    EXPECT_EQ(p.OffsetY, 0);
}

TEST(Cornice, UnaXOltreLoSchermoTornaIndietro)
{
    const MisureSchermo m = MisuraSchermo(24000, 15000);
    EXPECT_EQ(m.LarghezzaMax, 24120);
    const Posizione p = PosizionaCornice({20000, 0}, 9600, m.LarghezzaMax);
    EXPECT_EQ(p.x, 24120 - 9600);
    EXPECT_EQ(p.y, 0);
    EXPECT_EQ(PosizionaCornice({14520, 0}, 9600, m.LarghezzaMax).x, 14520);
}

TEST(Cornice, LaYSiMisuraSullaLarghezza)
{
    // A tall narrow frame low on the screen stays where it is: only its width
    // counts against the screen's width.
    const Posizione bassa = PosizionaCornice({0, 12000}, 3000, 24120);
    EXPECT_EQ(bassa.y, 12000);
    // A y whose sum with the width passes the screen's width is replaced,
    // even where the screen is tall enough.
    const Posizione oltre = PosizionaCornice({0, 16000}, 9600, 24120);
    EXPECT_EQ(oltre.y, 24120 - 9600);
}

TEST(Cornice, UnoSchermoLargoOltre13000TwipsValeComeUnoPiccolo)
{
    MisureSchermo m = MisuraSchermo(13001, 20000);
    EXPECT_EQ(m.LarghezzaSchermo, 12120);
    EXPECT_EQ(m.AltezzaSchermo, 9120);
    EXPECT_EQ(m.LarghezzaMax, 13121);
    EXPECT_EQ(m.AltezzaMax, 20120);

    m = MisuraSchermo(13000, 9750);
    EXPECT_EQ(m.LarghezzaSchermo, 13000);
    EXPECT_EQ(m.AltezzaSchermo, 9750);
}
