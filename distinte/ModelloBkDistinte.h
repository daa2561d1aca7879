#pragma once

// The entry screen's grid: the working rows of `BkDistinte` with the
// client's name and the reason's words, one grid column per query column.
// The second row of a switch shows only its product slices: its header
// cells are painted white on the white grid, the values stay in the row.

#include <QSqlQueryModel>
#include <QString>

namespace sorvane {

// Grid columns, in the order the grid shows them.
enum ColonnaBk : int {
    ColPrg = 0,
    ColRiga = 1, // dstPrg, no heading
    ColData = 2,
    ColDitta = 3,
    ColNominativo = 4,
    ColPrimoCodice = 5, // 5 to 9, the slices
    ColUltimoCodice = 9,
    ColCausale = 10,
    ColMoneta = 11,
    ColImporto = 12,
    ColAssegno = 13,
    ColBanca = 14,
    ColSpese = 15,
    ColonneBk = 16,
};

// The grid query in its usual order (movement, then row).
QString QueryGrigliaBk();
// The query a heading click asks for: the column's order in that direction
// with its tie-breaks; empty for a column that does not sort (the slices,
// the row mark, the currency).
QString QueryOrdinataBk(int colonna, bool discendente);

class ModelloBkDistinte : public QSqlQueryModel
{
    Q_OBJECT

public:
    explicit ModelloBkDistinte(QObject *padre = nullptr);

    // Runs the query on the working file; false with the engine's words in
    // *errore when it fails.
    bool Carica(const QString &query, QString *errore = nullptr);
    // The same query again (Data1.Refresh), every row fetched, so that the
    // last one can be shown.
    void Aggiorna();
    QString Query() const { return m_query; }

    int columnCount(const QModelIndex &padre = QModelIndex()) const override;
    QVariant data(const QModelIndex &indice, int ruolo = Qt::DisplayRole) const override;
    QVariant headerData(int sezione, Qt::Orientation verso,
                        int ruolo = Qt::DisplayRole) const override;

private:
    bool secondaRiga(int riga) const;
    QString m_query;
};

} // namespace sorvane
