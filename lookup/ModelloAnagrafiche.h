#pragma once

// The client search's result: the rows of the last statement, fetched as
// the grid scrolls, so that a search over a hundred thousand clients shows
// its first rows at once. Code, pairing and team read as whole numbers.

#include "lookup/CercaNomi.h"

#include <QSqlQueryModel>

#include <cstdint>

namespace sorvane {

class ModelloAnagrafiche : public QSqlQueryModel
{
    Q_OBJECT

public:
    explicit ModelloAnagrafiche(QObject *padre = nullptr);

    // Runs the statement on the data file. A statement that fails leaves the
    // list empty and says nothing: false then.
    bool Carica(const SqlRicerca &sql);
    void Svuota();
    // Fetches until the list holds more than `riga` rows or has no more.
    void CaricaFinoA(int riga);

    // The client's code of a row; 0 outside the list.
    std::int32_t Codice(int riga) const;

    int columnCount(const QModelIndex &padre = QModelIndex()) const override;
    QVariant data(const QModelIndex &indice, int ruolo = Qt::DisplayRole) const override;
    QVariant headerData(int sezione, Qt::Orientation verso,
                        int ruolo = Qt::DisplayRole) const override;
};

} // namespace sorvane
