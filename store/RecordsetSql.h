#pragma once

// What a recordset needs to know of the engine: the columns of a table, the
// columns of a named index, and the text of the queries that walk an index
// in order. Everything that depends on SQLite's catalogue lives here, so
// that a server store replaces one file.

#include "store/Schema.h"

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QVariant>

namespace sorvane::recordset {

enum class Affinita { Testo, Intero, Reale, Numerica };

struct ColonnaTabella
{
    QString nome;
    Affinita affinita = Affinita::Numerica;
    int larghezza = 0; // characters of a text column; 0 when unbounded
};

struct ColonnaIndice
{
    QString nome;
    bool discendente = false;
    QString collazione; // empty for the engine's default
};

// An identifier in double quotes, inner quotes doubled, in lower case (see
// NomeSql).
QString Identificatore(const QString &nome);

// The table's columns in order; false with the engine's error when the table
// does not exist.
bool LeggiColonne(const QSqlDatabase &db, const QString &tabella,
                  QList<ColonnaTabella> *colonne, QString *errore);

// The key columns of the table's index called nome ("primaria"), from the
// dictionary; for a table the dictionary does not know, from the file's
// index called nome or the table's name, "_" and nome.
bool LeggiIndice(const QSqlDatabase &db, const QString &tabella, const QString &nome,
                 QList<ColonnaIndice> *colonne);

// One piece of a walk along an index: a conjunction that the engine answers
// with one index search, and the values bound to it, in order.
struct Tratto
{
    QString condizione; // empty: every row
    QVariantList valori;
};

// Where a walk starts: the first `chiavi.size()` columns of the index (plus
// the row id as a last column, when the key carries it) against the key.
// avanti: in the index's order, else against it; incluso: rows equal to the
// key belong to the walk. The pieces come in walking order: rows that share
// the longest prefix with the key first.
QList<Tratto> TrattiDa(const QList<ColonnaIndice> &indice, const QVariantList &chiavi,
                       bool avanti, bool incluso);
// The piece of rows whose first columns equal the key (Seek "=").
Tratto TrattoUguale(const QList<ColonnaIndice> &indice, const QVariantList &chiavi);

// The pseudo column that orders rows of equal key and addresses a row.
QString ColonnaRiga();

// A SELECT and the values to bind to it, in order.
struct Istruzione
{
    QString sql;
    QVariantList valori;
};

// The first `limite` rows of the walk through the pieces, as one statement,
// so that the engine takes the file's lock once. Its columns: the piece's
// number, the row id, then the table's columns. The rows come in walking
// order within a piece, and the pieces in their order.
// On the server Null comes first walking up and last walking down, as on
// the files.
Istruzione Percorso(const QString &tabella, const QList<ColonnaIndice> &indice,
                    const QList<Tratto> &tratti, bool avanti, qsizetype limite,
                    Motore m = Motore::Sqlite);
// The row of that id, in the same columns.
Istruzione RigaDaId(const QString &tabella, qint64 id, Motore m = Motore::Sqlite);

// A column's name as the dictionary spells it: the server gives names in
// lower case. A name the dictionary does not know stays as it is.
QString NomeDelDizionario(const QString &nome);

} // namespace sorvane::recordset
