#pragma once

// Movement numbers. In `BkDistinte` they are provisional; the save gives
// the final ones from the highest of `Distinte` and of `Distinte04`.

#include "store/Recordset.h"

#include <cstdint>

namespace sorvane {

// The key below which the highest number is sought.
inline constexpr std::int32_t ChiaveMassima = 2147483646;

// The highest dstCodice of a table open on "primaria" (dstCodice first),
// 0 when it has no row. The recordset's position moves.
std::int32_t UltimoCodice(Recordset &rs);

// The next provisional number of `BkDistinte`: 1 for an empty table, the
// last one + 1 otherwise.
inline std::int32_t NuovoCodiceProvvisorio(Recordset &bk) { return UltimoCodice(bk) + 1; }

} // namespace sorvane
