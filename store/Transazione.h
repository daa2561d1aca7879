#pragma once

// A writing transaction on the connection, as a guard:
//
//     Transazione t;
//     ... writes ...
//     if (!t.conferma())
//         Messaggio(t.errore(), ...);
//
// The outermost guard starts with BEGIN IMMEDIATE, so that a second program
// holding a file is met at the start, not halfway; a guard made while
// another is open nests as a savepoint, and undoing it undoes only its own
// part. The store issues COMMIT itself so that the engine's result code is
// not lost: BUSY at commit is tried again, and any failure ends in an
// explicit ROLLBACK. A guard left without conferma() rolls back.

#include <QSqlDatabase>
#include <QString>

#include <functional>

class QSqlError;

namespace sorvane {

class Transazione
{
public:
    // On the program's connection (Db()) unless another is given.
    Transazione();
    explicit Transazione(const QSqlDatabase &db);
    ~Transazione();
    Transazione(const Transazione &) = delete;
    Transazione &operator=(const Transazione &) = delete;

    // The transaction (or savepoint) started. When it didn't, errore() says
    // why and conferma() answers false.
    bool attiva() const { return m_attiva; }
    bool annidata() const { return m_livello > 0; }

    // Commits (or releases the savepoint). BUSY is retried up to
    // `tentativi` times in all, each after the connection's busy wait;
    // after a failure everything the transaction wrote is undone.
    bool conferma(int tentativi = 4);
    // Undoes what the transaction wrote; nothing when it has ended.
    void annulla();

    // The failure's words with the SQLite result code (TestoErroreSqlite,
    // no statement before them), and the code alone (the extended code as
    // the engine gave it; 0 when there was none).
    QString errore() const { return m_errore; }
    int codice() const { return m_codice; }

    // Open guards on a connection.
    static int profondita(const QSqlDatabase &db);

private:
    bool esegui(const QString &sql);

    QSqlDatabase m_db;
    int m_livello = 0;
    bool m_attiva = false;
    QString m_errore;
    int m_codice = 0;
};

// Runs `corpo` in a transaction of its own on the program's connection and
// commits it. When the engine broke the transaction off in a way that only
// starting again can mend (Ripetibile), the whole of it runs again, up to
// `tentativi` times in all. corpo returns false on a failure and puts the
// failing statement's code in *codice (CodiceSqlite, or a recordset's
// NumeroErrore; 0 for a refusal of its own, which is never repeated). False
// with *errore set to the commit's words when the commit failed (a body's
// failure keeps what the body said).
bool InTransazione(const std::function<bool(int *codice)> &corpo, QString *errore,
                   int tentativi = 3);
// A failure after which the transaction can only start again: a deadlock
// or a serialization failure on the server, a stale snapshot on the files
// (SQLITE_BUSY_SNAPSHOT, 517, the class the server's two are told with).
bool Ripetibile(int codice);

// The SQLite result code of an error (extended, as the driver reports it),
// 0 when the error carries none; its primary part is codice & 0xff.
int CodiceSqlite(const QSqlError &e);
// The engine's words and "(codice SQLite N)": the one tail of every failure
// of the store that reaches the user (Transazione::errore, Recordset::Errore
// of an engine error, the connection's refusals).
QString TestoErroreSqlite(const QSqlError &e);
// A failure as the user reads it: the Italian sentence that says what
// happened and what was kept, then on a line of its own the engine's words
// with their code, when there are any.
QString TestoGuasto(const QString &frase, const QString &motivo);

namespace sqlite {
constexpr int Occupato = 5;    // SQLITE_BUSY
constexpr int Istantanea = 517; // SQLITE_BUSY_SNAPSHOT
constexpr int Bloccato = 6;    // SQLITE_LOCKED
constexpr int SolaLettura = 8; // SQLITE_READONLY
constexpr int ErroreIO = 10;   // SQLITE_IOERR
constexpr int Pieno = 13;      // SQLITE_FULL
constexpr int NonApribile = 14; // SQLITE_CANTOPEN
constexpr int Vincolo = 19;    // SQLITE_CONSTRAINT
constexpr int NonUnDatabase = 26; // SQLITE_NOTADB
} // namespace sqlite

} // namespace sorvane
