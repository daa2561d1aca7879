#include "ledger04/Interessi.h"

#include "frame/core/Campi.h"
#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "ledger04/Squadre.h"
#include "ledger04/Tir.h"
#include "reports/Gstampe.h"
#include "reports/Staging.h"
#include "store/Cambi.h"
#include "store/Connessione.h"
#include "store/Recordset.h"
#include "store/Transazione.h"
#include "store/Motore.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <array>
#include <cmath>
#include <vector>

namespace sorvane {

namespace {

const QString F0 = QStringLiteral("#,###,###,##0");
const QString F2 = QStringLiteral("#,###,###,##0.00");
const QString Tasso = QStringLiteral("#0.000");
const QString DataStampa = QStringLiteral("dd/mm/yyyy");
const QString Blank = QStringLiteral(" ");

// The body's field names, made once: ten thousand rows share them.
using Nomi = std::array<QString, 21>;
Nomi Numerati(const QString &radice)
{
    Nomi nomi;
    for (std::size_t i = 0; i < nomi.size(); ++i)
        nomi[i] = radice + QString::number(i);
    return nomi;
}
const QString &Corpo(int n)
{
    static const Nomi nomi = Numerati(QStringLiteral("CCampo"));
    return nomi[std::size_t(n)];
}
const QString &NumeroCorpo(int n)
{
    static const Nomi nomi = Numerati(QStringLiteral("CNumero"));
    return nomi[std::size_t(n)];
}
QString Testa(int n) { return QStringLiteral("TCampo") + QString::number(n); }
QString NumeroTesta(int n) { return QStringLiteral("TNumero") + QString::number(n); }

// One movement of the selection, as both passes read it.
struct Movimento
{
    std::int32_t dstData = 0;
    std::int32_t dstCliente = 0;
    QString CliRagsoc;
    QString dstMoneta;
    double dstImporto = 0;
    QString Segno; // "+" when the reason has none
};

// The day number of a date typed in three fields, if it is a date.
std::optional<std::int32_t> GiornoDaCampi(const QString &g, const QString &m, const QString &a)
{
    const std::optional<QDate> d = LeggiData(g.trimmed() + QLatin1Char('/') + m.trimmed()
                                             + QLatin1Char('/') + a.trimmed());
    return d ? std::optional(std::int32_t(GiornoDaData(*d))) : std::nullopt;
}

double Numero(const QVariant &v) { return CDbl(DataDaCampo(v)); }

// A typed balance into euro at its date, rounded to the cent. False when
// the currency has no rate that day: the screen's checks never let one
// through, and a balance divided by nothing would make every figure wrong.
bool InEuro(double &saldo, const QString &moneta, std::int32_t giorno)
{
    const double cambio = CercaCambio(moneta.trimmed(), giorno);
    if (cambio == 0)
        return false;
    saldo = Arrotonda(saldo / cambio, 2);
    return true;
}

// The selection, whole: both passes walk it, and the rate's series with them.
std::optional<std::vector<Movimento>> LeggiSelezione(const QString &sql, QString *errore)
{
    QSqlQuery q(DbLavoro());
    LetturaInAvanti(q);
    if (!q.exec(sql)) {
        *errore = TestoErroreSqlite(q.lastError());
        return std::nullopt;
    }
    const QSqlRecord r = q.record();
    const int data = r.indexOf(QStringLiteral("dstData"));
    const int cliente = r.indexOf(QStringLiteral("dstCliente"));
    const int nome = r.indexOf(QStringLiteral("CliRagsoc"));
    const int moneta = r.indexOf(QStringLiteral("dstMoneta"));
    const int importo = r.indexOf(QStringLiteral("dstImporto"));
    const int segno = r.indexOf(QStringLiteral("Segno"));
    std::vector<Movimento> righe;
    while (q.next()) {
        Movimento m;
        m.dstData = std::int32_t(Numero(q.value(data)));
        m.dstCliente = std::int32_t(Numero(q.value(cliente)));
        m.CliRagsoc = TestoDaCampo(q.value(nome));
        m.dstMoneta = TestoDaCampo(q.value(moneta));
        m.dstImporto = Numero(q.value(importo));
        m.Segno = TestoDaCampo(q.value(segno), QStringLiteral("+"));
        righe.push_back(std::move(m));
    }
    if (q.lastError().isValid()) {
        *errore = TestoErroreSqlite(q.lastError());
        return std::nullopt;
    }
    return righe;
}

// The totals of the second pass. The lire ones stop at 2001.
struct Somme
{
    double PiuLire = 0, MenoLire = 0, PiuEuro = 0, MenoEuro = 0;
};

// The second pass: one body row per movement, written when the next row
// shows how long its balance stood, and the rate's series beside them.
class SecondoPasso
{
public:
    SecondoPasso(const StatoInteressi &stato, QList<QVariantMap> &corpo, SerieTir &serie)
        : m_stato(stato), m_corpo(corpo), m_serie(serie)
    {
    }

    void Esegui(const std::vector<Movimento> &righe);
    const Somme &somme() const { return m_somme; }

private:
    void ScriviRiga();

    const StatoInteressi &m_stato;
    QList<QVariantMap> &m_corpo;
    SerieTir &m_serie;
    const Impostazioni &m_imp = impostazioni();
    Somme m_somme;

    double SaldoLire = 0, SaldoEuro = 0;
    double ImportoLire = 0, ImportoEuro = 0;
    std::int32_t DataCorrente = 0, DataPrecedente = 0, Giorni = 0;
    std::int32_t ClienteRiga = 0, ClientePendente = 0;
    QString NomeCliente;
    QString SegnoRiga;
};

void SecondoPasso::Esegui(const std::vector<Movimento> &righe)
{
    const StatoInteressi &s = m_stato;
    for (std::size_t i = 0;; ++i) {
        // The row just read, or the period's end past the last one.
        const bool fine = i == righe.size();
        if (fine) {
            DataCorrente = s.DataFine;
        } else {
            DataCorrente = righe[i].dstData;
            ClienteRiga = righe[i].dstCliente;
        }
        // A team's client ends here: its last movement runs to the period's end.
        const bool cambioCliente = ClientePendente > 0 && ClientePendente != ClienteRiga;
        if (cambioCliente)
            DataCorrente = s.DataFine;
        // The pending movement now knows how long its balance stood.
        if (DataPrecedente > 0) {
            Giorni = DataCorrente - DataPrecedente;
            if (Giorni == 0)
                Giorni = 1;
            ScriviRiga();
            m_serie.Aggiungi(ImportoEuro, DataPrecedente - s.DataInizio + 1);
        }
        // Past the last row: the closing value ends the series.
        if (fine) {
            m_serie.Aggiungi(-s.SaldoFinale, s.DataFine - s.DataInizio + 1);
            m_serie.SegnoTir = Segno(s.GuadagnoTotale);
            return;
        }
        const Movimento &m = righe[i];
        SegnoRiga = m.Segno;
        ImportoLire = m.dstImporto;
        ImportoEuro = m.dstImporto;
        // Here every currency but the euro counts as lire.
        if (m.dstMoneta == m_imp.CodEur)
            ImportoLire = ImportoLire * m_imp.CambioLire;
        else
            ImportoEuro = ImportoEuro / m_imp.CambioLire;
        ImportoLire = Arrotonda(ImportoLire, 0);
        ImportoEuro = Arrotonda(ImportoEuro, 2);
        if (SegnoRiga == QLatin1String("-")) {
            ImportoLire = -ImportoLire;
            ImportoEuro = -ImportoEuro;
        }
        // The balances carry on from one client of a team to the next.
        SaldoLire += ImportoLire;
        SaldoEuro += ImportoEuro;
        // The movement waits for its days from its own date, also when the
        // end of its client's run moved the current date to the period's end.
        DataPrecedente = cambioCliente ? m.dstData : DataCorrente;
        ClientePendente = ClienteRiga;
        NomeCliente = m.CliRagsoc;
    }
}

void SecondoPasso::ScriviRiga()
{
    const bool lire = DataPrecedente < GiornoEuro;
    const bool piu = SegnoRiga == QLatin1String("+");
    const double importo = lire ? ImportoLire : ImportoEuro;
    const double saldo = lire ? SaldoLire : SaldoEuro;
    const QString &formato = lire ? F0 : F2;
    // The gain those days earned, in the currency of the period.
    const double g = lire ? m_stato.GuadagnoGiorno * m_imp.CambioLire * Giorni
                          : m_stato.GuadagnoGiorno * Giorni;

    QVariantMap r;
    r.insert(Corpo(1), Format(DataPrecedente, DataStampa));
    r.insert(Corpo(2), QString::number(ClientePendente));
    r.insert(NumeroCorpo(20), ClientePendente);
    r.insert(Corpo(3), NomeCliente);
    r.insert(Corpo(4), lire ? QStringLiteral("L") : QStringLiteral("E"));
    r.insert(NumeroCorpo(1), piu ? importo : 0.0);
    r.insert(NumeroCorpo(2), piu ? 0.0 : importo);
    r.insert(NumeroCorpo(11), piu ? ImportoLire : 0.0);
    r.insert(NumeroCorpo(12), piu ? 0.0 : ImportoLire);
    r.insert(NumeroCorpo(13), piu ? ImportoEuro : 0.0);
    r.insert(NumeroCorpo(14), piu ? 0.0 : ImportoEuro);
    r.insert(Corpo(piu ? 11 : 12), Format(importo, formato));
    r.insert(Corpo(13), Format(saldo, formato));
    r.insert(NumeroCorpo(3), saldo);
    r.insert(NumeroCorpo(5), Arrotonda(g, 2));
    r.insert(Corpo(5), Format(g, formato));
    r.insert(NumeroCorpo(6), saldo == 0 ? 0.0 : Arrotonda(g / saldo * 100, 2));
    r.insert(NumeroCorpo(4), Giorni);
    m_corpo.append(std::move(r));

    if (lire) {
        (piu ? m_somme.PiuLire : m_somme.MenoLire) += ImportoLire;
        (piu ? m_somme.PiuEuro : m_somme.MenoEuro) += ImportoEuro;
    } else {
        (piu ? m_somme.PiuEuro : m_somme.MenoEuro) += ImportoEuro;
    }
}

// The firm's block of the head: five blanks, or the firm's card when the
// filter names one that exists. The name goes bound: firms' names hold
// apostrophes and quotes.
void ScriviDittaTesta(const QString &ditta, QVariantMap &testa)
{
    static const char *const campi[] = {"SocNome", "SocIndirizzo", "SocCap", "SocLocalita",
                                        "SocProvincia"};
    for (int i = 0; i < 5; ++i)
        testa.insert(Testa(6 + i), Blank);
    if (ditta.trimmed().isEmpty())
        return;
    QSqlQuery q(DbDati());
    LetturaInAvanti(q);
    q.prepare(QStringLiteral("SELECT * FROM Societa WHERE SocNome = ?"));
    q.addBindValue(ditta.trimmed());
    if (q.exec() && q.next()) {
        for (int i = 0; i < 5; ++i)
            testa.insert(Testa(6 + i), TestoDaCampo(q.value(QString::fromLatin1(campi[i]))));
    }
}

QVariantMap RigaTesta(const CampiInteressi &c, const StatoInteressi &s, const Somme &somme)
{
    const Impostazioni &imp = impostazioni();
    const std::int16_t giacenza = std::int16_t(Numero(
        LeggiIni(imp.IniLocale, QStringLiteral("PARAMETRI"), QStringLiteral("PrintGiacMedia"))));
    const double anno = s.GuadagnoGiorno * 365;
    const std::int32_t giorni = s.DataFine - s.DataInizio == 0 ? 1 : s.DataFine - s.DataInizio;

    QVariantMap t;
    t.insert(Testa(1), QString::number(s.ClienteCorrente));
    t.insert(Testa(2), c.nomeCliente);
    t.insert(Testa(3), Format(s.DataInizio, DataStampa));
    t.insert(Testa(4), Format(s.DataFine, DataStampa));
    t.insert(Testa(5), c.ditta);
    ScriviDittaTesta(c.ditta, t);
    t.insert(Testa(11), c.squadra.trimmed());
    t.insert(Testa(12), ElencoGruppo(NumeroSquadra(c.squadra)));
    t.insert(Testa(13), Format(s.TassoTir, Tasso) + QLatin1Char('%'));
    t.insert(NumeroTesta(1), Arrotonda(s.SaldoFinale, 2));
    t.insert(NumeroTesta(2), Arrotonda(s.GuadagnoTotale, 2));
    t.insert(NumeroTesta(3), Arrotonda(anno, 3));
    t.insert(Testa(17), Format(anno * imp.CambioLire, F0));
    t.insert(NumeroTesta(4), giorni);
    t.insert(Testa(14), Format(giorni / 365.0, F2));
    t.insert(NumeroTesta(5), somme.PiuLire + somme.MenoLire);
    t.insert(NumeroTesta(6), somme.PiuEuro + somme.MenoEuro);
    t.insert(NumeroTesta(7), Arrotonda(somme.PiuLire, 2));
    t.insert(NumeroTesta(8), Arrotonda(somme.MenoLire, 2));
    t.insert(NumeroTesta(9), Arrotonda(somme.PiuEuro, 2));
    t.insert(NumeroTesta(10), Arrotonda(somme.MenoEuro, 2));
    t.insert(Testa(15), giacenza > 0 ? Format(s.CapitaleMedio, F2) : QString());
    t.insert(Testa(16), giacenza > 0 ? QStringLiteral("S") : QStringLiteral("N"));
    // The period's own return, not annualised: the gain over the mean
    // capital. Without a mean capital there is none to print. It goes in the
    // head's first text field, the one without a number.
    const double periodo = s.GuadagnoTotale / s.CapitaleMedio * 100;
    t.insert(QStringLiteral("TCampo"), s.CapitaleMedio != 0 && std::isfinite(periodo)
                           ? Format(periodo, Tasso) + QLatin1Char('%')
                           : QString());
    return t;
}

} // namespace

QString TestoListaInteressi(bool squadra)
{
    return squadra ? QStringLiteral("SELECT * FROM WInterMedi ORDER BY dstCliente, dstData, dstCodice")
                   : QStringLiteral("SELECT * FROM WInterMedi ORDER BY dstData, dstCodice");
}

QString ModuloInteressi(const QString &squadra)
{
    QString nome = ModuloDiStampa(QStringLiteral("InterMed"));
    if (!squadra.trimmed().isEmpty()) {
        const qsizetype punto = nome.toUpper().indexOf(QStringLiteral(".RPT"));
        if (punto >= 0)
            nome = nome.left(punto);
        nome += QStringLiteral("1.rpt");
    }
    return nome;
}

CalcoloInteressi CalcolaInteressi(const CampiInteressi &c, StatoInteressi &s)
{
    CalcoloInteressi esito;
    const Impostazioni &imp = impostazioni();

    // Reading the inputs: a client and a closing balance are required; a
    // negative closing balance passes.
    std::int32_t cliente = 0;
    if (!LeggiIntero32(DataDaCampo(c.cliente), &cliente))
        cliente = 0;
    s.ClienteCorrente = cliente;
    if (cliente == 0) {
        esito.avviso = QStringLiteral("INDICARE IL CLIENTE");
        return esito;
    }
    s.SaldoFinale = Numero(c.saldoFinale);
    if (s.SaldoFinale == 0) {
        esito.avviso = QStringLiteral("INDICARE IL SALDO");
        return esito;
    }
    s.DataInizio = GiornoDaCampi(c.dalGiorno, c.dalMese, c.dalAnno).value_or(0);
    s.DataFine = GiornoDaCampi(c.alGiorno, c.alMese, c.alAnno).value_or(c.oggi);
    // Both balances into euro; a negative closing balance is left as typed.
    s.SaldoIniziale = Numero(c.saldoIniziale);
    if ((s.SaldoIniziale > 0 && !InEuro(s.SaldoIniziale, c.monetaIniziale, s.DataInizio))
        || (s.SaldoFinale > 0 && !InEuro(s.SaldoFinale, c.monetaFinale, s.DataFine))) {
        esito.avviso = QStringLiteral("MONETA NON CODIFICATA");
        return esito;
    }
    const std::int32_t squadra = NumeroSquadra(c.squadra);
    QString errore;
    const std::optional<std::vector<Movimento>> righe =
        LeggiSelezione(TestoListaInteressi(squadra > 0), &errore);
    if (!righe) {
        esito.avviso = QStringLiteral("ERRORE IN LETTURA DEI MOVIMENTI DA STAMPARE\n") + errore;
        return esito;
    }
    if (righe->empty())
        return esito;

    // First pass: the totals. The period starts at the earliest movement,
    // or today if that is earlier: a movement after today does not move it.
    s.CapitaleMedio = 0;
    double saldoEuro = 0;
    s.DataInizio = c.oggi;
    for (const Movimento &m : *righe) {
        const std::int32_t d = m.dstData;
        if (s.DataInizio > d)
            s.DataInizio = d;
        double a = m.dstImporto;
        if (m.Segno == QLatin1String("-"))
            a = -a;
        // Here only lire are converted; any other currency counts as it is.
        if (m.dstMoneta == imp.CodLit)
            a = Arrotonda(a / imp.CambioLire, 2);
        saldoEuro += a;
        std::int32_t g = s.DataFine - d;
        if (g == 0)
            g = 1;
        s.CapitaleMedio += a * g;
    }
    // The mean capital over the days between the ends; the gain per day over
    // the days counting both ends.
    std::int32_t g = s.DataFine - s.DataInizio;
    if (g == 0)
        g = 1;
    s.CapitaleMedio = s.CapitaleMedio / g;
    s.GuadagnoTotale = s.SaldoFinale - saldoEuro;
    s.GuadagnoGiorno = s.GuadagnoTotale / (s.DataFine - s.DataInizio + 1);

    // A team's rate comes from its own series; the one built below serves a
    // single client.
    s.TassoTir = TirGruppo({.squadra = squadra, .DataInizio = s.DataInizio,
                            .DataFine = s.DataFine, .SaldoFinale = s.SaldoFinale,
                            .GuadagnoTotale = s.GuadagnoTotale});
    SerieTir serie;
    serie.Dimensiona(int(righe->size()) + 1);

    DatiReport d;
    SecondoPasso passo(s, d.corpo, serie);
    passo.Esegui(*righe);
    if (squadra == 0)
        s.TassoTir = CalcolaTirX(serie);
    d.testa = RigaTesta(c, s, passo.somme());
    esito.righe = std::move(d);
    return esito;
}

bool StampaInteressi(const CampiInteressi &campi, StatoInteressi &stato)
{
    const CalcoloInteressi calcolo = CalcolaInteressi(campi, stato);
    if (!calcolo.avviso.isEmpty())
        Messaggio(calcolo.avviso);
    if (!calcolo.righe || !PreparaTemporanei(*calcolo.righe))
        return false;
    ConsegnaStampa &consegna = consegnaStampa();
    consegna.ModuloCorrente = ModuloInteressi(campi.squadra);
    consegna.FormulaCorrente.clear();
    Gstampe g;
    g.Load();
    sessione().CodiceStop = 0;
    return true;
}

} // namespace sorvane
