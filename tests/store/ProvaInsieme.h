#pragma once

// A set of the four files in a temporary folder, laid out as the settings
// expect (data folder, operator's folder, working folder), with the
// settings pointing at it. Messages are recorded and answered Cancel unless
// a test says otherwise, so that no Retry loop can run for ever.

#include "frame/core/Impostazioni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "store/Connessione.h"
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
    ASSERT_TRUE(q.prepare(sql)) << qPrintable(sql) << " " << qPrintable(q.lastError().text());
    for (const QVariant &v : valori)
        q.addBindValue(v);
    ASSERT_TRUE(q.exec()) << qPrintable(sql) << " " << qPrintable(q.lastError().text());
}

// A plain connection of its own on one file, removed at the end: the
// "other program" of the tests.
class AltraConnessione
{
public:
    explicit AltraConnessione(const QString &file)
        : m_nome(QUuid::createUuid().toString())
    {
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
    }

    void TearDown() override
    {
        ChiudiDatabase();
        impostazioni() = Impostazioni();
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
    }

    // Makes one file of the set with its whole schema.
    void Crea(Archivio a)
    {
        const QString file = PercorsoArchivio(a);
        QDir().mkpath(QFileInfo(file).absolutePath());
        AltraConnessione c(file);
        QSqlDatabase db = c.db();
        QString errore;
        ASSERT_TRUE(CreaSchema(db, a, QStringLiteral("main"), &errore)) << qPrintable(errore);
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
};

} // namespace sorvane::prova
