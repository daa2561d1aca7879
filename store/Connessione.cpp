#include "store/Connessione.h"

#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "store/Motore.h"
#include "store/Tabelle.h"
#include "store/Transazione.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>

namespace sorvane {

namespace {

void Cedi()
{
    if (QCoreApplication::instance())
        QCoreApplication::processEvents();
}

void Mostra(const Avanzamento &avanzamento, const QString &parole)
{
    if (avanzamento)
        avanzamento(parole);
    Cedi();
}

QString Inesistente(const QString &percorso)
{
    return QStringLiteral("DATABASE ") + percorso + QStringLiteral(" INESISTENTE");
}

// A file name for SQLite's URI syntax: read-write, never created.
QString UriLetturaScrittura(const QString &percorso)
{
    const QUrl url = QUrl::fromLocalFile(QDir::fromNativeSeparators(percorso));
    return url.toString(QUrl::FullyEncoded) + QStringLiteral("?mode=rw");
}

// The file begins as every SQLite database does. An empty file would be
// taken by the engine as an empty database, which is what a wrong path must
// never turn into.
bool SembraUnDatabase(const QString &percorso)
{
    QFile f(percorso);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    return f.read(16) == QByteArray("SQLite format 3\0", 16);
}

// The words for a file the engine refused. A lock held by another program
// is told as such; anything else is the design's missing database.
QString ParoleDiRifiuto(const QString &percorso, const QSqlError &e)
{
    const int primario = CodiceSqlite(e) & 0xff;
    if (primario == sqlite::Occupato || primario == sqlite::Bloccato)
        return QStringLiteral("DATABASE ") + percorso
               + QStringLiteral(" BLOCCATO DA UN ALTRO PROGRAMMA\n") + TestoErroreSqlite(e);
    if (primario == sqlite::NonUnDatabase || primario == sqlite::NonApribile)
        return Inesistente(percorso);
    return Inesistente(percorso) + QLatin1Char('\n') + TestoErroreSqlite(e);
}

// Checks that the engine can read the file under `schema`, puts it back in
// rollback-journal mode when it was left in WAL, and asks for full syncing.
bool PreparaSchema(QSqlDatabase &db, const QString &schema, const QString &percorso)
{
    QSqlQuery q(db);
    const QString s = QLatin1Char('"') + schema + QLatin1Char('"');
    if (!q.exec(QStringLiteral("SELECT count(*) FROM %1.sqlite_master").arg(s))) {
        sessione().TestoErrore = ParoleDiRifiuto(percorso, q.lastError());
        return false;
    }
    q.finish();
    if (!q.exec(QStringLiteral("PRAGMA %1.journal_mode").arg(s)) || !q.next()) {
        sessione().TestoErrore = ParoleDiRifiuto(percorso, q.lastError());
        return false;
    }
    const bool wal = q.value(0).toString().toLower() == QStringLiteral("wal");
    q.finish();
    if (wal) {
        const bool tornato = q.exec(QStringLiteral("PRAGMA %1.journal_mode = DELETE").arg(s))
                             && q.next()
                             && q.value(0).toString().toLower() == QStringLiteral("delete");
        if (!tornato) {
            QString testo = QStringLiteral("DATABASE ") + percorso
                            + QStringLiteral(" IN MODALITA' WAL, APERTO DA UN ALTRO PROGRAMMA:"
                                             "\nIMPOSSIBILE SCRIVERE IN SICUREZZA");
            if (q.lastError().isValid())
                testo += QLatin1Char('\n') + TestoErroreSqlite(q.lastError());
            sessione().TestoErrore = testo;
            return false;
        }
        q.finish();
    }
    if (!q.exec(QStringLiteral("PRAGMA %1.synchronous = FULL").arg(s))) {
        sessione().TestoErrore = ParoleDiRifiuto(percorso, q.lastError());
        return false;
    }
    return true;
}

// The engine opens a write-protected file for reading without a word, and
// the first save would be the first to fail: a file the program writes to
// is refused at start instead, as a missing one is. A write begun and
// undone at once tells (a write transaction alone would not: the engine
// starts a read one on a file it cannot write). A file busy with another
// program's write is writable all the same, and meets the busy wait when
// it is written.
bool Scrivibile(Archivio a, const QString &percorso)
{
    QSqlQuery q(Db());
    if (!q.exec(QStringLiteral("BEGIN")))
        return true;
    const bool scritto = q.exec(QStringLiteral("CREATE TABLE \"%1\".sorvane_prova_scrittura (x)")
                                    .arg(NomeSchema(a)));
    const int codice = scritto ? 0 : CodiceSqlite(q.lastError()) & 0xff;
    q.exec(QStringLiteral("ROLLBACK"));
    if (codice != sqlite::SolaLettura)
        return true;
    sessione().TestoErrore =
        QStringLiteral("DATABASE ") + percorso + QStringLiteral(" IN SOLA LETTURA");
    return false;
}

bool ApriPrincipale(const QString &percorso)
{
    if (!EsisteFile(percorso) || !SembraUnDatabase(percorso))
        return false;
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), NomeConnessione);
    db.setConnectOptions(
        QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1").arg(AttesaOccupatoMs));
    db.setDatabaseName(UriLetturaScrittura(percorso));
    if (!db.open()) {
        sessione().TestoErrore = ParoleDiRifiuto(percorso, db.lastError());
        return false;
    }
    QSqlQuery(db).exec(QStringLiteral("PRAGMA busy_timeout = %1").arg(AttesaOccupatoMs));
    return PreparaSchema(db, QStringLiteral("main"), percorso);
}

bool Allega(Archivio a, const QString &percorso)
{
    sessione().TestoErrore = Inesistente(percorso);
    if (!EsisteFile(percorso) || !SembraUnDatabase(percorso))
        return false;
    QSqlDatabase db = Db();
    QSqlQuery q(db);
    q.prepare(QStringLiteral("ATTACH DATABASE ? AS ") + NomeSchema(a));
    q.addBindValue(UriLetturaScrittura(percorso));
    if (!q.exec()) {
        sessione().TestoErrore = ParoleDiRifiuto(percorso, q.lastError());
        return false;
    }
    return PreparaSchema(db, NomeSchema(a), percorso);
}

void Rilascia()
{
    // The shared recordsets hold the connection: they go first, or the
    // connection could not be removed.
    ChiudiTutteLeTabelle();
    Archivi &st = archivi();
    st.RsIndici.Close();
    st.RsIndici = Recordset();
    st.IndiciAperto = false;
    st.DbDatiAperto = false;
    st.DbLavoroAperto = false;
    {
        QSqlDatabase db = QSqlDatabase::database(NomeConnessione, false);
        if (db.isValid())
            db.close();
    }
    if (QSqlDatabase::contains(NomeConnessione))
        QSqlDatabase::removeDatabase(NomeConnessione);
}

struct Passo
{
    Archivio archivio;
    const char *areaDiLavoro;
    const char *apertura;
};

constexpr Passo Passi[] = {
    {Archivio::Dati, "Aggancio WorkSpace operativo", "Apertura DataBase operativo"},
    {Archivio::Lavoro, "Aggancio WorkSpace di lavoro", "Apertura DataBase di lavoro"},
    {Archivio::Visite, "Aggancio WorkSpace delle Visite", "Apertura DataBase delle Visite"},
    {Archivio::Indici, "Aggancio WorkSpace degli indici", "Apertura DataBase degli indici"},
};

// The office's database on the server: the connection, then each schema
// of the set in the order of the files, each told as its file would be.
bool ConnettiServer(const Avanzamento &avanzamento)
{
    Impostazioni &imp = impostazioni();
    Archivi &st = archivi();
    const QString luogo = LuogoServer(imp.Server);
    Mostra(avanzamento, QStringLiteral("Collegamento al server"));
    QSqlDatabase db = AggiungiServer(NomeConnessione);
    if (!db.open()) {
        sessione().TestoErrore = QStringLiteral("SERVER ") + luogo
                                 + QStringLiteral(" NON RAGGIUNGIBILE\n")
                                 + TestoErroreSqlite(db.lastError());
        return false;
    }
    QString errore;
    if (!PreparaSessione(db, &errore)) {
        sessione().TestoErrore = QStringLiteral("SERVER ") + luogo + QLatin1Char('\n') + errore;
        return false;
    }
    QSqlQuery q(db);
    q.prepare(QStringLiteral("SELECT has_schema_privilege(?, 'USAGE')"
                             " FROM pg_namespace WHERE nspname = ?"));
    for (const Passo &p : Passi) {
        const QString schema = SchemaServer(p.archivio);
        Mostra(avanzamento, QString::fromLatin1(p.areaDiLavoro));
        Mostra(avanzamento, QString::fromLatin1(p.apertura));
        if (p.archivio == Archivio::Lavoro) {
            // A workstation new to the office gets its working schema here,
            // as the set-up gives a new folder its working file.
            if (!CreaSchema(db, Archivio::Lavoro, schema, &errore)) {
                sessione().TestoErrore = Inesistente(LuogoArchivio(p.archivio))
                                         + QLatin1Char('\n') + errore;
                return false;
            }
            st.DbDatiAperto = true;
            st.DbLavoroAperto = true;
            continue;
        }
        q.addBindValue(schema);
        q.addBindValue(schema);
        if (!q.exec() || !q.next() || !q.value(0).toBool()) {
            sessione().TestoErrore = Inesistente(LuogoArchivio(p.archivio));
            if (q.lastError().isValid())
                sessione().TestoErrore += QLatin1Char('\n') + TestoErroreSqlite(q.lastError());
            return false;
        }
        q.finish();
    }
    imp.FileIndici = imp.PathDati + NomeFile(Archivio::Indici);
    return true;
}

bool Concludi(const Avanzamento &avanzamento);

// One pass of the opening; false with sessione().TestoErrore set.
bool Connetti(const Avanzamento &avanzamento)
{
    Impostazioni &imp = impostazioni();
    Archivi &st = archivi();
    Cedi();
    if (MotoreScelto() == Motore::Postgres) {
        if (!ConnettiServer(avanzamento))
            return false;
        return Concludi(avanzamento);
    }
    for (const Passo &p : Passi) {
        if (p.archivio == Archivio::Indici)
            imp.FileIndici = imp.PathDati + NomeFile(Archivio::Indici);
        const QString percorso = PercorsoArchivio(p.archivio);
        sessione().TestoErrore = Inesistente(percorso);
        if (p.archivio == Archivio::Dati)
            st.DbDatiAperto = false;
        if (p.archivio == Archivio::Lavoro)
            st.DbLavoroAperto = false;
        Mostra(avanzamento, QString::fromLatin1(p.areaDiLavoro));
        Mostra(avanzamento, QString::fromLatin1(p.apertura));

        switch (p.archivio) {
        case Archivio::Dati:
            // The data file is attached as soon as the working file, the
            // connection's main database, is open; here it is only checked.
            if (!EsisteFile(percorso) || !SembraUnDatabase(percorso))
                return false;
            break;
        case Archivio::Lavoro:
            if (!ApriPrincipale(percorso) || !Scrivibile(Archivio::Lavoro, percorso))
                return false;
            if (!Allega(Archivio::Dati, PercorsoArchivio(Archivio::Dati))
                || !Scrivibile(Archivio::Dati, PercorsoArchivio(Archivio::Dati)))
                return false;
            st.DbDatiAperto = true;
            st.DbLavoroAperto = true;
            break;
        case Archivio::Visite:
        case Archivio::Indici:
            if (!Allega(p.archivio, percorso))
                return false;
            break;
        }
        Cedi();
    }
    return Concludi(avanzamento);
}

// The index table and the attachments, once the files (or schemas) are open.
bool Concludi(const Avanzamento &avanzamento)
{
    Archivi &st = archivi();
    ApriIndici();
    if (st.IndiciAperto) {
        sessione().TestoErrore = QStringLiteral("RICONNESSIONE TABELLE");
        AgganciaTabelle(avanzamento);
        return true;
    }
    sessione().TestoErrore = QStringLiteral("ERRORE IN APERTURA INDICI\nDataBase: ")
                             + LuogoArchivio(Archivio::Indici);
    return false;
}

} // namespace

Archivi &archivi()
{
    static Archivi stato;
    return stato;
}

namespace {

int g_generazione = 0; // the reopenings of a dropped server connection

void Riallaccia(QSqlDatabase &db)
{
    constexpr qint64 PausaTentativiMs = 10000;
    static QElapsedTimer ultimo;
    if (Transazione::profondita(db) > 0
        || (ultimo.isValid() && !ultimo.hasExpired(PausaTentativiMs)))
        return;
    ultimo.start();
    QString errore;
    if (db.open() && PreparaSessione(db, &errore)) {
        ++g_generazione;
        ultimo.invalidate();
    } else {
        db.close();
    }
}

} // namespace

QSqlDatabase Db()
{
    QSqlDatabase db = QSqlDatabase::database(NomeConnessione, false);
    // Closed by the driver, not by the program: that one is released first.
    if (!db.isOpen() && archivi().DbDatiAperto && db.isValid() && SuServer(db))
        Riallaccia(db);
    return db;
}

int GenerazioneCollegamento() { return g_generazione; }

QString PercorsoArchivio(Archivio a)
{
    const Impostazioni &imp = impostazioni();
    switch (a) {
    case Archivio::Dati: return imp.FileDati;
    case Archivio::Lavoro: return imp.FileLavoro;
    case Archivio::Visite: return imp.FileVisite;
    case Archivio::Indici:
        return imp.FileIndici.isEmpty() ? imp.PathDati + NomeFile(Archivio::Indici)
                                        : imp.FileIndici;
    }
    return QString();
}

QString NomeProgrammaMaiuscolo()
{
    QString nome;
    if (QCoreApplication::instance())
        nome = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
    return nome.isEmpty() ? QStringLiteral("SORVANE") : nome.toUpper();
}

bool ConnettiDatabase(const Avanzamento &avanzamento)
{
    for (;;) {
        if (QSqlDatabase::contains(NomeConnessione))
            Rilascia();
        if (Connetti(avanzamento))
            return true;
        Rilascia();
        const Risposta r = Messaggio(sessione().TestoErrore,
                                     NomeProgrammaMaiuscolo() + QStringLiteral(" -ERRORE"),
                                     Icona::Stop, Pulsanti::RiprovaAnnulla);
        if (r != Risposta::Riprova)
            return false;
    }
}

bool ApriIndici()
{
    Archivi &st = archivi();
    for (;;) {
        st.IndiciAperto = true;
        st.RsIndici = Recordset::Apri(DbIndici(), TabellaIndici, dbOpenTable);
        if (st.RsIndici.IsOpen() && st.RsIndici.SetIndex(IndicePrimario))
            return true;
        st.IndiciAperto = false;
        sessione().TestoErrore = QStringLiteral("ERRORE IN APERTURA ARCHIVIO 'INDICI'\n")
                                 + QString::number(st.RsIndici.NumeroErrore())
                                 + QStringLiteral(": ") + st.RsIndici.Errore();
        st.RsIndici.Close();
        st.RsIndici = Recordset();
        if (Messaggio(sessione().TestoErrore, QStringLiteral("ERRORE APERTURA TABELLA"),
                      Icona::Esclamazione, Pulsanti::RiprovaAnnulla)
            != Risposta::Riprova)
            return false;
    }
}

void ChiudiDatabase()
{
    Rilascia();
    Cedi();
}

} // namespace sorvane
