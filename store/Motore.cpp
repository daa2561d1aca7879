#include "store/Motore.h"

#include "frame/core/Impostazioni.h"
#include "frame/core/Sessione.h"
#include "store/Transazione.h"

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QSysInfo>

namespace sorvane {

namespace {

// A schema name's own part: what the settings give, without the characters
// a careless quote could misread, and within the server's 63 bytes.
QString Parte(const QString &testo)
{
    QString t = testo.trimmed();
    t.remove(QLatin1Char('"'));
    return t;
}

QString Tronca(const QString &nome)
{
    QString t = nome;
    while (t.toUtf8().size() > 63)
        t.chop(1);
    return t;
}

} // namespace

Motore MotoreDi(const QSqlDatabase &db)
{
    return db.driverName() == QLatin1String("QPSQL") ? Motore::Postgres : Motore::Sqlite;
}

Motore MotoreScelto()
{
    return impostazioni().Motore.compare(QLatin1String("POSTGRES"), Qt::CaseInsensitive) == 0
               ? Motore::Postgres
               : Motore::Sqlite;
}

void LetturaInAvanti(QSqlQuery &q)
{
    const QSqlDriver *driver = q.driver();
    q.setForwardOnly(!driver || driver->dbmsType() != QSqlDriver::PostgreSQL);
}

void LetturaInFlusso(QSqlQuery &q) { q.setForwardOnly(true); }

QString SchemaServer(Archivio a)
{
    const QString operatore = Parte(sessione().CodiceOperatore);
    switch (a) {
    case Archivio::Dati: return Tronca(QStringLiteral("dati_") + operatore);
    case Archivio::Visite: return Tronca(QStringLiteral("visite_") + operatore);
    case Archivio::Indici: return QStringLiteral("indici");
    case Archivio::Lavoro: {
        QString postazione = Parte(impostazioni().Server.postazione);
        if (postazione.isEmpty())
            postazione = Parte(QSysInfo::machineHostName());
        return Tronca(QStringLiteral("lavoro_") + operatore + QLatin1Char('_') + postazione);
    }
    }
    return QString();
}

QString SchemaDi(const QSqlDatabase &db, Archivio a)
{
    return SuServer(db) ? SchemaServer(a) : NomeSchema(a);
}

QString LuogoArchivio(Archivio a)
{
    const Impostazioni &imp = impostazioni();
    if (MotoreScelto() == Motore::Sqlite) {
        switch (a) {
        case Archivio::Dati: return imp.FileDati;
        case Archivio::Lavoro: return imp.FileLavoro;
        case Archivio::Visite: return imp.FileVisite;
        case Archivio::Indici:
            return imp.FileIndici.isEmpty() ? imp.PathDati + NomeFile(Archivio::Indici)
                                            : imp.FileIndici;
        }
    }
    return LuogoServer(imp.Server) + QStringLiteral(", ") + SchemaServer(a);
}

QString NomeSql(const QString &nome)
{
    QString t = nome.toLower();
    t.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + t + QLatin1Char('"');
}

QString NomeSchemaSql(const QString &schema)
{
    QString t = schema;
    t.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + t + QLatin1Char('"');
}

QSqlDatabase AggiungiServer(const QString &nome)
{
    const Impostazioni &imp = impostazioni();
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), nome);
    QStringList opzioni{QStringLiteral("connect_timeout=5"),
                        QStringLiteral("application_name=sorvane")};
    if (!imp.Server.servizio.isEmpty())
        opzioni << QStringLiteral("service=") + imp.Server.servizio;
    db.setConnectOptions(opzioni.join(QLatin1Char(';')));
    db.setHostName(imp.Server.host);
    if (imp.Server.porta > 0)
        db.setPort(imp.Server.porta);
    db.setDatabaseName(imp.Server.database);
    db.setUserName(imp.Server.utente);
    // Sums and roundings come back as numeric: numbers, as on the files,
    // not the driver's exact text.
    db.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    return db;
}

bool PreparaSessione(QSqlDatabase &db, QString *errore)
{
    const QStringList percorso{NomeSchemaSql(SchemaServer(Archivio::Lavoro)),
                               NomeSchemaSql(SchemaServer(Archivio::Dati)),
                               NomeSchemaSql(SchemaServer(Archivio::Visite)),
                               NomeSchemaSql(SchemaServer(Archivio::Indici)),
                               QStringLiteral("public")};
    const QStringList istruzioni{
        QStringLiteral("SET search_path TO ") + percorso.join(QStringLiteral(", ")),
        QStringLiteral("SET lock_timeout = %1").arg(AttesaBloccoMs),
        QStringLiteral("SET max_parallel_workers_per_gather = 0"),
        QStringLiteral("SET client_min_messages = warning"),
    };
    QSqlQuery q(db);
    for (const QString &sql : istruzioni) {
        if (!q.exec(sql)) {
            if (errore)
                *errore = TestoErroreSqlite(q.lastError());
            return false;
        }
    }
    return true;
}

int ClasseDaStato(const QString &s)
{
    if (s.size() != 5)
        return 0;
    if (s.startsWith(QLatin1String("23")))
        return sqlite::Vincolo;
    // A deadlock or a serialization failure: the transaction must start
    // again, as after the files' stale snapshot.
    if (s == QLatin1String("40001") || s == QLatin1String("40P01"))
        return sqlite::Istantanea;
    if (s == QLatin1String("55P03") || s == QLatin1String("55006"))
        return sqlite::Occupato;
    if (s == QLatin1String("25006") || s == QLatin1String("42501"))
        return sqlite::SolaLettura;
    if (s == QLatin1String("53100"))
        return sqlite::Pieno;
    if (s.startsWith(QLatin1String("08")) || s.startsWith(QLatin1String("57P"))
        || s.startsWith(QLatin1String("58")) || s.startsWith(QLatin1String("53")))
        return sqlite::ErroreIO;
    if (s == QLatin1String("3D000") || s == QLatin1String("3F000") || s == QLatin1String("42P01"))
        return sqlite::NonApribile;
    return 1; // SQLITE_ERROR
}

bool ErroreDelServer(const QSqlError &e)
{
    // The embedded engine's codes have at most four digits.
    return e.nativeErrorCode().size() == 5;
}

bool CollegamentoPerso(const QSqlError &e)
{
    const QString stato = e.nativeErrorCode();
    if (stato.size() == 5)
        return stato.startsWith(QLatin1String("08")) || stato.startsWith(QLatin1String("57P"));
    if (!stato.isEmpty())
        return false;
    const QString testo = (e.databaseText() + QLatin1Char(' ') + e.driverText()).toLower();
    return e.type() == QSqlError::ConnectionError
           || testo.contains(QLatin1String("server closed the connection"))
           || testo.contains(QLatin1String("no connection to the server"))
           || testo.contains(QLatin1String("connection to server"))
           || testo.contains(QLatin1String("terminating connection"));
}

} // namespace sorvane
