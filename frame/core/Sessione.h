#pragma once

// Shared state of the run that is not configuration: who works, what failed,
// whether the screen in hand may be shown.

#include <QString>
#include <cstdint>

namespace sorvane {

struct Sessione
{
    QString CodiceOperatore;   // upper case
    QString NomeUtenteBreve;   // first five characters of the logon name
    QString OggiTesto;         // today, "dd/mm/yyyy", fixed at start
    bool ModoProva = false;    // run without parameters: menu, diagnostics
    std::int16_t CodiceStop = 0; // non-zero: the screen is not to be shown
    QString TestoErrore;       // text of the failure in hand
    std::int16_t EsitoMsg = 0; // answer of the last message box
};

Sessione &sessione();

} // namespace sorvane
