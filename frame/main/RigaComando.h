#pragma once

// The parameter string the suite's main program starts us with: operator,
// menu index, x and y joined by "|". Reading it, and the rules that place the
// frame on the screen, stand apart from the window so that they are tested
// without one.

#include <QString>
#include <cstdint>
#include <optional>

namespace sorvane {

struct ParametriAvvio
{
    QString Operatore;            // upper case, untrimmed; blank: "Mancano i parametri"
    std::int16_t IndiceMenu = 0;
    bool ModoProva = false;
    std::optional<int> OffsetX;   // twips, only when the field was numeric
    std::optional<int> OffsetY;

    bool MancanoParametri() const { return Operatore.trimmed().isEmpty(); }
};

// Double quotes go first, wherever they stand. A line without "|" is a run
// by hand: ModoProva with menu index 9. A negative index is one too.
ParametriAvvio SpezzaRigaComando(const QString &riga);

struct MisureSchermo
{
    int LarghezzaSchermo = 0;
    int AltezzaSchermo = 0;
    int LarghezzaMax = 0;
    int AltezzaMax = 0;
};

// The screen's size in twips as the size rules see it: over 13000 twips wide
// it works as a 12120 x 9120 screen; the Max ones are the real size + 120.
MisureSchermo MisuraSchermo(int larghezzaTwips, int altezzaTwips);

struct Posizione
{
    int x = 0;
    int y = 0;
};

// Pulls the frame back so that its right edge stays within LarghezzaMax.
// The top is held against the width as well: a y whose sum with the frame's
// width passes LarghezzaMax is replaced, whatever the screen's height.
Posizione PosizionaCornice(Posizione offset, int larghezzaCornice, int larghezzaMax);

} // namespace sorvane
