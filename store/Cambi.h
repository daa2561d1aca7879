#pragma once

// Exchange rates: how many units of a currency make one euro, on a day.
// The euro code (and a blank code) is 1, the lira code the fixed CambioLire
// of the settings; every other currency takes the newest row of `TabCambi`
// at or before the day.

#include <QString>

#include <cstdint>

namespace sorvane {

constexpr std::int32_t NessunCambioLetto = 99999;

struct StatoCambi
{
    // Day of the rate CercaCambio found last; NessunCambioLetto when it read
    // none (euro, lira, no row, or a failure).
    std::int32_t DataCambioTrovata = NessunCambioLetto;
};

StatoCambi &statoCambi();

// The rate of moneta on the day data, in units of moneta for one euro; 0
// when no rate is known, which the caller tests before dividing. Opens and
// closes `TabCambi` at each call through ApriArchivio("TabCambi", "CAMBI").
double CercaCambio(const QString &moneta, double data);

} // namespace sorvane
