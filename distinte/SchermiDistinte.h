#pragma once

// What the slip screens share. Their grids: one row selected at a time,
// nothing edited in place, a white sheet, and a heading that sorts when
// pressed (the left button ascending, any other descending) instead of
// selecting. Their fields: which focus changes count as a field entered or
// left for the checks.

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

// A press on the grid's heading calls ordina with the column and the
// direction; true when the event was such a press.
bool OrdinaDaTestata(QTableView *griglia, QObject *oggetto, QEvent *evento,
                     const std::function<void(int colonna, bool discendente)> &ordina);

// A combo filled with one field of a query's rows on the data file, trimmed,
// after a first item `primo` when one is given; a failing query leaves it
// with that item alone.
void RiempiCombo(QComboBox *combo, const QString &sql, const QString &campo,
                 const std::optional<QString> &primo = std::nullopt);

enum class FuocoCampo { Nessuno, Entrato, Lasciato };
// A message box or a popup taking the focus is no field left: the field
// gets it back when they close.
FuocoCampo FuocoDi(const QEvent *evento);

} // namespace sorvane
