#pragma once

// What the import reads: tables of a legacy file, each with its columns and
// their Access types, and its rows one at a time. The Access reader is one
// source; the tests feed the mapping through the same interface.

#include <QList>
#include <QString>
#include <QVariant>

#include <functional>

namespace sorvane::importa {

// The column types of an Access table. Altro covers what the office's
// files never hold in a column this program reads (OLE pictures, binary,
// replication ids): such values arrive as bytes.
enum class TipoAccess {
    Testo, Memo, Byte, Intero, Lungo, Singolo, Doppio, Valuta, DataOra, SiNo, Altro
};

// "Text", "Long", "Date/Time", ... as Access names them.
QString NomeTipo(TipoAccess t);

struct ColonnaAccess
{
    QString nome;
    TipoAccess tipo = TipoAccess::Testo;
    int larghezza = 0; // characters of a Text column
};

struct TabellaAccess
{
    QString nome;
    QList<ColonnaAccess> colonne;
};

// One row, a value per column in the table's order. Null is an invalid
// QVariant; Text and Memo a QString; Byte, Integer and Long a qint64;
// Single, Double and Currency a double; Date/Time the day serial with its
// fraction as a double (day 0 = 30/12/1899); Yes/No a bool.
using RigaAccess = QList<QVariant>;
// Called for each row; false stops the reading.
using LettoreRighe = std::function<bool(const RigaAccess &)>;

class Sorgente
{
public:
    virtual ~Sorgente() = default;
    // The file's name, for the report.
    virtual QString nome() const = 0;
    // The user tables, system tables left out.
    virtual QList<TabellaAccess> tabelle() const = 0;
    // Streams the rows of one table to `riga`. False when the table cannot
    // be read, with the reason in *errore; a stop asked by `riga` is not a
    // failure.
    virtual bool leggi(const QString &tabella, const LettoreRighe &riga,
                       QString *errore) const = 0;
};

} // namespace sorvane::importa
