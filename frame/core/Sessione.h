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

    // The screen in twips, measured at start: LarghezzaSchermo and
    // AltezzaSchermo capped (a screen over 13000 twips wide counts as
    // 12120 x 9120), the two Max ones the real size plus 120.
    int LarghezzaSchermo = 0;
    int AltezzaSchermo = 0;
    int LarghezzaMax = 0;
    int AltezzaMax = 0;
    int OffsetX = 0; // the frame's left and top, twips
    int OffsetY = 0;
    QString ConnettiAccess;          // connect text of bound data controls
    std::uint8_t CodiceChiamante = 0; // who opened the date picker
    bool ClienteCaricato = false;    // a client record is in Cli()
    std::int16_t EsitoReport = 0;    // result of starting the report engine
};

Sessione &sessione();

} // namespace sorvane
