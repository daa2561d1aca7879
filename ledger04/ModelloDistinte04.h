#pragma once

// The list of the 04 ledger's screens: the rows the last query asked for,
// one grid column per ColonnaLista04, fetched as the grid scrolls. A typed
// row shows its number less 800000000.

#include "distinte/ModelloDistinte.h"

class QTableView;
class QWidget;

namespace sorvane {

class ModelloDistinte04 : public ModelloDistinte
{
    Q_OBJECT

public:
    using ModelloDistinte::ModelloDistinte;

    int columnCount(const QModelIndex &padre = QModelIndex()) const override;
    QVariant data(const QModelIndex &indice, int ruolo = Qt::DisplayRole) const override;
    QVariant headerData(int sezione, Qt::Orientation verso,
                        int ruolo = Qt::DisplayRole) const override;
};

// The list of a 04 screen over `modello`: the slip grids' look and their
// heading's events to `osservatore`, each column as wide as its longest
// text. An operation holds a product code of 15 characters, or the free
// text of a typed row.
QTableView *GrigliaDistinte04(ModelloDistinte04 *modello, const QString &nomeAccessibile,
                              QWidget *padre, QObject *osservatore);

} // namespace sorvane
