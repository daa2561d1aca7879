#pragma once

// The dictionary of the data: every table the program reads or writes, the
// file it lives in, its columns with their types and widths, and its
// indexes. Table names, home files, columns and indexes are taken from here
// and nowhere else: the set-up tool creates the files from it, the
// connection checks the attachments against it, the recordsets seek on the
// indexes it names and the screens take their MaxLength from its widths.

#include <QList>
#include <QString>
#include <QStringList>
#include <array>

class QSqlDatabase;

namespace sorvane {

// The engine a statement is written for (see store/Motore.h).
enum class Motore { Sqlite, Postgres };

// The four files of the set. The working file is the connection's main
// database; the other three are attached to it.
enum class Archivio { Dati, Lavoro, Visite, Indici };

inline constexpr std::array<Archivio, 4> TuttiGliArchivi = {
    Archivio::Dati, Archivio::Lavoro, Archivio::Visite, Archivio::Indici};

// Schema name of a file on the one connection: "dati", "main", "visite",
// "indici".
QString NomeSchema(Archivio a);
// File name on disk: "DatiDV.db", "WorkDV.db", "VisiteDV.db", "IndiciDV.db".
QString NomeFile(Archivio a);

// Testo: TEXT COLLATE NOCASE of a given width. Memo: the same without a
// width. Intero: whole numbers, day numbers included. Reale: doubles, money.
// Data: a date-type column, the day serial as REAL.
enum class Tipo { Testo, Memo, Intero, Reale, Data };

struct Colonna
{
    QString nome;
    Tipo tipo = Tipo::Testo;
    int larghezza = 0; // characters of a Testo column; 0 otherwise
};

struct Indice
{
    QString nome;        // "primaria", "secondaria", or a filter's index
    QStringList colonne; // in key order
    bool unico = false;
};

struct Tabella
{
    QString nome;
    Archivio archivio = Archivio::Dati;
    QList<Colonna> colonne;
    QList<Indice> indici;
    // Attached for the suite's other programs: this program reads none of
    // its columns, so it holds a key column only.
    bool soloSuite = false;

    // By name, without regard to case; nullptr when absent.
    const Colonna *colonna(const QString &nome) const;
    const Indice *indice(const QString &nome) const;
    // Position of a column (0 is the first), -1 when absent.
    int ordinale(const QString &nome) const;
    // The SQL type and collation of a column, "TEXT COLLATE NOCASE" and so on
    // (on the server "citext COLLATE \"C\"", "bigint", "double precision").
    static QString tipoSql(const Colonna &c, Motore m = Motore::Sqlite);
};

const QList<Tabella> &Tabelle();
// By name, without regard to case; nullptr for an unknown table.
const Tabella *TrovaTabella(const QString &nome);
QList<const Tabella *> TabelleDi(Archivio a);

inline const QString IndicePrimario = QStringLiteral("primaria");
inline const QString IndiceSecondario = QStringLiteral("secondaria");

// SQLite keeps index names per file, so the table's name goes in front of
// the dictionary's: "Distinte_primaria".
QString NomeIndiceSql(const Tabella &t, const Indice &i);

// Statements for a file seen under `schema` on a connection. On the server
// every table ends with a `rowid` of its own (the embedded engine's row id
// is hidden), names are in lower case, and index columns hold Null first,
// as the embedded engine orders it.
QString SqlCreaTabella(const Tabella &t, const QString &schema = QStringLiteral("main"),
                       Motore m = Motore::Sqlite);
QString SqlCreaIndice(const Tabella &t, const Indice &i,
                      const QString &schema = QStringLiteral("main"), Motore m = Motore::Sqlite);

// Creates the tables of one file (on the server, in its schema, made when
// missing) with their "primaria" indexes. Tables and
// indexes that exist already are left as they are. False with the failing
// statement and the engine's words in *errore.
bool CreaTabelle(QSqlDatabase &db, Archivio a, const QString &schema, QString *errore);
// Creates the other indexes of the file ("secondaria" and the filters').
// A bulk load goes faster with these made afterwards.
bool CreaIndiciSecondari(QSqlDatabase &db, Archivio a, const QString &schema,
                         QString *errore);
// Both of the above: the whole schema of one file.
bool CreaSchema(QSqlDatabase &db, Archivio a, const QString &schema, QString *errore);

// The attachment list of the working file: 50 entries, 0 to 44 in the data
// file, 45 to 49 in the visits file; entries 15 and 49 are blank. `Indici`
// is attached besides, from the index file.
inline constexpr int NumeroAllegati = 50;
const std::array<QString, NumeroAllegati> &ElencoAllegati();
Archivio ArchivioAllegato(int indice);
inline const QString TabellaIndici = QStringLiteral("Indici");

// The catalogue of attached tables in the working file: `Nome`, the Connect
// text `Connessione` (";DATABASE=" + path) and the source table `Origine`.
inline const QString TabellaAllegati = QStringLiteral("Allegati");

} // namespace sorvane
