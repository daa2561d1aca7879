#include "tools/importa/Comando.h"

#include "frame/core/Ini.h"
#include "store/Transazione.h"
#include "tools/importa/FileAccess.h"
#include "tools/init/Installazione.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

#include <memory>

namespace sorvane::importa {

namespace {

const QString OperatorePredefinito = QStringLiteral("UFFICIO");

QString Legacy(Archivio a) { return QFileInfo(NomeFile(a)).completeBaseName() + QStringLiteral(".mdb"); }

// A file of the folder by name, without regard to case.
QString Trova(const QString &cartella, const QString &nome)
{
    if (cartella.isEmpty())
        return {};
    const QDir dir(cartella);
    for (const QString &f : dir.entryList(QDir::Files))
        if (f.compare(nome, Qt::CaseInsensitive) == 0)
            return dir.filePath(f);
    return {};
}

QString Sottocartella(const QString &cartella, const QString &nome)
{
    const QDir dir(cartella);
    for (const QString &d : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        if (d.compare(nome, Qt::CaseInsensitive) == 0)
            return dir.filePath(d);
    return {};
}

// Everything under a folder, to tell afterwards what a run has added.
QSet<QString> Contenuto(const QString &cartella)
{
    QSet<QString> voci;
    QDirIterator it(cartella, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        voci.insert(it.next());
    return voci;
}

// Undoes a new data folder unless the run ends well: removes what was not
// there before, files first, then folders from the deepest.
class Novita
{
public:
    explicit Novita(const QString &cartella)
        : m_cartella(QDir(cartella).absolutePath()), m_esisteva(QFileInfo(cartella).isDir()),
          m_prima(m_esisteva ? Contenuto(m_cartella) : QSet<QString>())
    {
    }
    ~Novita()
    {
        if (m_confermato)
            return;
        QStringList cartelle;
        for (const QString &v : Contenuto(m_cartella)) {
            if (m_prima.contains(v))
                continue;
            if (QFileInfo(v).isDir())
                cartelle << v;
            else
                QFile::remove(v);
        }
        std::sort(cartelle.begin(), cartelle.end(), std::greater<>());
        for (const QString &c : cartelle)
            QDir().rmdir(c);
        if (!m_esisteva)
            QDir().rmdir(m_cartella);
    }
    Novita(const Novita &) = delete;
    Novita &operator=(const Novita &) = delete;
    void conferma() { m_confermato = true; }

private:
    QString m_cartella;
    bool m_esisteva;
    QSet<QString> m_prima;
    bool m_confermato = false;
};

// The four files of a data folder on a connection of their own: the
// working file as main, the others attached under their schema names.
class Collegamento
{
public:
    Collegamento() : m_nome(QUuid::createUuid().toString()) {}
    ~Collegamento()
    {
        m_db.close();
        m_db = QSqlDatabase();
        QSqlDatabase::removeDatabase(m_nome);
    }
    Collegamento(const Collegamento &) = delete;
    Collegamento &operator=(const Collegamento &) = delete;

    bool apri(const QHash<Archivio, QString> &file, QString *errore)
    {
        for (Archivio a : TuttiGliArchivi) {
            if (!QFileInfo(file.value(a)).isFile()) {
                *errore = QStringLiteral("DATABASE %1 INESISTENTE").arg(file.value(a));
                return false;
            }
        }
        m_db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_nome);
        m_db.setDatabaseName(file.value(Archivio::Lavoro));
        m_db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
        if (!m_db.open()) {
            *errore = TestoErroreSqlite(m_db.lastError());
            return false;
        }
        QSqlQuery q(m_db);
        for (Archivio a : TuttiGliArchivi) {
            if (a == Archivio::Lavoro)
                continue;
            q.prepare(QStringLiteral("ATTACH DATABASE ? AS %1").arg(NomeSchema(a)));
            q.addBindValue(file.value(a));
            if (!q.exec()) {
                *errore = QStringLiteral("%1: %2").arg(file.value(a), TestoErroreSqlite(q.lastError()));
                return false;
            }
        }
        // Only a rollback journal makes a transaction across the files atomic.
        for (Archivio a : TuttiGliArchivi) {
            q.exec(QStringLiteral("PRAGMA %1.journal_mode = DELETE").arg(NomeSchema(a)));
            q.exec(QStringLiteral("PRAGMA %1.synchronous = FULL").arg(NomeSchema(a)));
        }
        return true;
    }
    QSqlDatabase &db() { return m_db; }

private:
    QString m_nome;
    QSqlDatabase m_db;
};

QHash<Archivio, QString> FileDellaCartella(const QString &ini, const QString &operatore)
{
    const QString dati = ConSeparatore(LeggiIni(ini, QStringLiteral("PATH"), QStringLiteral("FILE")));
    const QString lavoro = ConSeparatore(LeggiIni(ini, QStringLiteral("PATH"), QStringLiteral("WORK")));
    const QString sep = Separatore();
    return {{Archivio::Dati, dati + operatore + sep + NomeFile(Archivio::Dati)},
            {Archivio::Visite, dati + operatore + sep + NomeFile(Archivio::Visite)},
            {Archivio::Lavoro, lavoro + operatore + sep + NomeFile(Archivio::Lavoro)},
            {Archivio::Indici, dati + NomeFile(Archivio::Indici)}};
}

void Riassumi(const QList<Voce> &piano, const Resoconto &resoconto)
{
    const Sorgente *ultima = nullptr;
    for (const Voce &v : piano) {
        if (v.sorgente != ultima) {
            ultima = v.sorgente;
            resoconto(QStringLiteral("File %1:").arg(v.sorgente->nome()));
        }
        resoconto(DaCopiare(v) ? QStringLiteral("  %1 -> %2").arg(v.tabella.nome, NomeFile(v.destinazione->archivio))
                               : QStringLiteral("  %1: non copiata, %2").arg(v.tabella.nome, v.motivo));
    }
}

} // namespace

QStringList TrovaFileAccess(const QString &cartella, QString *operatore)
{
    if (operatore->isEmpty()) {
        QStringList candidati;
        for (const QString &d : QDir(cartella).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            if (!Trova(QDir(cartella).filePath(d), Legacy(Archivio::Dati)).isEmpty())
                candidati << d;
        if (candidati.size() == 1)
            *operatore = candidati.first();
    }
    const QString propria = operatore->isEmpty() ? QString() : Sottocartella(cartella, *operatore);
    QStringList file;
    for (Archivio a : {Archivio::Dati, Archivio::Lavoro, Archivio::Visite, Archivio::Indici}) {
        const QString primo = a == Archivio::Indici ? cartella : propria;
        const QString secondo = a == Archivio::Indici ? propria : cartella;
        QString f = Trova(primo, Legacy(a));
        if (f.isEmpty())
            f = Trova(secondo, Legacy(a));
        if (!f.isEmpty())
            file << f;
    }
    return file;
}

bool ImportaInCartella(const QList<const Sorgente *> &sorgenti, const Opzioni &opzioni,
                       const Resoconto &resoconto, QString *errore)
{
    const QList<Voce> piano = Pianifica(sorgenti);
    Riassumi(piano, resoconto);
    if (std::none_of(piano.cbegin(), piano.cend(), DaCopiare)) {
        *errore = QStringLiteral("NESSUNA TABELLA DEL PROGRAMMA NEI FILE INDICATI");
        return false;
    }

    const QString ini = QDir(opzioni.destinazione).filePath(QStringLiteral("sorvane.ini"));
    const bool nuova = !QFileInfo::exists(ini);
    QString operatore = opzioni.operatore.trimmed().toUpper();
    if (operatore.isEmpty() && !nuova)
        operatore = LeggiIni(ini, QStringLiteral("BASE"), QStringLiteral("OPERATORE")).toUpper();
    if (operatore.isEmpty())
        operatore = OperatorePredefinito;

    Novita novita(opzioni.destinazione);
    if (nuova) {
        init::Opzioni o;
        o.cartella = opzioni.destinazione;
        o.operatore = operatore;
        o.modelli = opzioni.modelli;
        resoconto(QStringLiteral("Nuova cartella dati %1 per l'operatore %2").arg(opzioni.destinazione, operatore));
        if (!init::Installa(o, [](const QString &) {}, errore))
            return false;
    }
    bool fatto = false;
    {
        Collegamento c;
        fatto = c.apri(FileDellaCartella(ini, operatore), errore)
                && Scrivi(c.db(), piano, opzioni.sostituisci || nuova, resoconto, errore);
    }
    if (fatto)
        novita.conferma();
    return fatto;
}

bool Esegui(const Opzioni &opzioni, const Resoconto &resoconto, QString *errore)
{
    const QFileInfo info(opzioni.sorgente);
    Opzioni o = opzioni;
    QStringList percorsi;
    if (info.isDir()) {
        // The source's operator folder names a new data folder's operator;
        // an existing one keeps its own unless told otherwise.
        QString trovato = opzioni.operatore;
        percorsi = TrovaFileAccess(opzioni.sorgente, &trovato);
        if (!QFileInfo::exists(QDir(opzioni.destinazione).filePath(QStringLiteral("sorvane.ini"))))
            o.operatore = trovato;
    }
    else if (info.isFile())
        percorsi << opzioni.sorgente;
    if (percorsi.isEmpty()) {
        *errore = QStringLiteral("NESSUN FILE ACCESS IN %1").arg(opzioni.sorgente);
        return false;
    }
    std::vector<std::unique_ptr<FileAccess>> file;
    QList<const Sorgente *> sorgenti;
    for (const QString &p : percorsi) {
        file.push_back(std::make_unique<FileAccess>(p));
        if (!file.back()->aperto()) {
            *errore = QStringLiteral("IL FILE %1 NON E' UN DATABASE ACCESS LEGGIBILE").arg(p);
            return false;
        }
        sorgenti << file.back().get();
    }
    return ImportaInCartella(sorgenti, o, resoconto, errore);
}

} // namespace sorvane::importa
