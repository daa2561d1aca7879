#pragma once

// The list of the 04 ledger's screens: the rows the last query asked for,
// one grid column per ColonnaLista04, fetched as the grid scrolls. A typed
// row shows its number less 800000000.

#include "distinte/ModelloDistinte.h"

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

} // namespace sorvane
