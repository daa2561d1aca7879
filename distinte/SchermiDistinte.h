#pragma once

// What the slip screens share. Their grids: one row selected at a time,
// nothing edited in place, a white sheet, Tab on to the next control (the
// arrows walk the cells), columns that open as wide as what they hold, and a
// heading that sorts when pressed (the left button ascending, any other
// descending) instead of selecting. Their fields: which focus changes count
// as a field entered or left for the checks.

#include <QString>

#include <functional>
#include <optional>

class QComboBox;
class QEvent;
class QObject;
class QStyledItemDelegate;
class QTableView;

namespace sorvane {

// The look and the behaviour of a slip grid; `osservatore` gets the events
// of the heading, to pass them to OrdinaDaTestata.
void PreparaGrigliaDistinte(QTableView *griglia, QStyledItemDelegate *delegato,
                            QObject *osservatore);

// Every column as wide as the widest text it may hold, its heading among
// them: the longest names of the firms, clients, reasons and banks on file,
// the widest numbers, dates and codes of 15 characters. The two slip grids
// head their columns alike, and a column is known by its heading. A user's
// own widths, when there are any, are applied after these.
void LarghezzeDiApertura(QTableView *griglia);

// A press on the grid's heading calls ordina with the column and the
// direction; true when the event was such a press.
bool OrdinaDaTestata(QTableView *griglia, QObject *oggetto, QEvent *evento,
                     const std::function<void(int colonna, bool discendente)> &ordina);

// A combo filled with one field of a query's rows on the data file, trimmed,
// after a first item `primo` when one is given; a failing query leaves it
// with that item alone. The combo is as wide as its longest item: a row
// short of room does not cut it.
void RiempiCombo(QComboBox *combo, const QString &sql, const QString &campo,
                 const std::optional<QString> &primo = std::nullopt);

enum class FuocoCampo { Nessuno, Entrato, Lasciato };
// A message box or a popup taking the focus is no field left: the field
// gets it back when they close.
FuocoCampo FuocoDi(const QEvent *evento);

} // namespace sorvane
