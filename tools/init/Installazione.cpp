#include "tools/init/Installazione.h"

#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "store/Connessione.h"
#include "store/Motore.h"
#include "store/Schema.h"
#include "store/Transazione.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

#if __has_include("tools/demo/DatiDemo.h")
#include "tools/demo/DatiDemo.h"
#define SORVANE_CON_DEMO 1
#endif

namespace sorvane::init {

namespace {

// What this run has made, undone unless the run ends well. Only files and
// folders that did not exist before are in the lists.
class Fatti
{
public:
    ~Fatti()
    {
        if (m_confermato)
            return;
        ChiudiDatabase();
        for (const QString &f : m_file) {
            QFile::remove(f);
            QFile::remove(f + QStringLiteral("-journal"));
        }
        for (auto c = m_cartelle.crbegin(); c != m_cartelle.crend(); ++c)
            QDir().rmdir(*c);
    }
    void file(const QString &f) { m_file.append(f); }
    void cartella(const QString &c) { m_cartelle.append(c); }
    void conferma() { m_confermato = true; }

private:
    QStringList m_file;
    QStringList m_cartelle;
    bool m_confermato = false;
};

// Makes one database file and its tables. The file is created only when it
// does not exist, so that nothing can be overwritten even by a race.
bool CreaArchivio(const QString &percorso, Archivio a, bool indiciSubito, Fatti &fatti,
                  QString *errore)
{
    {
        QFile f(percorso);
        if (!f.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            *errore = QFileInfo::exists(percorso)
                          ? QStringLiteral("IL DATABASE %1 ESISTE GIA': NON VIENE SOVRASCRITTO")
                                .arg(percorso)
                          : QStringLiteral("IMPOSSIBILE CREARE IL DATABASE %1: %2")
                                .arg(percorso, f.errorString());
            return false;
        }
    }
    fatti.file(percorso);

    const QString nome = QUuid::createUuid().toString();
    bool fatto = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), nome);
        db.setDatabaseName(percorso);
        if (!db.open()) {
            *errore = QStringLiteral("IMPOSSIBILE APRIRE IL DATABASE %1: %2")
                          .arg(percorso, TestoErroreSqlite(db.lastError()));
        } else {
            QSqlQuery(db).exec(QStringLiteral("PRAGMA journal_mode = DELETE"));
            QString dettaglio;
            const QString schema = QStringLiteral("main");
            fatto = CreaTabelle(db, a, schema, &dettaglio)
                    && (!indiciSubito || CreaIndiciSecondari(db, a, schema, &dettaglio));
            if (!fatto)
                *errore = QStringLiteral("ERRORE CREANDO LE TABELLE DI %1:\n%2")
                              .arg(percorso, dettaglio);
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(nome);
    return fatto;
}

void ImpostaPercorsi(const Disposizione &d, const QString &operatore)
{
    Impostazioni &imp = impostazioni();
    imp.PathDati = d.pathDati;
    imp.PathLavoro = d.pathLavoro;
    imp.PathLavoroOperatore = d.pathLavoro + operatore + QDir::separator();
    imp.FileDati = d.fileDati;
    imp.FileLavoro = d.fileLavoro;
    imp.FileVisite = d.fileVisite;
    imp.FileIndici = d.fileIndici;
    sessione().CodiceOperatore = operatore;
}

bool EseguiSuTutti(QSqlDatabase &db, const QString &pragma)
{
    bool ok = true;
    for (Archivio a : TuttiGliArchivi)
        ok = QSqlQuery(db).exec(QStringLiteral("PRAGMA %1.%2").arg(NomeSchema(a), pragma)) && ok;
    return ok;
}

QString Secondi(const QElapsedTimer &orologio)
{
    return QString::number(orologio.elapsed() / 1000.0, 'f', 1);
}

} // namespace

void InstallaModelli(const QString &origine, const QString &destinazione,
                     const std::function<void(const QString &)> &messaggi)
{
    const QDir dir(origine);
    if (origine.isEmpty() || !dir.exists())
        return;
    int copiati = 0;
    const QStringList modelli =
        dir.entryList({QStringLiteral("*.rpt"), QStringLiteral("*.rep")}, QDir::Files);
    for (const QString &m : modelli)
        if (QFile::copy(dir.filePath(m), destinazione + m)) // never over an existing one
            ++copiati;
    messaggi(QStringLiteral("Moduli di stampa installati: %1").arg(copiati));
}

bool ScriviIniUfficio(const Disposizione &d, const QString &operatore, QString *errore)
{
    const auto scrivi = [&](const char *sezione, const char *chiave, const QString &valore) {
        return ScriviIni(d.ini, QString::fromLatin1(sezione), QString::fromLatin1(chiave), valore);
    };
    if (!scrivi("PATH", "FILE", d.pathDati) || !scrivi("PATH", "WORK", d.pathLavoro)
        || !scrivi("REPORT", "MODULI", d.pathModuli) || !scrivi("BASE", "OPERATORE", operatore)) {
        *errore = QStringLiteral("IMPOSSIBILE SCRIVERE IL FILE %1").arg(d.ini);
        return false;
    }
    return true;
}

bool ScriviDemo(const Opzioni &opzioni, QSqlDatabase &db, QString *errore)
{
#ifdef SORVANE_CON_DEMO
    // The files are new and are removed if the run fails, so the bulk load
    // may skip the syncing; the program's own connection syncs in full.
    const bool file = !SuServer(db);
    if (file) {
        EseguiSuTutti(db, QStringLiteral("synchronous = OFF"));
        EseguiSuTutti(db, QStringLiteral("cache_size = -65536"));
    }
    OpzioniDemo demo;
    demo.movimenti = opzioni.movimenti;
    demo.seme = opzioni.seme;
    const bool fatto = GeneraDatiDemo(db, demo, errore);
    if (file)
        EseguiSuTutti(db, QStringLiteral("synchronous = FULL"));
    return fatto;
#else
    Q_UNUSED(opzioni);
    Q_UNUSED(db);
    *errore = QStringLiteral("QUESTA VERSIONE NON CONTIENE I DATI DI PROVA");
    return false;
#endif
}

Disposizione Disponi(const QString &cartella, const QString &operatore)
{
    Disposizione d;
    const QString sep = QDir::separator();
    d.radice = QDir::toNativeSeparators(QDir(cartella).absolutePath());
    d.pathDati = d.radice + sep + QStringLiteral("dati") + sep;
    d.pathLavoro = d.radice + sep + QStringLiteral("lavoro") + sep;
    d.pathModuli = d.radice + sep + QStringLiteral("moduli") + sep;
    d.ini = d.radice + sep + QStringLiteral("sorvane.ini");
    const QString dati = d.pathDati + operatore + sep;
    const QString lavoro = d.pathLavoro + operatore + sep;
    d.fileDati = dati + NomeFile(Archivio::Dati);
    d.fileVisite = dati + NomeFile(Archivio::Visite);
    d.fileLavoro = lavoro + NomeFile(Archivio::Lavoro);
    d.fileIndici = d.pathDati + NomeFile(Archivio::Indici);
    d.cartelle = {d.radice,
                  d.pathDati,
                  dati,
                  d.pathDati + QStringLiteral("save"),
                  d.pathDati + QStringLiteral("save") + sep + operatore,
                  d.pathDati + QStringLiteral("temp"),
                  d.pathLavoro,
                  lavoro,
                  d.pathModuli,
                  d.radice + sep + QStringLiteral("Dati0")};
    return d;
}

bool Installa(const Opzioni &opzioni, const std::function<void(const QString &)> &messaggi,
              QString *errore)
{
    const QString operatore = opzioni.operatore.trimmed().toUpper();
    static const QRegularExpression vietati(QStringLiteral("[\\\\/:*?\"<>|]"));
    if (operatore.isEmpty() || operatore.contains(vietati)) {
        *errore = QStringLiteral("CODICE OPERATORE NON VALIDO: '%1'").arg(opzioni.operatore);
        return false;
    }
    const Disposizione d = Disponi(opzioni.cartella, operatore);

    for (const QString &f : {d.fileDati, d.fileLavoro, d.fileVisite, d.fileIndici}) {
        if (QFileInfo::exists(f)) {
            *errore = QStringLiteral("IL DATABASE %1 ESISTE GIA': NON VIENE SOVRASCRITTO").arg(f);
            return false;
        }
    }
    if (QFileInfo::exists(d.ini)) {
        *errore = QStringLiteral("IL FILE %1 ESISTE GIA': NON VIENE SOVRASCRITTO").arg(d.ini);
        return false;
    }

    Fatti fatti;
    for (const QString &c : d.cartelle) {
        if (QFileInfo(c).isDir())
            continue;
        if (!QDir().mkpath(c)) {
            *errore = QStringLiteral("IMPOSSIBILE CREARE LA CARTELLA %1").arg(c);
            return false;
        }
        fatti.cartella(c);
    }

    QElapsedTimer orologio;
    orologio.start();
    messaggi(QStringLiteral("Creazione dei database in %1").arg(d.radice));
    const struct { Archivio a; QString percorso; } elenco[] = {
        {Archivio::Dati, d.fileDati}, {Archivio::Lavoro, d.fileLavoro},
        {Archivio::Visite, d.fileVisite}, {Archivio::Indici, d.fileIndici}};
    for (const auto &x : elenco)
        if (!CreaArchivio(x.percorso, x.a, !opzioni.demo, fatti, errore))
            return false;

    MessaggiRaccolti raccolti;
    ImpostaPercorsi(d, operatore);
    if (!ConnettiDatabase() || !raccolti.testi.isEmpty()) {
        *errore = raccolti.testi.join(QLatin1Char('\n'));
        return false;
    }
    QSqlDatabase db = Db();
    if (!ScriviRigheIniziali(db, errore))
        return false;

    if (opzioni.demo) {
        messaggi(opzioni.movimenti > 0
                     ? QStringLiteral("Dati di prova: %1 movimenti").arg(opzioni.movimenti)
                     : QStringLiteral("Dati di prova: un ufficio"));
        if (!ScriviDemo(opzioni, db, errore))
            return false;
        messaggi(QStringLiteral("Creazione degli indici (%1 s)").arg(Secondi(orologio)));
        for (Archivio a : TuttiGliArchivi) {
            QString dettaglio;
            if (!CreaIndiciSecondari(db, a, NomeSchema(a), &dettaglio)) {
                *errore = QStringLiteral("ERRORE CREANDO GLI INDICI:\n") + dettaglio;
                return false;
            }
        }
        messaggi(QStringLiteral("Statistiche per le ricerche (%1 s)").arg(Secondi(orologio)));
        QSqlQuery(db).exec(QStringLiteral("ANALYZE"));
    }
    db = QSqlDatabase(); // the connection goes with no handle left on it
    ChiudiDatabase();

    InstallaModelli(opzioni.modelli, d.pathModuli, messaggi);

    if (!ScriviIniUfficio(d, operatore, errore)) {
        fatti.file(d.ini);
        return false;
    }
    fatti.conferma();
    messaggi(QStringLiteral("Cartella dati pronta in %1 secondi.").arg(Secondi(orologio)));
    messaggi(QStringLiteral("Per avviare il programma: SORVANE_INI=\"%1\" sorvane").arg(d.ini));
    return true;
}

} // namespace sorvane::init
