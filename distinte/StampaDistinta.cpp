#include "distinte/StampaDistinta.h"

#include "frame/core/Campi.h"
#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "reports/Staging.h"
#include "store/Connessione.h"
#include "store/Transazione.h"
#include "store/Motore.h"

#include <QHash>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace sorvane {

namespace {

const QString Blank = QStringLiteral(" ");

QString Campo(int n) { return QStringLiteral("CCampo") + QString::number(n); }
QString Numero(int n) { return QStringLiteral("CNumero") + QString::number(n); }
QString Testa(int n) { return QStringLiteral("TCampo") + QString::number(n); }

// A slice as the slip prints it: an open code bare, a confirmed one with a
// star after it, so that the firm sees at a glance what is still pending.
QString FettaStampata(const QVariant &valore)
{
    QString testo = TestoDaCampo(valore);
    if (HaMarca(testo))
        testo = TagliaMarca(testo);
    else if (!TogliSpazi(testo).isEmpty())
        testo += QLatin1Char('*');
    return TogliSpazi(testo);
}

// Where the query's columns stand, looked up once for the whole run.
class Colonne
{
public:
    explicit Colonne(const QSqlRecord &r) : m_record(r) {}

    int operator()(const QString &nome)
    {
        auto it = m_posti.constFind(nome);
        if (it == m_posti.cend())
            it = m_posti.insert(nome, m_record.indexOf(nome));
        return *it;
    }

private:
    QSqlRecord m_record;
    QHash<QString, int> m_posti;
};

struct Totali
{
    double positivo = 0;
    double negativo = 0;
};

QVariantMap RigaCorpo(const QSqlQuery &q, Colonne &posto, Totali &totali)
{
    const auto valore = [&](const QString &nome) { return q.value(posto(nome)); };
    const auto testo = [&](const char *nome) {
        return TestoDaCampo(valore(QString::fromLatin1(nome)));
    };
    const auto numero = [&](const char *nome) {
        return CDbl(DataDaCampo(valore(QString::fromLatin1(nome))));
    };
    QVariantMap r;
    for (int i = 0; i < FetteProdotto; ++i) {
        const QString fetta = QStringLiteral("dstCodP") + QString::number(i);
        r.insert(Campo(3 + i), FettaStampata(valore(fetta)));
    }

    if (testo("dstPrg") != RigaPrincipale) {
        // A switch's second row: only its codes, under the row they belong to.
        for (int n : {1, 2, 3})
            r.insert(Numero(n), 0.0);
        for (int n : {1, 2, 8, 9, 10, 12, 13, 14})
            r.insert(Campo(n), Blank);
        return r;
    }
    const double importo = numero("dstImporto");
    r.insert(Numero(1), numero("dstCodice"));
    r.insert(Numero(2), importo);
    r.insert(Numero(3), numero("dstSpeseUT"));
    r.insert(Campo(1), Format(numero("dstData"), QStringLiteral("dd/mm/yy")));
    r.insert(Campo(2), testo("CliRagsoc"));
    r.insert(Campo(8), testo("Descrizione"));
    r.insert(Campo(9), testo("dstAssegno"));
    r.insert(Campo(10), testo("dstBanca"));
    r.insert(Campo(12), testo("dstMoneta"));
    const QString segno = testo("Segno");
    r.insert(Campo(13), segno);
    r.insert(Campo(14), Blank);
    // A blank sign counts as "+", as the reasons' table shows it.
    if (segno == QLatin1String("-"))
        totali.negativo += importo;
    else
        totali.positivo += importo;
    return r;
}

// What the reading of the print's rows ended in.
struct Lettura
{
    std::optional<DatiReport> righe;
    QString errore;
    bool dittaFallita = false; // the query ran, the firm's lookup did not
};

QVariantMap RigaTesta(const FiltroDistinte &filtro)
{
    const auto seData = [](const QString &testo) { return IsDate(testo) ? testo : Blank; };
    return {
        {Testa(1), seData(filtro.dal)},
        {Testa(2), seData(filtro.al)},
        {Testa(3), filtro.ditta},
        {Testa(9), filtro.codiceCliente},
        {Testa(10), filtro.nomeCliente},
    };
}

Lettura LeggiStampa(const CondizioneDistinte &ultima, const FiltroDistinte &filtro)
{
    Lettura l;
    // Before the first extraction the list shows nothing, so there is
    // nothing to print either.
    if (ultima.vuota())
        return l;
    QSqlQuery q(DbDati());
    LetturaInAvanti(q);
    bool ok = q.prepare(QueryStampaDistinte(ultima));
    for (int i = 0; ok && i < ultima.parametri.size(); ++i)
        q.addBindValue(ultima.parametri.at(i));
    if (!ok || !q.exec()) {
        l.errore = TestoErroreSqlite(q.lastError());
        return l;
    }
    if (!q.next())
        return l;

    DatiReport d;
    Totali totali;
    Colonne colonne(q.record());
    do {
        d.corpo.append(RigaCorpo(q, colonne, totali));
    } while (q.next());
    if (q.lastError().isValid()) {
        l.errore = TestoErroreSqlite(q.lastError());
        return l;
    }

    d.testa = RigaTesta(filtro);
    if (!ScriviDitta(filtro.ditta, d.testa, &l.errore)) {
        l.dittaFallita = true;
        return l;
    }
    d.testa.insert(QStringLiteral("TNumero1"), totali.positivo - totali.negativo);
    l.righe = std::move(d);
    return l;
}

} // namespace

bool ScriviDitta(const QString &ditta, QVariantMap &testa, QString *errore)
{
    static const char *const campi[] = {"SocNome", "SocIndirizzo", "SocCap", "SocLocalita",
                                        "SocProvincia"};
    for (int i = 0; i < 5; ++i)
        testa.insert(Testa(4 + i), Blank);
    const QString nome = TogliSpazi(ditta);
    if (nome.isEmpty())
        return true;
    // The name goes bound: firms' names hold apostrophes and quotes.
    QSqlQuery q(DbDati());
    LetturaInAvanti(q);
    bool ok = q.prepare(QStringLiteral("SELECT * FROM Societa WHERE SocNome = ?"));
    if (ok) {
        q.addBindValue(nome);
        ok = q.exec();
    }
    if (!ok) {
        *errore = TestoErroreSqlite(q.lastError());
        return false;
    }
    if (q.next()) {
        for (int i = 0; i < 5; ++i)
            testa.insert(Testa(4 + i), TestoDaCampo(q.value(QString::fromLatin1(campi[i]))));
    }
    return true;
}

std::optional<DatiReport> RigheStampaDistinta(const CondizioneDistinte &ultima,
                                              const FiltroDistinte &filtro, QString *errore)
{
    Lettura l = LeggiStampa(ultima, filtro);
    if (errore)
        *errore = l.errore;
    return std::move(l.righe);
}

bool StampaDistinta(const CondizioneDistinte &ultima, const FiltroDistinte &filtro)
{
    const Lettura l = LeggiStampa(ultima, filtro);
    if (!l.righe) {
        if (l.errore.isEmpty())
            return false;
        // The firm is read while the rows are being staged: its failure is
        // that step's. A query that cannot run is told in the engine's words.
        sessione().TestoErrore = l.errore;
        if (l.dittaFallita) {
            sessione().CodiceStop = PassoAggiornamento;
            Messaggio(TestoPassoStampa(PassoAggiornamento), QString(), Icona::Stop);
        } else {
            Messaggio(QStringLiteral("ERRORE IN LETTURA DEI MOVIMENTI DA STAMPARE\n") + l.errore,
                      QString(), Icona::Stop);
        }
        return false;
    }
    const QString chiave = filtro.cliente() == 0 ? QStringLiteral("DistXdit")
                                                 : QStringLiteral("DistXcli");
    return StampaModulo(chiave, *l.righe);
}

} // namespace sorvane
