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
#include "store/Transazione.h"

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

} // namespace

bool AgganciaTabelle(const Avanzamento &avanzamento)
{
    QSqlDatabase db = DbLavoro();
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
