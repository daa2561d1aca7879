#pragma once

// The four files of the set on one SQLite connection: the working file is
// the main database, and the data, visits and index files are attached to
// it as "dati", "visite" and "indici", so that every table answers by its
// plain name. The design's handles DbDati, DbLavoro, DbVisite and DbIndici
// are views of this one connection.
//
// Every file is opened read-write without create: a wrong path is told as
// a missing database, never answered with an empty one; a data or working
// file that cannot be written is refused as well ("... IN SOLA LETTURA").
// At each open a file is put back in rollback-journal mode if a sibling
// program left it in WAL (only then is a transaction across the files
// atomic), with synchronous=FULL and a busy timeout of five seconds.

#include "store/Recordset.h"
#include "store/Schema.h"

#include <QSqlDatabase>
#include <QString>
#include <functional>

namespace sorvane {

inline const QString NomeConnessione = QStringLiteral("sorvane");
inline constexpr int AttesaOccupatoMs = 5000;

// Shared state of the connection.
struct Archivi
{
    bool DbDatiAperto = false;
    bool DbLavoroAperto = false;
    bool IndiciAperto = false; // set by ApriIndici
    Recordset RsIndici;        // `Indici` as a table on "primaria"
};

Archivi &archivi();

// The one connection; not valid while the files are closed. A server
// connection that the server dropped is opened again here at the next use,
// outside any transaction (one that was broken off stays broken, and ends
// in failure), at most once every ten seconds: a server still away costs
// one wait of the connect timeout, not one per statement.
QSqlDatabase Db();
// Counts the reopenings: statements prepared on an older connection are
// gone from the server.
int GenerazioneCollegamento();
inline QSqlDatabase DbDati() { return Db(); }
inline QSqlDatabase DbLavoro() { return Db(); }
inline QSqlDatabase DbVisite() { return Db(); }
inline QSqlDatabase DbIndici() { return Db(); }

// The path of a file of the set from the settings (FileDati, FileLavoro,
// FileVisite; for the index file PathDati + "IndiciDV.db").
QString PercorsoArchivio(Archivio a);

// Receives the progress words ("Apertura DataBase operativo", ...); the
// frame passes a setter of its label.
using Avanzamento = std::function<void(const QString &)>;

// Opens the four files in the order data, working, visits, index, then
// ApriIndici and AgganciaTabelle. On a failure everything is released and
// sessione().TestoErrore is shown with Retry and Cancel: Retry starts again
// from the top, Cancel returns false with every flag down (the frame then
// ends the program).
bool ConnettiDatabase(const Avanzamento &avanzamento = {});

// Counts the catalogue's attachments whose file exists against the
// expected ones (the list's 48 names and `Indici`); when they differ,
// rebuilds all of them at once to the files of the present settings.
// A failure is told once ("... -ERRORE CONNESIONE TABELLE") and the start
// goes on: false then.
bool AgganciaTabelle(const Avanzamento &avanzamento = {});

// Opens archivi().RsIndici; on failure the standard table dialog, Retry
// again, Cancel leaves IndiciAperto false.
bool ApriIndici();

// Closes RsIndici and the connection, and lowers the flags.
void ChiudiDatabase();

// The upper-cased name of the running program, the titles' first word.
QString NomeProgrammaMaiuscolo();

} // namespace sorvane
