#pragma once

// Code tables seen from the screens: the description of a code, the code of
// a description, and the default rows of the good and bad categories.

#include <QString>

#include <cstdint>

namespace sorvane {

// In the code table tabelle().NomeTabella (columns `Codice` and
// `Descrizione`, indexes "primaria" and "secondaria"), opened through
// ApriTabella(1) and left open for the next lookup. Answers in
// tabelle().CodiceCercato and DescrizioneCercata, both empty when nothing
// was found.
//   modo 1: the row whose code is testo.
//   other modi: the first description from testo on; it counts as found
//   when its first 17 characters are testo's first 17 (case aside). When no
//   description lies there the table is marked to be reopened
//   (ModoTabella 9).
void DescrizioneDaCodice(const QString &testo, std::uint8_t modo);

// Appends the ten default rows to `TabBuoCat`, failures of single rows
// ignored. False when the table can't be opened at all; the caller tells
// the user.
bool RiempiBuoniCattivi();

} // namespace sorvane
