#pragma once

// The data source of a reference grid: every row of its table in the
// table's order, with one empty row at the bottom where a new one is typed.
// The grid writes through it row by row: the cells of one row gather while
// the user types, and the row goes to the table, in one transaction, when
// the user leaves it (Aggiorna). A row the table refuses stays as typed,
// still pending, so that the user may correct it or drop it (Annulla).
//
// A row written keeps its place until the rows are read again (Refresh),
// which the screen does after a deletion only.

#include "tables/TabelleRiferimento.h"

#include <QAbstractTableModel>
#include <QList>
#include <QStringList>

namespace sorvane {

class ModelloTabella : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit ModelloTabella(const TabellaRiferimento &tabella, QObject *padre = nullptr);

    const TabellaRiferimento &tabella() const { return m_tabella; }

    // Reads the rows again, in order; a row being typed is dropped. False
    // when the table can't be read: NumeroErrore and Errore say why.
    bool Refresh();
    int NumeroErrore() const { return m_numeroErrore; }
    QString Errore() const { return m_errore; }

    int rowCount(const QModelIndex &padre = {}) const override;
    int columnCount(const QModelIndex &padre = {}) const override;
    QVariant data(const QModelIndex &indice, int ruolo = Qt::DisplayRole) const override;
    QVariant headerData(int sezione, Qt::Orientation verso,
                        int ruolo = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &indice) const override;
    // A cell takes at most its column's width of characters; typing into
    // the empty row at the bottom starts a new row.
    bool setData(const QModelIndex &indice, const QVariant &valore,
                 int ruolo = Qt::EditRole) override;

    // The empty row at the bottom (the rows on file are above it).
    int rigaNuova() const { return int(m_righe.size()); }
    // The row being typed and not yet written, -1 when none.
    int rigaInSospeso() const { return m_sospesa; }

    // Writes the row being typed. Empty when it was written (or nothing was
    // pending, or a new row was left blank and so dropped); otherwise the
    // words for the user, and the row stays pending as typed.
    QString Aggiorna();
    // Drops what was typed in the pending row: a new one goes, a changed
    // one gets its values on file back.
    void Annulla();
    // Deletes a row on file, with no question: nothing here looks at the
    // movements. Empty when done; otherwise the words for the user. The
    // caller reads the rows again after a deletion.
    QString Elimina(int riga);

private:
    struct Riga
    {
        qint64 id = 0; // row id on file; 0 for a row not written yet
        QStringList valori;
    };
    Riga vuota() const;

    TabellaRiferimento m_tabella;
    QList<Riga> m_righe;
    int m_sospesa = -1;
    QStringList m_originali; // of the pending row, as on file
    int m_numeroErrore = 0;
    QString m_errore;
};

} // namespace sorvane
