#include "lookup/StampeAnagrafiche.h"

#include "frame/core/Campi.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "reports/Staging.h"
#include "store/Connessione.h"
#include "store/Transazione.h"
#include "store/Motore.h"

#include <QSet>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace sorvane {

namespace {

const char *const MesiBrevi[MesiVisite] = {"GEN", "FEB", "MAR", "APR", "MAG", "GIU",
                                           "LUG", "AGO", "SET", "OTT", "NOV", "DIC"};

// A step of the staging that failed: its words, then the engine's.
bool Fallisce(int passo, const QSqlError &errore)
{
    sessione().CodiceStop = std::int16_t(passo);
    sessione().TestoErrore = TestoErroreSqlite(errore);
    Messaggio(TestoGuasto(TestoPassoStampa(passo), sessione().TestoErrore), QString(),
              Icona::Stop);
    return false;
}

bool Esegui(QSqlQuery &q, const QString &sql, const QVariantList &valori = {})
{
    if (!q.prepare(sql))
        return false;
    for (const QVariant &v : valori)
        q.addBindValue(v);
    return q.exec();
}

QString Testo(const QSqlRecord &r, const char *campo)
{
    return TestoDaCampo(r.value(QLatin1String(campo))).trimmed();
}

// The labels go through the work table: one per name and address, the name
// without its marks, then copied in the grid's order.
bool StagingEtichette(QSqlQuery &q, const CriteriAnagrafiche &criteri,
                      const OrdineAnagrafiche &ordine, QSqlError &errore)
{
    const SqlRicerca sql = SqlRigheClienti(criteri, ordine);
    // Read whole before the first insert: a server connection gives up a
    // result still being fetched when another statement runs on it.
    QSqlQuery righe(Db());
    if (!Esegui(righe, sql.testo, sql.parametri)) {
        errore = righe.lastError();
        return false;
    }
    QSet<QString> viste;
    QString inserisci;
    while (righe.next()) {
        QSqlRecord r = righe.record();
        const QString nome = NomeEtichetta(TestoDaCampo(r.value(QStringLiteral("CliRagsoc"))));
        const QString chiave = nome.toUpper() + QLatin1Char('\n')
                               + Testo(r, "CliIndirizzo").toUpper();
        if (viste.contains(chiave))
            continue;
        viste.insert(chiave);
        r.setValue(QStringLiteral("CliRagsoc"), nome);
        if (inserisci.isEmpty()) {
            QStringList campi;
            for (int i = 0; i < r.count(); ++i)
                campi << r.fieldName(i);
            inserisci = QStringLiteral("INSERT INTO WPrtClienti (%1) VALUES (%2)")
                            .arg(campi.join(QLatin1Char(',')),
                                 QStringList(r.count(), QStringLiteral("?")).join(QLatin1Char(',')));
            if (!q.prepare(inserisci)) {
                errore = q.lastError();
                return false;
            }
        }
        for (int i = 0; i < r.count(); ++i)
            q.bindValue(i, r.value(i));
        if (!q.exec()) {
            errore = q.lastError();
            return false;
        }
    }
    const QString campi = CampiClienti();
    if (!q.exec(QStringLiteral("INSERT INTO PrtClienti (%1) SELECT %1 FROM WPrtClienti").arg(campi)
                + OrdineSql(ordine))) {
        errore = q.lastError();
        return false;
    }
    return true;
}

QVariantMap Testa(const CriteriAnagrafiche &criteri, const QString &testoAzione)
{
    QVariantMap t;
    for (int box = 1; box <= 10; ++box)
        t.insert(QStringLiteral("TCampo%1").arg(box), criteri.testi[box].trimmed());
    t.insert(QStringLiteral("TCampo11"), testoAzione.trimmed());
    t.insert(QStringLiteral("TCampo12"), criteri.chiusi ? QStringLiteral("CHIUSI") : QStringLiteral(" "));
    t.insert(QStringLiteral("TCampo13"), criteri.abbinati ? QStringLiteral("ABBINATI") : QString());
    t.insert(QStringLiteral("TCampo14"), criteri.gruppi ? QStringLiteral("IN GRUPPO") : QString());
    t.insert(QStringLiteral("TCampo15"), criteri.testi[BoxReferenze].trimmed());
    t.insert(QStringLiteral("TCampo16"), criteri.testi[BoxRiconosci].trimmed());
    QStringList mesi;
    for (int m = 0; m < MesiVisite; ++m) {
        if (criteri.mesi[m])
            mesi << QLatin1String(MesiBrevi[m]);
    }
    t.insert(QStringLiteral("TCampo17"), mesi.join(QLatin1Char(' ')));
    return t;
}

// The town's line of an address: CAP, town and, in brackets, its province.
QString Localita(const QSqlRecord &r)
{
    QString s = (Testo(r, "CliCap") + QLatin1Char(' ') + Testo(r, "CliLocalita")).trimmed();
    const QString pv = Testo(r, "CliProvincia");
    if (!pv.isEmpty())
        s += QStringLiteral(" (") + pv + QLatin1Char(')');
    return s;
}

QVariantMap RigaTelefoni(const QSqlRecord &r)
{
    const QVariant codice = r.value(QStringLiteral("CliCodice"));
    return {{QStringLiteral("CCampo1"), codice.isNull() ? QString() : codice.toString()},
            {QStringLiteral("CCampo2"), Testo(r, "CliRagsoc")},
            {QStringLiteral("CCampo3"), Testo(r, "CliRagsocEstesa")},
            {QStringLiteral("CCampo4"), Testo(r, "CliIndirizzo")},
            {QStringLiteral("CCampo5"), Testo(r, "CliCap")},
            {QStringLiteral("CCampo6"), Testo(r, "CliLocalita")},
            {QStringLiteral("CCampo7"), Testo(r, "CliProvincia")},
            {QStringLiteral("CCampo8"), Testo(r, "CliTelefono")},
            {QStringLiteral("CCampo9"), Testo(r, "CliTelefono1")},
            {QStringLiteral("CCampo10"), Testo(r, "CliTelefono2")},
            {QStringLiteral("CCampo11"), Testo(r, "CliTelefono3")},
            {QStringLiteral("CCampo12"), Testo(r, "CliNazione")}};
}

} // namespace

QString NomeEtichetta(const QString &ragsoc)
{
    QString nome = ragsoc;
    while (!nome.isEmpty()
           && (nome.back() == QLatin1Char('*') || nome.back() == QLatin1Char('=')
               || nome.back() == QLatin1Char(' ')))
        nome.chop(1);
    return nome.trimmed();
}

bool PreparaClienti(const QString &modulo, const CriteriAnagrafiche &criteri,
                    const OrdineAnagrafiche &ordine)
{
    Transazione t;
    if (!t.attiva()) {
        sessione().CodiceStop = PassoPulizia;
        sessione().TestoErrore = t.errore();
        Messaggio(TestoGuasto(TestoPassoStampa(PassoPulizia), t.errore()), QString(),
                  Icona::Stop);
        return false;
    }
    QSqlQuery q(Db());
    for (const char *tabella : {"PrtTesta", "PrtClienti", "WPrtClienti"}) {
        if (!q.exec(QStringLiteral("DELETE FROM ") + QLatin1String(tabella)))
            return Fallisce(PassoPulizia, q.lastError());
    }
    QSqlError errore;
    if (modulo == ModuloEtichette) {
        if (!StagingEtichette(q, criteri, ordine, errore))
            return Fallisce(PassoAggiornamento, errore);
    } else {
        const SqlRicerca sql = SqlRigheClienti(criteri, ordine);
        if (!Esegui(q, QStringLiteral("INSERT INTO PrtClienti (%1) ").arg(CampiClienti()) + sql.testo,
                    sql.parametri))
            return Fallisce(PassoAggiornamento, q.lastError());
    }
    if (!t.conferma()) {
        sessione().CodiceStop = PassoAggiornamento;
        sessione().TestoErrore = t.errore();
        Messaggio(TestoGuasto(TestoPassoStampa(PassoAggiornamento), t.errore()), QString(),
                  Icona::Stop);
        return false;
    }
    sessione().CodiceStop = 0;
    return true;
}

DatiReport RigheClienti(const QString &modulo, const CriteriAnagrafiche &criteri,
                        const QString &testoAzione)
{
    DatiReport dati;
    dati.testa = Testa(criteri, testoAzione);
    QSqlQuery q(Db());
    LetturaInAvanti(q);
    // Without a key the staged rows come back in the order they were added.
    if (!q.exec(QStringLiteral("SELECT * FROM PrtClienti ORDER BY rowid")))
        return dati;
    const bool etichette = modulo == ModuloEtichette;
    int etichetta = 0;
    while (q.next()) {
        const QSqlRecord r = q.record();
        if (!etichette) {
            dati.corpo.append(RigaTelefoni(r));
            continue;
        }
        const int posto = etichetta % EtichettePerRiga;
        if (posto == 0)
            dati.corpo.append(QVariantMap());
        QVariantMap &riga = dati.corpo.last();
        const int primo = 1 + 3 * posto;
        riga.insert(QStringLiteral("CCampo%1").arg(primo), Testo(r, "CliRagsoc"));
        riga.insert(QStringLiteral("CCampo%1").arg(primo + 1), Testo(r, "CliIndirizzo"));
        riga.insert(QStringLiteral("CCampo%1").arg(primo + 2), Localita(r));
        ++etichetta;
    }
    return dati;
}

bool StampaClienti(const QString &modulo, const CriteriAnagrafiche &criteri,
                   const OrdineAnagrafiche &ordine, const QString &testoAzione)
{
    if (!PreparaClienti(modulo, criteri, ordine))
        return false;
    return StampaModulo(modulo, RigheClienti(modulo, criteri, testoAzione));
}

} // namespace sorvane
