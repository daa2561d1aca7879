#include "store/Transazione.h"

#include "store/Connessione.h"
#include "store/Motore.h"

#include <QHash>
#include <QSqlError>
#include <QSqlQuery>

namespace sorvane {

namespace {

// Open guards per connection name; the program has one thread.
QHash<QString, int> &Livelli()
{
    static QHash<QString, int> livelli;
    return livelli;
}

// The advisory lock that writing transactions hold on the server.
constexpr qint64 ChiaveScrittura = 0x534f5256; // "SORV"

QString NomeSalvataggio(int livello)
{
    return QStringLiteral("transazione_%1").arg(livello);
}

} // namespace

int CodiceSqlite(const QSqlError &e)
{
    if (ErroreDelServer(e))
        return ClasseDaStato(e.nativeErrorCode());
    if (CollegamentoPerso(e))
        return sqlite::ErroreIO;
    bool ok = false;
    const int codice = e.nativeErrorCode().toInt(&ok);
    return ok ? codice : 0;
}

QString TestoErroreSqlite(const QSqlError &e)
{
    QString testo = e.databaseText().trimmed();
    if (testo.isEmpty())
        testo = e.text().trimmed();
    if (CollegamentoPerso(e))
        return QStringLiteral("COLLEGAMENTO CON IL SERVER INTERROTTO\n") + testo;
    if (ErroreDelServer(e)) {
        // The driver gives "ERROR:  words\n(state)": the words alone.
        const QString stato = e.nativeErrorCode();
        if (testo.endsWith(QLatin1Char('(') + stato + QLatin1Char(')')))
            testo = testo.chopped(stato.size() + 2).trimmed();
        for (const char *prefisso : {"ERROR:", "ERRORE:", "FATAL:"})
            if (testo.startsWith(QLatin1String(prefisso)))
                testo = testo.mid(int(qstrlen(prefisso))).trimmed();
        return testo + QStringLiteral(" (codice PostgreSQL %1)").arg(stato);
    }
    const int codice = CodiceSqlite(e);
    if (codice != 0)
        testo += QStringLiteral(" (codice SQLite %1)").arg(codice);
    return testo;
}

QString TestoGuasto(const QString &frase, const QString &motivo)
{
    const QString m = motivo.trimmed();
    return m.isEmpty() ? frase : frase + QLatin1Char('\n') + m;
}

Transazione::Transazione() : Transazione(Db()) {}

Transazione::Transazione(const QSqlDatabase &db) : m_db(db)
{
    int &livello = Livelli()[m_db.connectionName()];
    m_livello = livello;
    bool iniziata = false;
    if (m_livello > 0) {
        iniziata = esegui(QStringLiteral("SAVEPOINT ") + NomeSalvataggio(m_livello));
    } else if (SuServer(m_db)) {
        // One writer at a time on the office's database, as the files allow
        // one: the numbers given as "highest + 1" are read and written
        // under it, and two workstations never meet halfway in a deadlock.
        // The wait is the session's lock timeout.
        iniziata = esegui(QStringLiteral("BEGIN"));
        if (iniziata && !esegui(QStringLiteral("SELECT pg_advisory_xact_lock(%1)").arg(ChiaveScrittura))) {
            QSqlQuery(m_db).exec(QStringLiteral("ROLLBACK"));
            iniziata = false;
        }
    } else {
        iniziata = esegui(QStringLiteral("BEGIN IMMEDIATE"));
    }
    if (iniziata) {
        m_attiva = true;
        ++livello;
    }
}

Transazione::~Transazione()
{
    annulla();
}

int Transazione::profondita(const QSqlDatabase &db)
{
    return Livelli().value(db.connectionName());
}

bool Transazione::esegui(const QString &sql)
{
    if (!m_db.isOpen()) {
        // The driver closes a connection the server has dropped.
        const bool perso = SuServer(m_db);
        m_errore = perso ? QStringLiteral("COLLEGAMENTO CON IL SERVER INTERROTTO\n"
                                          "NESSUNA MODIFICA E' STATA REGISTRATA")
                         : QStringLiteral("DATABASE NON APERTO");
        m_codice = perso ? sqlite::ErroreIO : 0;
        return false;
    }
    QSqlQuery q(m_db);
    if (q.exec(sql))
        return true;
    // The user reads the engine's words, not the statement behind them.
    m_errore = TestoErroreSqlite(q.lastError());
    m_codice = CodiceSqlite(q.lastError());
    return false;
}

bool Transazione::conferma(int tentativi)
{
    if (!m_attiva)
        return false;
    bool fatto = false;
    if (m_livello > 0) {
        fatto = esegui(QStringLiteral("RELEASE ") + NomeSalvataggio(m_livello));
    } else {
        for (int i = 0; i < std::max(tentativi, 1) && !fatto; ++i) {
            fatto = esegui(QStringLiteral("COMMIT"));
            // A server that refuses a commit has already undone it.
            if (!fatto && ((m_codice & 0xff) != sqlite::Occupato || SuServer(m_db)))
                break;
        }
    }
    if (fatto) {
        m_attiva = false;
        --Livelli()[m_db.connectionName()];
        return true;
    }
    // The failure's words stay; undoing may fail in its turn when the engine
    // has already rolled back by itself.
    const QString errore = m_errore;
    const int codice = m_codice;
    annulla();
    m_errore = errore;
    m_codice = codice;
    return false;
}

bool Ripetibile(int codice)
{
    return codice == sqlite::Istantanea;
}

bool InTransazione(const std::function<bool(int *codice)> &corpo, QString *errore,
                   int tentativi)
{
    for (int volta = 1;; ++volta) {
        Transazione t;
        if (!t.attiva()) {
            if (errore)
                *errore = t.errore();
            return false;
        }
        int codice = 0;
        if (corpo(&codice)) {
            if (t.conferma())
                return true;
            codice = t.codice();
            if (errore)
                *errore = t.errore();
        }
        if (!Ripetibile(codice) || volta >= tentativi)
            return false;
    }
}

void Transazione::annulla()
{
    if (!m_attiva)
        return;
    m_attiva = false;
    --Livelli()[m_db.connectionName()];
    if (!m_db.isOpen())
        return;
    QSqlQuery q(m_db);
    if (m_livello > 0) {
        q.exec(QStringLiteral("ROLLBACK TO ") + NomeSalvataggio(m_livello));
        q.exec(QStringLiteral("RELEASE ") + NomeSalvataggio(m_livello));
    } else {
        q.exec(QStringLiteral("ROLLBACK"));
    }
}

} // namespace sorvane
