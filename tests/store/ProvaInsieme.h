#pragma once

// A set of the four files in a temporary folder, laid out as the settings
// expect (data folder, operator's folder, working folder), with the
// settings pointing at it. With SORVANE_PROVA_SERVER set the set is a
// database of its own on that server, made for the test and dropped after
// it; the folder still holds
// what is not data (settings, reports, prints). Messages are recorded and answered Cancel unless
// a test says otherwise, so that no Retry loop can run for ever.

#include "frame/core/Impostazioni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "store/Connessione.h"
#include "store/Motore.h"
#include "store/Schema.h"
#include "support/CartellaProva.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <gtest/gtest.h>

namespace sorvane::prova {

// The first value a statement gives, invalid when it fails or gives none.
inline QVariant PrimoValore(const QSqlDatabase &db, const QString &sql)
{
    QSqlQuery q(db);
    return q.exec(sql) && q.next() ? q.value(0) : QVariant();
}

// A statement with bound values, which must succeed.
inline void Scrivi(const QSqlDatabase &db, const QString &sql, const QVariantList &valori = {})
{
    QSqlQuery q(db);
    // The server prepares no DDL: a statement without values runs as it is.
    if (valori.isEmpty()) {
        ASSERT_TRUE(q.exec(sql)) << qPrintable(sql) << " " << qPrintable(q.lastError().text());
        return;
    }
    ASSERT_TRUE(q.prepare(sql)) << qPrintable(sql) << " " << qPrintable(q.lastError().text());
    for (const QVariant &v : valori)
        q.addBindValue(v);
    ASSERT_TRUE(q.exec()) << qPrintable(sql) << " " << qPrintable(q.lastError().text());
}

// The tests run on the server when SORVANE_PROVA_SERVER names it
// ("host:port"); they connect as "sorvane" through libpq's variables.
inline bool SuServerDiProva()
{
    static const bool server = [] {
        const QString indirizzo = qEnvironmentVariable("SORVANE_PROVA_SERVER");
        if (indirizzo.isEmpty())
            return false;
        ServerArchivio dove;
        if (!LeggiIndirizzo(indirizzo, dove))
            qFatal("SORVANE_PROVA_SERVER: HOST:PORTA");
        qputenv("PGHOST", dove.host.toUtf8());
        if (dove.porta > 0)
            qputenv("PGPORT", QByteArray::number(dove.porta));
        if (qEnvironmentVariableIsEmpty("PGUSER"))
            qputenv("PGUSER", "sorvane");
        return true;
    }();
    return server;
}

// For a test of what only files have (paths, journal modes, permissions).
#define SOLO_SU_FILE()                                                                        \
    do {                                                                                      \
        if (::sorvane::prova::SuServerDiProva())                                              \
            GTEST_SKIP() << "archivi su file";                                                \
    } while (0)

// A plain connection of its own, removed at the end: the "other program" of
// the tests. On one file; on the server, to the test's database with the
// program's search path (the file then only says nothing).
class AltraConnessione
{
public:
    explicit AltraConnessione(const QString &file)
        : m_nome(QUuid::createUuid().toString())
    {
        if (SuServerDiProva()) {
            QSqlDatabase db = AggiungiServer(m_nome);
            if (db.open())
                PreparaSessione(db, nullptr);
            return;
        }
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_nome);
        db.setDatabaseName(file);
        db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=100"));
        db.open();
    }
    ~AltraConnessione()
    {
        QSqlDatabase::database(m_nome, false).close();
        QSqlDatabase::removeDatabase(m_nome);
    }
    QSqlDatabase db() const { return QSqlDatabase::database(m_nome, false); }
    bool esegui(const QString &sql) const { return QSqlQuery(db()).exec(sql); }
    QVariant valore(const QString &sql) const { return PrimoValore(db(), sql); }

private:
    QString m_nome;
};

class ProvaInsieme : public ::testing::Test
{
protected:
    static constexpr const char *Operatore = "OP1";

    void SetUp() override
    {
        m_messaggi.gestore = [](const Richiesta &) { return std::optional(Risposta::Annulla); };
        sessione().CodiceOperatore = QString::fromLatin1(Operatore);
        Punta(m_cartella.percorso());
        if (SuServerDiProva()) {
            ASSERT_NO_FATAL_FAILURE(CreaDatabaseDiProva());
        }
    }

    void TearDown() override
    {
        ChiudiDatabase();
        if (!m_database.isEmpty())
            Amministra(QStringLiteral("DROP DATABASE IF EXISTS \"%1\" WITH (FORCE)").arg(m_database));
        impostazioni() = Impostazioni();
    }

    // A statement on the server's maintenance database.
    static bool Amministra(const QString &sql, QString *errore = nullptr)
    {
        const QString nome = QUuid::createUuid().toString();
        bool fatto = false;
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), nome);
            db.setDatabaseName(QStringLiteral("postgres"));
            QSqlQuery q(db);
            fatto = db.open() && q.exec(sql);
            if (!fatto && errore)
                *errore = db.lastError().text() + QLatin1Char(' ') + q.lastError().text();
        }
        QSqlDatabase::removeDatabase(nome);
        return fatto;
    }

    void CreaDatabaseDiProva()
    {
        m_database = QStringLiteral("prova_")
                     + QUuid::createUuid().toString(QUuid::Id128).left(20);
        QString errore;
        ASSERT_TRUE(Amministra(QStringLiteral("CREATE DATABASE \"%1\"").arg(m_database), &errore))
            << qPrintable(errore);
        Impostazioni &imp = impostazioni();
        imp.Motore = QStringLiteral("POSTGRES");
        imp.Server.database = m_database;
        imp.Server.postazione = QStringLiteral("prova");
    }

    // Settings on a data folder under `radice`.
    void Punta(const QString &radice)
    {
        Impostazioni &imp = impostazioni();
        const QString sep = QDir::separator();
        imp.PathDati = QDir::toNativeSeparators(radice + "/dati/");
        imp.PathLavoro = QDir::toNativeSeparators(radice + "/lavoro/");
        imp.PathLavoroOperatore = imp.PathLavoro + Operatore + sep;
        imp.FileDati = imp.PathDati + Operatore + sep + NomeFile(Archivio::Dati);
        imp.FileVisite = imp.PathDati + Operatore + sep + NomeFile(Archivio::Visite);
        imp.FileLavoro = imp.PathLavoroOperatore + NomeFile(Archivio::Lavoro);
        imp.FileIndici.clear();
        if (!m_database.isEmpty()) {
            imp.Motore = QStringLiteral("POSTGRES");
            imp.Server.database = m_database;
            imp.Server.postazione = QStringLiteral("prova");
        }
    }

    // Makes one file of the set with its whole schema.
    void Crea(Archivio a)
    {
        const QString file = PercorsoArchivio(a);
        QDir().mkpath(QFileInfo(file).absolutePath());
        AltraConnessione c(file);
        QSqlDatabase db = c.db();
        QString errore;
        ASSERT_TRUE(CreaSchema(db, a, SuServer(db) ? SchemaServer(a) : QStringLiteral("main"),
                               &errore))
            << qPrintable(errore);
    }
    void CreaTutti()
    {
        for (Archivio a : TuttiGliArchivi)
            Crea(a);
    }

    QVariant Valore(const QString &sql) { return PrimoValore(Db(), sql); }
    bool Esegui(const QString &sql) { return QSqlQuery(Db()).exec(sql); }

    CartellaProva m_cartella;
    MessaggiRegistrati m_messaggi;
    QString m_database; // on the server
};

} // namespace sorvane::prova
