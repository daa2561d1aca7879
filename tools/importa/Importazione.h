#pragma once

// The mapping of legacy tables onto the dictionary, and their writing.
//
// A table of the source goes to the table of the same name in the
// dictionary (without regard to case), in that table's home file, whichever
// legacy file it came from; columns match by name the same way. Columns the
// dictionary does not know are skipped and named in the report, and so are
// tables it does not know. Date/Time values become the day serial: whole
// for a whole-number column (dstData and the other day numbers), with its
// fraction for a date column. Text longer than the column's width is cut,
// and every cut is counted in the report.
//
// The whole import is one transaction, each table a savepoint of it: a
// failing row undoes everything, and the error names the table and the row.

#include "store/Schema.h"
#include "tools/importa/Sorgente.h"

#include <QSqlDatabase>
#include <QStringList>

namespace sorvane::importa {

// A source table and what becomes of it.
struct Voce
{
    const Sorgente *sorgente = nullptr;
    TabellaAccess tabella;
    const Tabella *destinazione = nullptr; // nullptr: not copied
    QString motivo;                        // why it is not copied
    QList<int> origini;                    // source column of each target column
    QList<const Colonna *> colonne;
    QStringList ignote; // source columns the dictionary does not know
};

// The plan over all the sources, in their order. A table found twice goes
// in from its first source only.
QList<Voce> Pianifica(const QList<const Sorgente *> &sorgenti);
inline bool DaCopiare(const Voce &v) { return v.destinazione != nullptr; }

// One value as the target column takes it. False with the reason when it
// cannot be; *tagliato tells a text cut to the column's width.
bool Converti(const QVariant &valore, TipoAccess da, const Colonna &a, QVariant *fuori,
              bool *tagliato, QString *motivo);

// The progress and report lines.
using Resoconto = std::function<void(const QString &)>;

// Writes the plan's tables on `db`, where the four files are seen under
// their schema names. A target that holds rows is refused unless
// `sostituisci`, and then emptied first; a source table without rows
// leaves its target as it is. True when everything is written; false with
// nothing written and the reason in *errore.
bool Scrivi(QSqlDatabase &db, const QList<Voce> &piano, bool sostituisci,
            const Resoconto &resoconto, QString *errore);

} // namespace sorvane::importa
