#pragma once

// The engine under the store. The embedded one keeps the four files of a
// set on one SQLite connection; an office with several workstations keeps
// them on a PostgreSQL server instead, one database per office:
//
//   "dati_<operatore>"    the operator's business tables (the data file)
//   "visite_<operatore>"  visits and appointments (the visits file)
//   "lavoro_<operatore>_<postazione>"
//                         the working tables of one operator at one
//                         workstation (the working file, which lives on the
//                         workstation's own folder)
//   "indici"              the price history, shared by every operator
//
// The connection's search path lists the working schema first, then the
// data, visits and index ones, so that a table answers by its plain name
// as it does on the attached files, and a table made with no schema goes
// where the working file would hold it. Names on the server are folded to
// lower case, as the server folds an unquoted name; text columns are
// citext under the "C" collation: compared without regard to the case of
// ASCII letters and ordered by code point, as the embedded engine's NOCASE
// does, and LIKE keeps ignoring case.
//
// Nothing outside the store asks which engine it runs on.

#include "store/Schema.h"

#include <QSqlDatabase>
#include <QString>

class QSqlError;
class QSqlQuery;

namespace sorvane {

// The engine of a connection, by its driver.
Motore MotoreDi(const QSqlDatabase &db);
inline bool SuServer(const QSqlDatabase &db) { return MotoreDi(db) == Motore::Postgres; }
// The engine the settings choose ([ARCHIVIO] MOTORE).
Motore MotoreScelto();

// Sets up q, before its prepare or exec, to be read front to back. On the
// files a forward-only cursor. A server's row-by-row reading gives up the
// rows not yet read as soon as another statement runs on the connection (a
// lookup inside the loop would cut the walk short without a word), so there
// the rows come whole at exec and any statement may run meanwhile.
void LetturaInAvanti(QSqlQuery &q);
// Row by row on both engines, for a walk too long to hold: nothing else
// may run on q's connection until its last row is read.
void LetturaInFlusso(QSqlQuery &q);

// The schema of a file of the set on the server, for the settings'
// operator and workstation (the workstation defaults to the host's name).
QString SchemaServer(Archivio a);
// The schema that holds a file's tables on a connection: the server's, or
// "main", "dati", "visite", "indici" on the embedded files.
QString SchemaDi(const QSqlDatabase &db, Archivio a);
// What the user reads for the place of a file: its path, or
// "server/database, schema".
QString LuogoArchivio(Archivio a);

// An identifier in double quotes, inner quotes doubled, as the server
// spells it: lower case (the embedded engine ignores the case of names).
QString NomeSql(const QString &nome);
// A schema's name in double quotes, kept as it is.
QString NomeSchemaSql(const QString &schema);

// Adds the connection `nome` on the server of the settings (not opened):
// host, port, database and user, or the service; the password comes from
// libpq's password file.
QSqlDatabase AggiungiServer(const QString &nome);
// Session settings of a program's connection: the search path over the
// set's schemas, the wait for a lock held by another workstation, plain
// serial plans (the walks rely on a UNION ALL's arms coming in order).
bool PreparaSessione(QSqlDatabase &db, QString *errore);

// The wait, in milliseconds, for what another program holds: the busy
// timeout of the files, the lock timeout of the server.
inline constexpr int AttesaBloccoMs = 5000;

// Errors of the server carry a SQLSTATE; the store tells them with the
// embedded engine's classes so that one set of Italian messages serves
// both. 0 when the state is none of the known ones.
int ClasseDaStato(const QString &sqlstate);
// The error came from the server.
bool ErroreDelServer(const QSqlError &e);
// The connection to the server is lost (or never was).
bool CollegamentoPerso(const QSqlError &e);

} // namespace sorvane
