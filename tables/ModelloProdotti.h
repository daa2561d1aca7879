#pragma once

// The product list as the grid shows it: the query of SqlElencoProdotti,
// fetched as the grid scrolls, with the "Ip" and "Ic" value items, the two
// totals to the thousandth, the category's colour behind each row and bold
// rows for the categories of type "C".

#include "tables/Prodotti.h"

#include <QSqlQueryModel>

namespace sorvane {

class ModelloProdotti : public QSqlQueryModel
{
    Q_OBJECT

public:
    explicit ModelloProdotti(QObject *padre = nullptr);

    // Runs the search; false when the query failed (the list is empty).
    bool cerca(const RicercaProdotti &ricerca);
    const RicercaProdotti &ricerca() const { return m_ricerca; }
    QString codice(int riga) const;

    QVariant data(const QModelIndex &indice, int ruolo = Qt::DisplayRole) const override;

private:
    RicercaProdotti m_ricerca;
};

} // namespace sorvane
