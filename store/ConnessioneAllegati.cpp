// The attachment check of the working file. On the one connection the
// other files are attached by the connection itself; the catalogue keeps
// the design's record of what the working file points at, and its check is
// how a data folder moved elsewhere is noticed: an entry whose file has
// gone no longer counts, and then all entries are rebuilt at once.

#include "store/Connessione.h"

#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "store/Motore.h"
#include "store/Transazione.h"

#include <QSet>
#include <QSqlError>
#include <QSqlQuery>

namespace sorvane {

namespace {

const QString PrefissoConnessione = QStringLiteral(";DATABASE=");

int AllegatiAttesi()
{
    int attesi = 1; // Indici
    for (const QString &nome : ElencoAllegati())
        if (!nome.isEmpty())
            ++attesi;
    return attesi;
}

// Entries of the catalogue whose file exists; a catalogue that can't be
// read counts none.
int AllegatiValidi(QSqlDatabase &db)
{
    QSqlQuery q(db);
    q.setForwardOnly(true);
    if (!q.exec(QStringLiteral("SELECT Connessione FROM main.%1").arg(TabellaAllegati)))
        return 0;
    int validi = 0;
    while (q.next()) {
        const QString connessione = q.value(0).toString();
        if (connessione.startsWith(PrefissoConnessione, Qt::CaseInsensitive)
            && EsisteFile(connessione.mid(PrefissoConnessione.size())))
            ++validi;
    }
    return validi;
}

class Ricostruzione
{
public:
    explicit Ricostruzione(QSqlDatabase db) : m_togli(db), m_metti(db), m_cerca(db)
    {
        m_togli.prepare(QStringLiteral("DELETE FROM main.%1 WHERE Nome = ?").arg(TabellaAllegati));
        m_metti.prepare(QStringLiteral("INSERT INTO main.%1 (Nome, Connessione, Origine) "
                                       "VALUES (?, ?, ?)")
                            .arg(TabellaAllegati));
    }

    // Replaces the entry of one table. False when its file lacks the table
    // or the catalogue refuses the row.
    bool allega(const QString &nome, Archivio a, const QString &percorso)
    {
        m_togli.addBindValue(nome);
        m_togli.exec(); // a missing entry is no failure
        if (!esisteNellArchivio(nome, a))
            return false;
        m_metti.addBindValue(nome);
        m_metti.addBindValue(PrefissoConnessione + percorso);
        m_metti.addBindValue(nome);
        return m_metti.exec();
    }

private:
    bool esisteNellArchivio(const QString &nome, Archivio a)
    {
        m_cerca.prepare(QStringLiteral("SELECT count(*) FROM \"%1\".sqlite_master "
                                       "WHERE type = 'table' AND name = ? COLLATE NOCASE")
                            .arg(NomeSchema(a)));
        m_cerca.addBindValue(nome);
        return m_cerca.exec() && m_cerca.next() && m_cerca.value(0).toInt() > 0;
    }

    QSqlQuery m_togli;
    QSqlQuery m_metti;
    QSqlQuery m_cerca;
};

bool Ricostruisci(QSqlDatabase &db, const Avanzamento &avanzamento)
{
    const auto mostra = [&](const char *parole) {
        if (avanzamento)
            avanzamento(QString::fromLatin1(parole));
    };
    Sessione &s = sessione();
    const std::array<QString, NumeroAllegati> &elenco = ElencoAllegati();

    Transazione t(db);
    if (!t.attiva()) {
        s.TestoErrore += QLatin1Char('\n') + t.errore();
        return false;
    }
    Ricostruzione r(db);

    // The entries of one file; a blank entry is never touched.
    const auto allegaTutti = [&](Archivio a, const QString &parole) {
        for (int i = 0; i < NumeroAllegati; ++i) {
            if (elenco[i].isEmpty() || ArchivioAllegato(i) != a)
                continue;
            s.TestoErrore = parole + elenco[i];
            if (!r.allega(elenco[i], a, PercorsoArchivio(a)))
                return false;
        }
        return true;
    };

    mostra("Connessione Tabelle Base");
    if (!allegaTutti(Archivio::Dati, QStringLiteral("ERRORE IN CONNESSIONE TABELLA BASE ")))
        return false;

    mostra("Connessione Tabelle delle Visite");
    s.TestoErrore = QStringLiteral("ERRORE IN CONNESSIONE TABELLA DELLE VISITE");
    if (!allegaTutti(Archivio::Visite, QStringLiteral("ERRORE IN CONNESSIONE TABELLA ")))
        return false;

    mostra("Connessione Tabelle degli Indici");
    s.TestoErrore = QStringLiteral("ERRORE IN CONNESSIONE TABELLA ") + TabellaIndici;
    if (!r.allega(TabellaIndici, Archivio::Indici, PercorsoArchivio(Archivio::Indici)))
        return false;

    if (!t.conferma()) {
        s.TestoErrore += QLatin1Char('\n') + t.errore();
        return false;
    }
    return true;
}

// On the server the schemas stand for the attached files: every table of
// the list must be in its schema, and Indici in the shared one. The first
// missing one is told as the files' rebuild would tell it.
bool VerificaSchemi(QSqlDatabase &db, const Avanzamento &avanzamento)
{
    Sessione &s = sessione();
    QSqlQuery q(db);
    q.prepare(QStringLiteral("SELECT to_regclass(?) IS NOT NULL"));
    const auto esiste = [&q](Archivio a, const QString &nome) {
        q.addBindValue(NomeSchemaSql(SchemaServer(a)) + QLatin1Char('.') + NomeSql(nome));
        const bool si = q.exec() && q.next() && q.value(0).toBool();
        q.finish();
        return si;
    };
    const std::array<QString, NumeroAllegati> &elenco = ElencoAllegati();
    if (avanzamento)
        avanzamento(QStringLiteral("Connessione Tabelle Base"));
    for (int i = 0; i < NumeroAllegati; ++i) {
        if (elenco[i].isEmpty())
            continue;
        const Archivio a = ArchivioAllegato(i);
        s.TestoErrore = (a == Archivio::Dati ? QStringLiteral("ERRORE IN CONNESSIONE TABELLA BASE ")
                                             : QStringLiteral("ERRORE IN CONNESSIONE TABELLA "))
                        + elenco[i];
        if (!esiste(a, elenco[i]))
            return false;
    }
    s.TestoErrore = QStringLiteral("ERRORE IN CONNESSIONE TABELLA ") + TabellaIndici;
    return esiste(Archivio::Indici, TabellaIndici);
}

// The data schema's indexes that an earlier version did not make. Only the
// missing ones are made: making one waits for every workstation's writing.
void IndiciMancantiServer(QSqlDatabase &db)
{
    const QString schema = SchemaServer(Archivio::Dati);
    QSqlQuery q(db);
    q.prepare(QStringLiteral("SELECT indexname FROM pg_indexes WHERE schemaname = ?"));
    q.addBindValue(schema);
    if (!q.exec())
        return;
    QSet<QString> presenti;
    while (q.next())
        presenti.insert(q.value(0).toString());
    q.finish();
    for (const Tabella *t : TabelleDi(Archivio::Dati))
        for (const Indice &i : t->indici)
            if (!presenti.contains(NomeIndiceSql(*t, i).toLower()))
                q.exec(SqlCreaIndice(*t, i, schema, Motore::Postgres));
}

} // namespace

bool AgganciaTabelle(const Avanzamento &avanzamento)
{
    QSqlDatabase db = DbLavoro();
    if (SuServer(db)) {
        QString ignorato;
        CreaSchema(db, Archivio::Lavoro, SchemaServer(Archivio::Lavoro), &ignorato);
        if (VerificaSchemi(db, avanzamento)) {
            IndiciMancantiServer(db);
            return true;
        }
        Messaggio(sessione().TestoErrore,
                  NomeProgrammaMaiuscolo() + QStringLiteral(" -ERRORE CONNESIONE TABELLE"),
                  Icona::Stop);
        return false;
    }
    // The working file is the operator's own: tables missing from it, the
    // catalogue first of all, are made here.
    QString ignorato;
    CreaSchema(db, Archivio::Lavoro, QStringLiteral("main"), &ignorato);

    // An office made by an earlier version gets the indexes added since;
    // those it has are left alone.
    auto indici = [&db] {
        QString nessuno;
        CreaIndiciSecondari(db, Archivio::Dati, NomeSchema(Archivio::Dati), &nessuno);
        return true;
    };
    if (AllegatiValidi(db) == AllegatiAttesi())
        return indici();
    if (Ricostruisci(db, avanzamento))
        return indici();
    Messaggio(sessione().TestoErrore,
              NomeProgrammaMaiuscolo() + QStringLiteral(" -ERRORE CONNESIONE TABELLE"),
              Icona::Stop);
    return false;
}

} // namespace sorvane
