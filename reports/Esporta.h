#pragma once

// The spreadsheet export of the list screens: what a grid shows goes to
// "EXP" + name + ".csv" in the temporary folder, one line for the heading
// and one per row, every field followed by ";", and the file is opened with
// the program of APPLICATIVI/Excel, or the desktop's own for a ".csv" when
// that key is blank. The file is UTF-8 with a byte-order mark, so that the
// spreadsheet reads accented letters; a field holding ";", a double quote or
// a line break goes in double quotes with its quotes doubled, every other
// field is written bare.
//
// The writers work on a model and a list of columns, so that they run
// without a view; EsportaGriglia and the others take the columns a view
// shows and add the hourglass, the messages and the opening.

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>

class QAbstractItemModel;
class QSqlDatabase;
class QTableView;

namespace sorvane {

// How a field is written: text trimmed and without LF, a date as
// "dd/mm/yyyy" (empty when not above 0), anything else as read.
enum class TipoEsportato { Testo, Data, Altro };

struct ColonnaEsportata
{
    QString titolo;    // the grid's caption
    QString campo;     // the field behind it (DataField)
    int colonna = 0;   // column of the model
    TipoEsportato tipo = TipoEsportato::Altro;
};

// The unbound grid's array: values by row (dimension 1) and column
// (dimension 2), each from its lower to its upper bound.
class Matrice
{
public:
    virtual ~Matrice() = default;
    virtual int LowerBound(int dimensione) const = 0;
    virtual int UpperBound(int dimensione) const = 0;
    virtual QVariant valore(int riga, int colonna) const = 0;
};

// A matrix of rows held in memory, both bounds from 0.
class MatriceValori : public Matrice
{
public:
    explicit MatriceValori(QList<QList<QVariant>> righe, int colonne = -1);
    int LowerBound(int dimensione) const override;
    int UpperBound(int dimensione) const override;
    QVariant valore(int riga, int colonna) const override;

private:
    QList<QList<QVariant>> m_righe;
    int m_colonne = 0;
};

// A list that can give its whole result as one statement, in the order it
// shows: the export then reads the rows straight from the engine and writes
// them as they come, without loading them into the list. The statement's
// columns carry the field names that the list's headings give (UserRole).
class SorgenteSql
{
public:
    virtual ~SorgenteSql() = default;
    virtual QSqlDatabase DatabaseSql() const = 0;
    virtual QString QuerySql() const = 0;
    virtual QVariantList ParametriSql() const = 0;
};

// "EXP" + nome + ".csv" in impostazioni().PathTemp.
QString FileEsportazione(const QString &nome);

// One field as the file holds it: quoted only when it has to be.
QString CampoCsv(const QString &valore);
// The heading's caption: CR and LF go.
QString TitoloEsportato(const QString &titolo);
// A value as its column's kind writes it, before quoting.
QString ValoreEsportato(const QVariant &valore, TipoEsportato tipo);

// The columns a view shows, in the order it shows them; the field's name
// comes from a query model's record, else from the heading's UserRole, else
// the caption. A column is a date when the data dictionary says so of its
// field, text when the field's values are text.
QList<ColonnaEsportata> ColonneVisibili(const QTableView &griglia);

// The writers. Each makes the file anew and returns false, with the system's
// words in *errore, when it could not be written. Rows of the model run from
// primaRiga to the last (a lazy model is fetched to its end). For a nome
// holding "DISTINTE", a row whose dstPrg is above 0 keeps only its product
// codes (dstCodP...): the second row of a switch shows its slices alone.
bool ScriviGriglia(const QString &percorso, QAbstractItemModel &dati,
                   const QList<ColonnaEsportata> &colonne, const QString &nome,
                   int primaRiga = 0, QString *errore = nullptr);
bool ScriviMatrice(const QString &percorso, const QStringList &titoli, const Matrice &matrice,
                   QString *errore = nullptr);
// As ScriviGriglia; for the nome "Classifica" a caption holding "% sul" is
// split into several fields, and so is a value with "%" (at its ";").
bool ScriviClassifica(const QString &percorso, QAbstractItemModel &dati,
                      const QList<ColonnaEsportata> &colonne, const QString &nome,
                      int primaRiga = 0, QString *errore = nullptr);

// As ScriviGriglia, the rows read from the statement of `sorgente`; the
// columns' `colonna` are those of the statement.
bool ScriviSql(const QString &percorso, const SorgenteSql &sorgente,
               const QList<ColonnaEsportata> &colonne, const QString &nome, int primaRiga = 0,
               QString *errore = nullptr);

// The grid's buttons. "NESSUN DATO DA ESPORTARE" for an empty list, and no
// file; rows from the grid's current row on, as the bound grid's recordset
// stands, then the grid goes back to its first row. dati is the grid's model
// when null; a model that is a SorgenteSql is written from its statement.
void EsportaGriglia(QTableView *griglia, QAbstractItemModel *dati, const QString &nome);
void EsportaMatrice(QTableView *griglia, const Matrice &matrice, const QString &nome);
void EsportaClassifica(QTableView *griglia, QAbstractItemModel *dati, const QString &nome);

// Opens a written file: APPLICATIVI/Excel with the file as its argument, a
// failure told as the command + "  NON TROVATO"; with the key blank, the
// desktop's program for the file (ApriDocumento).
void ApriEsportazione(const QString &file);

// Tests put their own starter in place of QProcess::startDetached; an empty
// one puts it back.
using AvviaProgramma = std::function<bool(const QString &programma, const QStringList &argomenti)>;
void installaAvviaProgramma(AvviaProgramma avvia);

} // namespace sorvane
