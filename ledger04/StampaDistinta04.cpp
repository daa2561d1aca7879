#include "ledger04/StampaDistinta04.h"

#include "distinte/StampaDistinta.h"
#include "frame/core/Campi.h"
#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "ledger04/Distinte04.h"
#include "ledger04/Squadre.h"
#include "reports/Gstampe.h"
#include "reports/Staging.h"
#include "store/Connessione.h"
#include "store/Transazione.h"
#include "store/Motore.h"

#include <QDate>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace sorvane {

namespace {

const QString F2 = QStringLiteral("#,###,###,##0.00");
const QString F0 = F2.left(13);
const QString Blank = QStringLiteral(" ");

std::int32_t PrimoGiornoEuro()
{
    static const std::int32_t giorno = GiornoDaData(QDate(2002, 1, 1));
    return giorno;
}

QString Nome(const char *prefisso, int n) { return QLatin1String(prefisso) + QString::number(n); }

bool Esegui(QSqlQuery &q, const QString &sql, const QVariantList &valori, QString *errore)
{
    LetturaInAvanti(q);
    bool ok = q.prepare(sql);
    for (int i = 0; ok && i < valori.size(); ++i)
        q.addBindValue(valori.at(i));
    if (ok && q.exec())
        return true;
    *errore = TestoErroreSqlite(q.lastError());
    return false;
}

// One ledger row as the statement reads it, its columns looked up once.
class LettoreRighe
{
public:
    explicit LettoreRighe(const QSqlRecord &r)
        : m_codice(r.indexOf(QStringLiteral("dstCodice"))),
          m_data(r.indexOf(QStringLiteral("dstData"))),
          m_ragsoc(r.indexOf(QStringLiteral("CliRagsoc"))),
          m_prodotto(r.indexOf(QStringLiteral("dstCodP"))),
          m_causale(r.indexOf(QStringLiteral("Descrizione"))),
          m_moneta(r.indexOf(QStringLiteral("dstMoneta"))),
          m_importo(r.indexOf(QStringLiteral("dstImporto"))),
          m_segno(r.indexOf(QStringLiteral("Segno")))
    {
    }

    // The row's amount through the walk; its sign is "+" when blank.
    Importi04::Importo Importo(const QSqlQuery &q, Importi04 &importi, QString *segno) const
    {
        *segno = TestoDaCampo(q.value(m_segno)).trimmed().left(1);
        if (segno->isEmpty())
            *segno = QStringLiteral("+");
        return importi.Aggiungi(Giorno(q), TestoDaCampo(q.value(m_moneta)),
                                CDbl(DataDaCampo(q.value(m_importo))),
                                *segno == QLatin1String("+"));
    }

    QVariantMap Corpo(const QSqlQuery &q, Importi04 &importi, int progressivo) const
    {
        QString segno;
        const Importi04::Importo importo = Importo(q, importi, &segno);
        const QString testo = Format(importo.valore, importo.euro ? F2 : F0);
        const QString prodotto = TestoDaCampo(q.value(m_prodotto));
        const bool piu = segno == QLatin1String("+");
        return {
            {QStringLiteral("CNumero3"), progressivo},
            {QStringLiteral("CNumero1"), CDbl(DataDaCampo(q.value(m_codice)))},
            {QStringLiteral("CCampo1"), Format(double(Giorno(q)), QStringLiteral("dd/mm/yy"))},
            {QStringLiteral("CCampo2"), TestoDaCampo(q.value(m_ragsoc))},
            {QStringLiteral("CCampo3"), prodotto.left(50)},
            {QStringLiteral("CCampo4"), prodotto.mid(50)},
            {QStringLiteral("CCampo5"), TestoDaCampo(q.value(m_causale))},
            {QStringLiteral("CCampo6"), TestoDaCampo(q.value(m_moneta))},
            {QStringLiteral("CCampo7"), segno},
            {QStringLiteral("CCampo11"), piu ? testo : QString()},
            {QStringLiteral("CCampo12"), piu ? QString() : testo},
            {QStringLiteral("CNumero2"), importo.valore},
            {QStringLiteral("CCampo8"), importo.euro ? QStringLiteral("1") : QStringLiteral("0")},
        };
    }

private:
    std::int32_t Giorno(const QSqlQuery &q) const
    {
        return static_cast<std::int32_t>(CDbl(DataDaCampo(q.value(m_data))));
    }

    int m_codice, m_data, m_ragsoc, m_prodotto, m_causale, m_moneta, m_importo, m_segno;
};

// Walks a query's rows through the amount rules, adding only to the sums.
bool Somma(const QString &sql, const QVariantList &valori, Importi04 &importi, QString *errore)
{
    QSqlQuery q(DbDati());
    if (!Esegui(q, sql, valori, errore))
        return false;
    const LettoreRighe lettore(q.record());
    QString segno;
    while (q.next())
        lettore.Importo(q, importi, &segno);
    if (q.lastError().isValid()) {
        *errore = TestoErroreSqlite(q.lastError());
        return false;
    }
    return true;
}

// The six numbers of one set of sums: all "+" in lire, all others in
// lire, their difference; the same in euro.
struct Numeri
{
    double v[6];
};

Numeri Calcola(const Totali04 &t)
{
    const double r = impostazioni().CambioLire;
    Numeri n{};
    n.v[0] = t.piuEuro * r + t.piuLire;
    n.v[1] = t.menoEuro * r + t.menoLire;
    n.v[2] = n.v[0] - n.v[1];
    n.v[3] = t.piuLire / r + t.piuEuro;
    n.v[4] = t.menoLire / r + t.menoEuro;
    n.v[5] = n.v[3] - n.v[4];
    return n;
}

// PCampo(base + 1) to PCampo(base + 8) and Pnumero(base + 1) to
// Pnumero(base + 6) of one set of sums.
Numeri ScriviTotali(QVariantMap &piede, int base, const Totali04 &t)
{
    const double r = impostazioni().CambioLire;
    const QString testi[] = {
        Format(t.piuLire, F0),  Format(t.piuLire / r, F2),  Format(t.menoLire, F0),
        Format(t.menoLire / r, F2), Format(t.piuEuro, F2),  Format(t.piuEuro * r, F0),
        Format(t.menoEuro, F2), Format(t.menoEuro * r, F0),
    };
    for (int i = 0; i < 8; ++i)
        piede.insert(Nome("PCampo", base + 1 + i), testi[i]);
    const Numeri n = Calcola(t);
    for (int i = 0; i < 6; ++i)
        piede.insert(Nome("Pnumero", base + 1 + i), n.v[i]);
    return n;
}

QVariantMap RigaTesta(const SchermoEstratto04 &s)
{
    const auto seData = [](const QString &testo) { return IsDate(testo) ? testo : Blank; };
    return {
        {QStringLiteral("TCampo1"), seData(s.dataDal)},
        {QStringLiteral("TCampo2"), seData(s.dataAl)},
        {QStringLiteral("TCampo3"), s.ditta},
        {QStringLiteral("TCampo9"), s.codiceCliente},
        {QStringLiteral("TCampo10"), s.nomeCliente},
    };
}

bool RigaPiede(const SchermoEstratto04 &s, const Totali04 &cliente, QVariantMap &piede,
               QString *errore)
{
    const Numeri propri = ScriviTotali(piede, 0, cliente);
    const QString squadra = s.squadra.trimmed();
    if (squadra.isEmpty()) {
        piede.insert(QStringLiteral("PCampo20"), QString());
        piede.insert(QStringLiteral("PCampo19"), QString());
        for (int n = 21; n <= 26; ++n)
            piede.insert(Nome("Pnumero", n), 0.0);
        return true;
    }
    const std::optional<Gruppo04> gruppo = SommaGruppo(s, errore);
    if (!gruppo)
        return false;
    piede.insert(QStringLiteral("PCampo20"), squadra);
    piede.insert(QStringLiteral("PCampo19"), gruppo->elenco);
    const Numeri altri = ScriviTotali(piede, 10, gruppo->totali);
    // The grand totals; their differences are the grand totals' own.
    double totale[6];
    for (int i : {0, 1, 3, 4})
        totale[i] = propri.v[i] + altri.v[i];
    totale[2] = totale[0] - totale[1];
    totale[5] = totale[3] - totale[4];
    for (int i = 0; i < 6; ++i)
        piede.insert(Nome("Pnumero", 21 + i), totale[i]);
    return true;
}

// What the reading ended in: rows, nothing to print, or a failure.
struct Lettura
{
    std::optional<DatiReport> righe;
    QString errore;
};

Lettura Leggi(const SchermoEstratto04 &s)
{
    Lettura l;
    // Before the first extraction the list shows nothing.
    if (s.estrazione.vuota())
        return l;
    QSqlQuery q(DbDati());
    if (!Esegui(q, QueryStampa04(s.estrazione), s.estrazione.parametri, &l.errore))
        return l;
    if (!q.next())
        return l;
    DatiReport d;
    Importi04 importi;
    const LettoreRighe lettore(q.record());
    int progressivo = 0;
    do {
        d.corpo.append(lettore.Corpo(q, importi, ++progressivo));
    } while (q.next());
    if (q.lastError().isValid()) {
        l.errore = TestoErroreSqlite(q.lastError());
        return l;
    }
    d.testa = RigaTesta(s);
    if (!ScriviDitta(s.ditta, d.testa, &l.errore) || !RigaPiede(s, importi.totali(), d.piede, &l.errore))
        return l;
    l.righe = std::move(d);
    return l;
}

} // namespace

std::int32_t SchermoEstratto04::cliente() const
{
    // The code field read as the team label is: a whole number, else 0.
    return NumeroSquadra(codiceCliente);
}

Importi04::Importo Importi04::Aggiungi(std::int32_t giorno, const QString &moneta, double importo,
                                       bool piu)
{
    const Impostazioni &imp = impostazioni();
    const QString codice = moneta.trimmed();
    Importo r;
    if (giorno < PrimoGiornoEuro()) {
        m_lire = codice == imp.CodEur ? importo * imp.CambioLire : importo;
        m_lire = Arrotonda(m_lire, 0);
        r.valore = m_lire;
        (piu ? m_totali.piuLire : m_totali.menoLire) += r.valore;
    } else {
        r.euro = true;
        r.valore = Arrotonda(codice == imp.CodLit ? m_lire / imp.CambioLire : importo, 2);
        (piu ? m_totali.piuEuro : m_totali.menoEuro) += r.valore;
    }
    return r;
}

std::optional<Gruppo04> SommaGruppo(const SchermoEstratto04 &s, QString *errore)
{
    QString scarto;
    QString *e = errore ? errore : &scarto;
    Gruppo04 g;
    const std::int32_t squadra = NumeroSquadra(s.squadra);
    if (squadra == 0)
        return g;
    const std::int32_t cliente = s.cliente();
    g.elenco = QStringLiteral("( ") + QString::number(cliente);

    // The members are read whole before their rows: a statement walked
    // while another runs on the same connection may lose its rows.
    const QueryMembri membri = AltriMembri(squadra, cliente);
    QList<std::int32_t> codici;
    {
        QSqlQuery q(DbDati());
        if (!Esegui(q, membri.sql, membri.parametri, e))
            return std::nullopt;
        while (q.next())
            codici.append(static_cast<std::int32_t>(CDbl(DataDaCampo(q.value(0)))));
        if (q.lastError().isValid()) {
            *e = TestoErroreSqlite(q.lastError());
            return std::nullopt;
        }
    }
    // The member's rows of the list's period and of the firm in the filter.
    CondizioneDistinte condizione;
    condizione.where = QStringLiteral(" WHERE dstData BETWEEN ? AND ? AND dstCliente = ?");
    const QString ditta = s.ditta.trimmed();
    if (!ditta.isEmpty())
        condizione.where += QStringLiteral(" AND dstDitta = ?");
    const QString sql = QueryStampa04(condizione);
    // One walk over every member: a lire row of 2002 may take the value of
    // the previous member's last row of the lire era.
    Importi04 importi;
    for (const std::int32_t membro : std::as_const(codici)) {
        g.elenco += QStringLiteral(", ") + QString::number(membro);
        QVariantList valori{s.estrazione.parametri.value(0), s.estrazione.parametri.value(1),
                            membro};
        if (!ditta.isEmpty())
            valori.append(ditta);
        if (!Somma(sql, valori, importi, e))
            return std::nullopt;
    }
    g.elenco += QStringLiteral(" )");
    g.totali = importi.totali();
    return g;
}

std::optional<DatiReport> RigheEstratto04(const SchermoEstratto04 &s, QString *errore)
{
    Lettura l = Leggi(s);
    if (errore)
        *errore = l.errore;
    return std::move(l.righe);
}

QString ModuloEstratto04(const SchermoEstratto04 &s)
{
    if (s.cliente() == 0)
        return ModuloDiStampa(QStringLiteral("DistXdit"));
    QString file = ModuloDiStampa(QStringLiteral("DistC04"));
    if (!s.squadra.trimmed().isEmpty()) {
        const int punto = file.toUpper().indexOf(QLatin1String(".RPT"));
        if (punto >= 0)
            file.truncate(punto);
        file += QStringLiteral("1.rpt");
    }
    return file;
}

bool StampaDistinta04(const SchermoEstratto04 &s)
{
    const Lettura l = Leggi(s);
    if (!l.righe) {
        if (l.errore.isEmpty())
            return false;
        // The rows, the firm and the team are read while the staging is
        // written: a failure there is that step's.
        sessione().CodiceStop = PassoAggiornamento;
        sessione().TestoErrore = l.errore;
        Messaggio(TestoPassoStampa(PassoAggiornamento), QString(), Icona::Stop);
        return false;
    }
    if (!PreparaTemporanei(*l.righe))
        return false;
    ConsegnaStampa &c = consegnaStampa();
    c.ModuloCorrente = ModuloEstratto04(s);
    c.FormulaCorrente.clear();
    Gstampe g;
    g.Load();
    sessione().CodiceStop = 0;
    return true;
}

} // namespace sorvane
