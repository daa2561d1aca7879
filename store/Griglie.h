#pragma once

// Column widths that the user dragged, remembered per grid in `LayOutCol`:
// the grid's key in the first field, then the width of column 0, 1, 2 ...
// in twips (15 to a logical pixel), addressed by position. Each routine
// opens and closes the table itself; when it can't, the grid keeps its
// own widths and nothing is said. A failure on the way (a grid with more
// columns than the table has fields, a width out of range) stops the
// routine with what was done so far.

#include <QString>

#include <cstdint>

class QTableView;

namespace sorvane {

constexpr int TwipPerPixel = 15;

// The plain list grid. Loading applies every stored width above 0;
// saving stores every column at least 2 twips wide, so a column hidden by
// the screen keeps the width stored before.
void CaricaLayoutLista(QTableView *griglia, const QString &chiave);
void SalvaLayoutLista(QTableView *griglia, const QString &chiave);

// The bound grid. Loading applies stored widths above 0 to visible columns
// only; saving stores the width of every visible column, and leaves the
// stored width of a hidden one as it was (a hidden section has no width of
// its own here). A split of a grid is a view of its own: the caller passes
// the view of the split it means, and split only follows the callers' form.
void CaricaLayoutGriglia(QTableView *griglia, const QString &chiave, std::int16_t split = 0);
void SalvaLayoutGriglia(QTableView *griglia, const QString &chiave, std::int16_t split = 0);

} // namespace sorvane
