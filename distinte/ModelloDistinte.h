#pragma once

// The management list: the rows of `Distinte` that the last extraction
// asked for, one grid column per query column (see ColonnaGestione),
// fetched as the grid scrolls, so that a ledger of a million rows opens at
// once. Open codes stand out in red; a second row shows only its slices;
// the header cells of a closed movement are blue.

#include "distinte/Gestione.h"
#include "reports/Esporta.h"

#include <QSqlQueryModel>
#include <QString>
#include <QStyledItemDelegate>
#include <QVariantList>
#include <memory>

namespace sorvane {

// Keeps the colour of a cell on the selected row: a hidden cell stays
// hidden, a red code stays red.
class DelegatoDistinte : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *opzione, const QModelIndex &indice) const override;
};

class ModelloDistinte : public QSqlQueryModel, public SorgenteSql
{
    Q_OBJECT

public:
    explicit ModelloDistinte(QObject *padre = nullptr);

    // Runs the query with its bound values on the data file; false with the
    // engine's words in *errore when it fails (the list is then empty).
    bool Carica(const QString &query, const QVariantList &parametri, QString *errore = nullptr);
    // The list of `condizione` in `ordine`, read a page at a time
    // (PagineDistinte) as the grid scrolls; Query() is then the whole
    // statement, which the export and the print read.
    bool CaricaPagine(const CondizioneDistinte &condizione, const OrdineLista &ordine,
                      QString *errore = nullptr);
    // The same query again (Data1.Refresh), fetched at least to `righe`
    // rows when there are so many.
    void Aggiorna(int righe = 0);
    // Fetches until the list holds more than `riga` rows or has no more.
    void CaricaFinoA(int riga);
    QString Query() const { return m_query; }

    // The export reads the whole result from the engine.
    QSqlDatabase DatabaseSql() const override;
    QString QuerySql() const override { return m_query; }
    QVariantList ParametriSql() const override { return m_parametri; }

    // The stored values of a row.
    std::int32_t Codice(int riga) const;
    QString Prg(int riga) const;

    int rowCount(const QModelIndex &padre = QModelIndex()) const override;
    bool canFetchMore(const QModelIndex &padre = QModelIndex()) const override;
    void fetchMore(const QModelIndex &padre = QModelIndex()) override;
    void clear() override;
    int columnCount(const QModelIndex &padre = QModelIndex()) const override;
    QVariant data(const QModelIndex &indice, int ruolo = Qt::DisplayRole) const override;
    QVariant headerData(int sezione, Qt::Orientation verso,
                        int ruolo = Qt::DisplayRole) const override;

private:
    QVariant valore(int riga, int colonna) const;
    QString grezzo(int riga, int colonna) const;
    QVariant colore(int riga, int colonna) const;

    QString m_query;
    QVariantList m_parametri;
    // The paged list: its reader and the rows read so far.
    std::unique_ptr<PagineDistinte> m_pagine;
    QList<QVariantList> m_righe;
};

} // namespace sorvane
