#include "store/Transazione.h"

#include "store/Connessione.h"

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

QString NomeSalvataggio(int livello)
{
    return QStringLiteral("transazione_%1").arg(livello);
}

} // namespace

int CodiceSqlite(const QSqlError &e)
{
    bool ok = false;
    const int codice = e.nativeErrorCode().toInt(&ok);
    return ok ? codice : 0;
}

QString TestoErroreSqlite(const QSqlError &e)
{
    QString testo = e.databaseText().trimmed();
    if (testo.isEmpty())
        testo = e.text().trimmed();
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
    const QString sql = m_livello == 0 ? QStringLiteral("BEGIN IMMEDIATE")
                                       : QStringLiteral("SAVEPOINT ") + NomeSalvataggio(m_livello);
    if (esegui(sql)) {
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
        m_errore = QStringLiteral("DATABASE NON APERTO");
        m_codice = 0;
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
            if (!fatto && (m_codice & 0xff) != sqlite::Occupato)
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
