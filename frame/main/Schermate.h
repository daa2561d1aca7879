#pragma once

// The screens the menu opens, by menu index. Each screen's library registers
// its factory at start; the factory builds the screen, whose load routine
// may leave CodiceStop set to keep it from being shown. An index with no
// screen registered opens nothing.

#include <QString>
#include <functional>

class QWidget;

namespace sorvane {

using FabbricaSchermo = std::function<QWidget *()>;

void RegistraSchermo(int indice, FabbricaSchermo fabbrica);
// The factory of an index; empty when none is registered.
FabbricaSchermo SchermoRegistrato(int indice);
// Forgets every screen (tests).
void AzzeraSchermi();

// What the frame does before opening a menu's screen: maximised for the
// working screens 0 to 4; for the three small tables, the frame takes their
// size (twips, the menu bar included only in ModoProva) and caption.
struct PreparazioneCornice
{
    bool massimizzata = false;
    int larghezza = 0; // twips; 0 when the frame is maximised
    int altezza = 0;
    QString titolo;
};

// Empty (larghezza 0, not massimizzata) for an index outside 0 to 7.
PreparazioneCornice CorniceDelMenu(int indice, bool modoProva);

} // namespace sorvane
