#pragma once

// The exchange screen's grid over its list in memory: six columns, the rate
// the only one that can be edited (and not even that while a field of the
// caller is in error), the rate red when it was stored for the very day and
// black when it is older or missing.

#include "tables/CambiDati.h"

#include <QAbstractTableModel>

namespace sorvane {

class ModelloCambi : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit ModelloCambi(ElencoCambi &elenco, QObject *padre = nullptr);

    int rowCount(const QModelIndex &padre = QModelIndex()) const override;
    int columnCount(const QModelIndex &padre = QModelIndex()) const override;
    QVariant data(const QModelIndex &indice, int ruolo = Qt::DisplayRole) const override;
    QVariant headerData(int sezione, Qt::Orientation verso,
                        int ruolo = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &indice) const override;
    bool setData(const QModelIndex &indice, const QVariant &valore,
                 int ruolo = Qt::EditRole) override;

    // Rates locked: nothing can be edited.
    void blocca(bool bloccato) { m_bloccato = bloccato; }
    bool bloccato() const { return m_bloccato; }
    // The list was filled again, or its rates were.
    void ricaricato();
    void righeCambiate();

private:
    ElencoCambi &m_elenco;
    bool m_bloccato = false;
};

} // namespace sorvane
