#include "frame/main/RigaComando.h"

#include <gtest/gtest.h>

#include <optional>

using namespace sorvane;

TEST(RigaComando, CampiLetti)
{
    const std::optional<int> no;
    const struct
    {
        const char *riga;
        const char *operatore; // blank: "Mancano i parametri"
        bool prova;
        int indice;
        std::optional<int> x, y;
    } righe[] = {
        // Without "|" it is a run by hand: the test mode with the menu.
        {"ROSSI 3", "PROVA", true, 9, 0, 0},
        {"   |1", "   ", false, 1, 0, 0},
        // The menu index: empty or letters are 0, else the numeric prefix truncated.
        {"bianchi|abc", "BIANCHI", false, 0, 0, 0},
        {"A| 3.9 |0|0", "A", false, 3, 0, 0},
        // A negative index is a run in test mode; 8 is not.
        {"ROSSI|-1|10|20", "ROSSI", true, 9, 10, 20},
        {"ROSSI|8", "ROSSI", false, 8, 0, 0},
        // Quotes go before the split, and a "|" inside them still splits.
        {"\"ro\"ssi\"|\"1\"|\"1500\"|\"2400\"", "ROSSI", false, 1, 1500, 2400},
        {"ROSSI|\"3|150\"|250", "ROSSI", false, 3, 150, 250},
        // Coordinates only when numeric; the last field goes through the
        // numeric reading, so letters read 0 there.
        {"ROSSI|1|abc|40", "ROSSI", false, 1, no, 40},
        {"ROSSI|1|12.6", "ROSSI", false, 1, 13, 0},

    };
    for (const auto &r : righe) {
        SCOPED_TRACE(r.riga);
        const ParametriAvvio p = SpezzaRigaComando(QString::fromUtf8(r.riga));
        EXPECT_EQ(p.Operatore, r.operatore);
        EXPECT_EQ(p.MancanoParametri(), QString(r.operatore).trimmed().isEmpty());
        EXPECT_EQ(p.ModoProva, r.prova);
        EXPECT_EQ(p.IndiceMenu, r.indice);
        EXPECT_EQ(p.OffsetX, r.x);
        EXPECT_EQ(p.OffsetY, r.y);
    }
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
