#pragma once

// The save of the entry screen: every movement of the working table
// `BkDistinte` goes to `Distinte` under its final number, its slices marked
// open; a one-row movement goes to `Distinte04` as well. The working table
// is emptied. All of it is one transaction over the data and working files:
// a failure anywhere leaves the three tables as they were, so that the next
// save writes each movement once.

#include <QString>

namespace sorvane {

struct EsitoSalvataggio
{
    bool riuscito = false;
    int movimenti = 0;     // movements moved
    int righeDistinte = 0; // rows written to `Distinte`
    int righe04 = 0;       // rows written to `Distinte04`
    QString errore;        // the engine's words on a failure
};

// Tells a failure to the user itself ("ERRORE NEL SALVATAGGIO DELLA
// DISTINTA" with the engine's words).
EsitoSalvataggio SalvaDistinta();

} // namespace sorvane
