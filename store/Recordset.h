#pragma once

// A recordset over the one connection, with the words the screens use:
// a table opened by name walks one of its indexes ("primaria",
// "secondaria") and finds rows with Seek; a snapshot holds the rows of a
// query. Values are QVariants: a NULL column reads as Null() (see
// frame/core/Valore.h), a field read with no current record as Empty.
//
// A Recordset is a handle. Copies share one cursor, as object references
// do: `Recordset mio = tabelle().RsTabella;` keeps working on the same rows
// after the shared one has been replaced by a new Apri, and stops when
// somebody calls Close on either.
//
// A table is never read whole. Seek is one index search; moving past the
// rows in hand fetches the next few in index order from the key of the last
// one (row id breaking ties), so a million rows cost what a few do. Rows
// written by others show up when the cursor next fetches.
//
// Nothing here shows a message: failures return false (or leave the cursor
// where it was) and keep the engine's number and text in NumeroErrore() and
// Errore().

#include <QSqlDatabase>
#include <QString>
#include <QVariant>
#include <QVariantList>

#include <cstdint>
#include <memory>

namespace sorvane {

enum TipoRecordset : int {
    dbOpenTable = 1,    // a table by name, walked along an index
    dbOpenSnapshot = 4, // the rows of a query, read once and read-only
};

enum ModoModifica : int { dbEditNone = 0, dbEditInProgress = 1, dbEditAdd = 2 };

class Recordset
{
public:
    // Nothing: no rows, not open.
    Recordset();

    // Opens a table (tipo dbOpenTable: sorgente is its name) or a snapshot
    // (dbOpenSnapshot: sorgente is a SELECT, parametri bound to its "?").
    // On failure the result is not open and carries the error.
    static Recordset Apri(const QSqlDatabase &db, const QString &sorgente,
                          int tipo = dbOpenTable, const QVariantList &parametri = {});

    bool IsOpen() const;
    int Tipo() const;
    QString Sorgente() const;
    void Close();

    // The index a table walks; empty: the order rows were added in. Setting
    // it makes the first row of the new order the current one. False when
    // the table has no index of that name.
    QString Index() const;
    bool SetIndex(const QString &nome);

    // confronto is "=", ">=", ">", "<=" or "<"; chiavi are the first one or
    // more columns of the index. "=" and ">"/">=" find the first row in index
    // order, "<"/"<=" the last. Tables only. Sets NoMatch; after no match
    // there is no current record (Eof and Bof). False only on an error.
    bool Seek(const QString &confronto, const QVariantList &chiavi);
    bool Seek(const QString &confronto, const QVariant &chiave);
    bool NoMatch() const;

    // EOF is a macro of the C library, hence the spelling.
    bool Eof() const;
    bool Bof() const;
    void MoveFirst();
    void MoveNext();
    void MovePrevious();
    void MoveLast();
    // All the rows: a count of the table, or the rows of the snapshot.
    qint64 RecordCount() const;

    int FieldCount() const;
    QString FieldName(int ordinale) const;
    int FieldOrdinal(const QString &nome) const; // -1 when there is none
    // While AddNew or Edit is pending, what has been set so far.
    QVariant Fields(const QString &nome) const;
    QVariant Fields(int ordinale) const;
    // Only between AddNew or Edit and Update. A QDate is stored as its day
    // number; a text for a number column must read as a number (error 3421
    // otherwise); a number for a text column is written as the locale writes
    // it. A text longer than its column's width in the dictionary is cut to
    // that width here, as the fixed-width fields of the data files always
    // cut it, so that Fields shows what Update will write.
    bool SetField(const QString &nome, const QVariant &valore);
    bool SetField(int ordinale, const QVariant &valore);

    // Tables only. AddNew starts a row whose unset fields get the table's
    // defaults; Edit starts changing the current row. Update writes the
    // fields set, by bound values (and the row id); on failure it returns
    // false and the change stays pending until CancelUpdate or a move.
    // After Update the current record is the one that was current before
    // (the edited row, for Edit). Delete removes the current row: no current
    // record until the next move, which goes on from where it was.
    bool AddNew();
    bool Edit();
    bool Update();
    void CancelUpdate();
    bool Delete();
    int EditMode() const;
    // Row ids: of the row last added or changed, of the current row (0 when
    // there is none), and a return to a row by its id (false when it has
    // gone), as `rs.SetBookmark(rs.LastModified())` goes to a new row.
    qint64 LastModified() const;
    qint64 Bookmark() const;
    bool SetBookmark(qint64 riga);

    QString Errore() const;
    int NumeroErrore() const;

    // Same cursor (Set a = b).
    bool operator==(const Recordset &altro) const { return d == altro.d; }

private:
    struct Stato;
    explicit Recordset(std::shared_ptr<Stato> stato);
    std::shared_ptr<Stato> d;
};

// A value read from a field as a whole number: through DataDaCampo (Null
// and blank are 0), rounded half to even as an assignment to a whole-number
// variable rounds. False when it falls outside [minimo, massimo].
bool LeggiIntero(const QVariant &valore, qint64 minimo, qint64 massimo, qint64 *risultato);
// The same for a 32-bit whole number (codes, day numbers).
bool LeggiIntero32(const QVariant &valore, std::int32_t *risultato);

// Error numbers the recordset sets itself, with the engine's classic
// meanings; errors of the SQL engine keep the engine's own number.
namespace errori_recordset {
constexpr int NessunRecordCorrente = 3021;
constexpr int SenzaModifica = 3020;
constexpr int SolaLettura = 3027;
constexpr int TabellaInesistente = 3078;
constexpr int TipoNonCorrispondente = 3421;
constexpr int CampoInesistente = 3265;
constexpr int IndiceInesistente = 3800;
constexpr int SenzaIndice = 3019;
constexpr int OperazioneNonValida = 3251;
constexpr int Chiuso = 3420;
} // namespace errori_recordset

} // namespace sorvane
