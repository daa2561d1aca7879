// An office on a PostgreSQL server, new or taken from a file office.

#include "tools/init/Installazione.h"

#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Sessione.h"
#include "store/Connessione.h"
#include "store/Motore.h"
#include "store/Schema.h"
#include "store/Transazione.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>

namespace sorvane::init {

namespace {

// A connection of its own, removed with its scope.
class Collegamento
{
public:
    explicit Collegamento(QSqlDatabase db) : m_nome(db.connectionName()) {}
    ~Collegamento()
    {
        QSqlDatabase::database(m_nome, false).close();
        QSqlDatabase::removeDatabase(m_nome);
    }
    QSqlDatabase db() const { return QSqlDatabase::database(m_nome, false); }

private:
    QString m_nome;
};

QString NomeNuovo() { return QUuid::createUuid().toString(); }

// The set-up's own connection; the server's notices (an extension already
// there, the tables a dropped schema takes along) are no news to the user.
bool Apri(QSqlDatabase &db)
{
    return db.open() && QSqlQuery(db).exec(QStringLiteral("SET client_min_messages = warning"));
}

// Opens the office's database; when it is missing, makes it from the
// server's maintenance database, if the user may.
bool ApriOCreaDatabase(QString *errore)
{
    const QString database = impostazioni().Server.database;
    {
        Collegamento c(AggiungiServer(NomeNuovo()));
        QSqlDatabase db = c.db();
        if (db.open())
            return true;
    }
    if (database.isEmpty()) { // the service names it, and it is not there
        *errore = QStringLiteral("IMPOSSIBILE APRIRE IL DATABASE DEL SERVIZIO %1")
                      .arg(impostazioni().Server.servizio);
        return false;
    }
    Collegamento manutenzione(AggiungiServer(NomeNuovo()));
    QSqlDatabase db = manutenzione.db();
    db.setDatabaseName(QStringLiteral("postgres"));
    if (!db.open()) {
        *errore = QStringLiteral("SERVER NON RAGGIUNGIBILE: ") + TestoErroreSqlite(db.lastError());
        return false;
    }
    QSqlQuery q(db);
    q.prepare(QStringLiteral("SELECT count(*) FROM pg_database WHERE datname = ?"));
    q.addBindValue(database);
    if (q.exec() && q.next() && q.value(0).toInt() > 0) {
        *errore = QStringLiteral("IMPOSSIBILE APRIRE IL DATABASE %1 SUL SERVER").arg(database);
        return false;
    }
    if (!q.exec(QStringLiteral("CREATE DATABASE ") + NomeSchemaSql(database))) {
        *errore = QStringLiteral("IMPOSSIBILE CREARE IL DATABASE %1 SUL SERVER: %2")
                      .arg(database, TestoErroreSqlite(q.lastError()));
        return false;
    }
    return true;
}

bool SchemaPresente(QSqlDatabase &db, const QString &schema)
{
    QSqlQuery q(db);
    q.prepare(QStringLiteral("SELECT count(*) FROM pg_namespace WHERE nspname = ?"));
    q.addBindValue(schema);
    return q.exec() && q.next() && q.value(0).toInt() > 0;
}

// The schemas this run has made, dropped with their tables unless the run
// ends well, so that it can be run again; what was there before stays.
class SchemiFatti
{
public:
    ~SchemiFatti()
    {
        if (m_confermato || m_schemi.isEmpty())
            return;
        ChiudiDatabase();
        Collegamento c(AggiungiServer(NomeNuovo()));
        QSqlDatabase db = c.db();
        if (!Apri(db))
            return;
        for (const QString &schema : std::as_const(m_schemi))
            QSqlQuery(db).exec(QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE")
                                   .arg(NomeSchemaSql(schema)));
    }
    void schema(const QString &s) { m_schemi.append(s); }
    void conferma() { m_confermato = true; }

private:
    QStringList m_schemi;
    bool m_confermato = false;
};

// The extension and the tables with their unique indexes; the others come
// after the load, when there is one.
bool CreaSchemi(bool indiciSubito, SchemiFatti &fatti, QString *errore)
{
    Collegamento c(AggiungiServer(NomeNuovo()));
    QSqlDatabase db = c.db();
    if (!Apri(db)) {
        *errore = QStringLiteral("IMPOSSIBILE APRIRE IL DATABASE %1 SUL SERVER: %2")
                      .arg(impostazioni().Server.database, TestoErroreSqlite(db.lastError()));
        return false;
    }
    const QString dati = SchemaServer(Archivio::Dati);
    if (SchemaPresente(db, dati)) {
        *errore = QStringLiteral("LO SCHEMA %1 ESISTE GIA' SUL SERVER: NON VIENE SOVRASCRITTO")
                      .arg(dati);
        return false;
    }
    QSqlQuery q(db);
    if (!q.exec(QStringLiteral("CREATE EXTENSION IF NOT EXISTS citext SCHEMA public"))) {
        *errore = QStringLiteral("IMPOSSIBILE INSTALLARE L'ESTENSIONE citext: ")
                  + TestoErroreSqlite(q.lastError());
        return false;
    }
    // The index schema is the office's: a second operator finds it made.
    const bool indiciPresenti = SchemaPresente(db, SchemaServer(Archivio::Indici));
    for (Archivio a : TuttiGliArchivi) {
        if (a == Archivio::Indici && indiciPresenti)
            continue;
        QString dettaglio;
        const QString schema = SchemaServer(a);
        if (!SchemaPresente(db, schema))
            fatti.schema(schema);
        if (!CreaTabelle(db, a, schema, &dettaglio)
            || (indiciSubito && !CreaIndiciSecondari(db, a, schema, &dettaglio))) {
            *errore = QStringLiteral("ERRORE CREANDO LO SCHEMA %1:\n%2").arg(schema, dettaglio);
            return false;
        }
    }
    return true;
}

// The files of a file office, from its folder's INI as the program reads it.
struct Origine
{
    QString operatore;
    QString file[4];
};

bool LeggiOrigine(const QString &cartella, Origine *o, QString *errore)
{
    const QString ini = QDir(cartella).filePath(QStringLiteral("sorvane.ini"));
    if (!QFileInfo::exists(ini)) {
        *errore = QStringLiteral("IL FILE %1 NON ESISTE").arg(ini);
        return false;
    }
    const QString sep = QDir::separator();
    const auto cartellaIni = [&](const char *chiave) {
        QString p = LeggiIni(ini, QStringLiteral("PATH"), QString::fromLatin1(chiave)).trimmed();
        return p.endsWith(sep) || p.endsWith(QLatin1Char('/')) ? p : p + sep;
    };
    o->operatore = LeggiIni(ini, QStringLiteral("BASE"), QStringLiteral("OPERATORE")).trimmed();
    const QString dati = cartellaIni("FILE");
    const QString lavoro = cartellaIni("WORK");
    o->file[int(Archivio::Dati)] = dati + o->operatore + sep + NomeFile(Archivio::Dati);
    o->file[int(Archivio::Visite)] = dati + o->operatore + sep + NomeFile(Archivio::Visite);
    o->file[int(Archivio::Lavoro)] = lavoro + o->operatore + sep + NomeFile(Archivio::Lavoro);
    o->file[int(Archivio::Indici)] = dati + NomeFile(Archivio::Indici);
    for (const QString &f : o->file) {
        if (!QFileInfo(f).isFile()) {
            *errore = QStringLiteral("IL DATABASE %1 NON ESISTE").arg(f);
            return false;
        }
    }
    return true;
}

qint64 Conta(const QSqlDatabase &db, const QString &tabella)
{
    QSqlQuery q(db);
    if (!q.exec(QStringLiteral("SELECT count(*) FROM ") + tabella) || !q.next())
        return -1;
    return q.value(0).toLongLong();
}

// Copies the rows of one file, in the order they were added, into its
// schema on the server in one transaction; the counts of the tables copied
// go to `copiate`, which is left empty when the file could not be copied.
bool CopiaFile(Archivio a, const QString &percorso, QSqlDatabase &server,
               QList<QPair<QString, qint64>> *copiate, QString *errore)
{
    Collegamento c([&] {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), NomeNuovo());
        db.setDatabaseName(percorso);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        return db;
    }());
    QSqlDatabase file = c.db();
    if (!file.open()) {
        *errore = QStringLiteral("IMPOSSIBILE APRIRE IL DATABASE %1: %2")
                      .arg(percorso, TestoErroreSqlite(file.lastError()));
        return false;
    }
    const QString schema = SchemaServer(a);
    Transazione t(server);
    if (!t.attiva()) {
        *errore = t.errore();
        return false;
    }
    for (const Tabella *tab : TabelleDi(a)) {
        const QSqlRecord presenti = file.record(tab->nome);
        if (presenti.isEmpty())
            continue; // a table the file's version did not have yet
        QStringList colonne;
        for (const Colonna &col : tab->colonne)
            if (presenti.contains(col.nome))
                colonne.append(col.nome);
        QSqlQuery leggi(file);
        LetturaInAvanti(leggi);
        if (!leggi.exec(QStringLiteral("SELECT %1 FROM \"%2\" ORDER BY rowid")
                            .arg(colonne.join(QStringLiteral(", ")), tab->nome))) {
            *errore = QStringLiteral("ERRORE LEGGENDO LA TABELLA %1: %2")
                          .arg(tab->nome, TestoErroreSqlite(leggi.lastError()));
            copiate->clear();
            return false;
        }
        QSqlQuery scrivi(server);
        scrivi.prepare(QStringLiteral("INSERT INTO %1.%2 (%3) VALUES (%4)")
                           .arg(NomeSchemaSql(schema), NomeSql(tab->nome),
                                colonne.join(QStringLiteral(", ")),
                                QStringList(colonne.size(), QStringLiteral("?"))
                                    .join(QStringLiteral(", "))));
        qint64 righe = 0;
        while (leggi.next()) {
            for (int i = 0; i < colonne.size(); ++i)
                scrivi.addBindValue(leggi.value(i));
            if (!scrivi.exec()) {
                *errore = QStringLiteral("ERRORE COPIANDO LA TABELLA %1: %2")
                              .arg(tab->nome, TestoErroreSqlite(scrivi.lastError()));
                // Undone before the statement goes: the server frees it only
                // outside the failed transaction.
                t.annulla();
                copiate->clear();
                return false;
            }
            ++righe;
        }
        copiate->append({tab->nome, righe});
    }
    if (!t.conferma()) {
        *errore = t.errore();
        copiate->clear();
        return false;
    }
    // The counts, read again on both sides once the rows are saved.
    bool uguali = true;
    for (const auto &[tabella, righe] : std::as_const(*copiate)) {
        const qint64 nelFile = Conta(file, QLatin1Char('"') + tabella + QLatin1Char('"'));
        const qint64 sulServer = Conta(server, NomeSchemaSql(schema) + QLatin1Char('.')
                                                   + NomeSql(tabella));
        if (nelFile != sulServer || nelFile != righe) {
            errore->append(QStringLiteral("TABELLA %1: %2 RIGHE NEL FILE, %3 SUL SERVER\n")
                               .arg(tabella)
                               .arg(nelFile)
                               .arg(sulServer));
            uguali = false;
        }
    }
    return uguali;
}

bool Copia(const Origine &o, const std::function<void(const QString &)> &messaggi,
           QString *errore)
{
    QSqlDatabase db = Db();
    bool uguali = true;
    for (Archivio a : TuttiGliArchivi) {
        const QString &percorso = o.file[int(a)];
        messaggi(QStringLiteral("Copia di %1").arg(percorso));
        QList<QPair<QString, qint64>> copiate;
        QString differenze;
        if (CopiaFile(a, percorso, db, &copiate, &differenze)) {
            qint64 righe = 0;
            for (const auto &c : std::as_const(copiate))
                righe += c.second;
            messaggi(QStringLiteral("  %1 tabelle, %2 righe: conteggi uguali")
                         .arg(copiate.size())
                         .arg(righe));
            continue;
        }
        if (copiate.isEmpty()) { // the file could not be read or written at all
            *errore = differenze;
            return false;
        }
        errore->append(differenze);
        uguali = false;
    }
    if (!uguali)
        errore->prepend(QStringLiteral("LA COPIA NON CORRISPONDE ALL'ORIGINALE:\n"));
    return uguali;
}

} // namespace

bool InstallaSuServer(const Opzioni &opzioni, const Server &server,
                      const std::function<void(const QString &)> &messaggi, QString *errore)
{
    Origine origine;
    if (!server.copia.isEmpty() && !LeggiOrigine(server.copia, &origine, errore))
        return false;
    const QString operatore =
        (origine.operatore.isEmpty() ? opzioni.operatore : origine.operatore).trimmed().toUpper();
    if (operatore.isEmpty()) {
        *errore = QStringLiteral("CODICE OPERATORE NON VALIDO");
        return false;
    }
    const Disposizione d = Disponi(opzioni.cartella, operatore);
    if (QFileInfo::exists(d.ini)) {
        *errore = QStringLiteral("IL FILE %1 ESISTE GIA': NON VIENE SOVRASCRITTO").arg(d.ini);
        return false;
    }

    Impostazioni &imp = impostazioni();
    imp.Motore = QStringLiteral("POSTGRES");
    imp.Server = server;
    imp.PathDati = d.pathDati;
    imp.PathLavoro = d.pathLavoro;
    imp.PathLavoroOperatore = d.pathLavoro + operatore + QDir::separator();
    sessione().CodiceOperatore = operatore;

    messaggi(QStringLiteral("Creazione degli schemi in %1").arg(LuogoArchivio(Archivio::Dati)));
    const bool carico = opzioni.demo || !server.copia.isEmpty();
    SchemiFatti fatti;
    if (!ApriOCreaDatabase(errore) || !CreaSchemi(!carico, fatti, errore))
        return false;

    MessaggiRaccolti raccolti;
    if (!ConnettiDatabase() || !raccolti.testi.isEmpty()) {
        *errore = raccolti.testi.join(QLatin1Char('\n'));
        if (errore->isEmpty())
            *errore = sessione().TestoErrore;
        return false;
    }
    QSqlDatabase db = Db();
    const bool fatto = [&] {
        if (!server.copia.isEmpty())
            return Copia(origine, messaggi, errore);
        if (!ScriviRigheIniziali(db, errore))
            return false;
        if (opzioni.demo) {
            messaggi(QStringLiteral("Dati di prova: un ufficio"));
            return ScriviDemo(opzioni, db, errore);
        }
        return true;
    }();
    if (fatto && carico) {
        messaggi(QStringLiteral("Creazione degli indici"));
        for (Archivio a : TuttiGliArchivi) {
            QString dettaglio;
            if (!CreaIndiciSecondari(db, a, SchemaServer(a), &dettaglio)) {
                *errore = QStringLiteral("ERRORE CREANDO GLI INDICI:\n") + dettaglio;
                db = QSqlDatabase();
                ChiudiDatabase();
                return false;
            }
        }
        QSqlQuery(db).exec(QStringLiteral("ANALYZE"));
    }
    db = QSqlDatabase();
    ChiudiDatabase();
    if (!fatto)
        return false;

    for (const QString &c : d.cartelle) {
        if (!QDir().mkpath(c)) {
            *errore = QStringLiteral("IMPOSSIBILE CREARE LA CARTELLA %1").arg(c);
            return false;
        }
    }
    InstallaModelli(opzioni.modelli, d.pathModuli, messaggi);
    const auto archivio = [&](const char *chiave, const QString &valore) {
        return valore.isEmpty()
               || ScriviIni(d.ini, QStringLiteral("ARCHIVIO"), QString::fromLatin1(chiave), valore);
    };
    if (!ScriviIniUfficio(d, operatore, errore) || !archivio("MOTORE", imp.Motore)
        || !archivio("HOST", server.host)
        || !archivio("PORTA", server.porta > 0 ? QString::number(server.porta) : QString())
        || !archivio("DATABASE", server.database) || !archivio("UTENTE", server.utente)
        || !archivio("SERVIZIO", server.servizio) || !archivio("POSTAZIONE", server.postazione)) {
        *errore = QStringLiteral("IMPOSSIBILE SCRIVERE IL FILE %1").arg(d.ini);
        return false;
    }
    fatti.conferma();
    messaggi(QStringLiteral("Ufficio pronto sul server."));
    messaggi(QStringLiteral("Per avviare il programma: SORVANE_INI=\"%1\" sorvane").arg(d.ini));
    return true;
}

} // namespace sorvane::init
