// The movements of the demo office: slips in `Distinte`, the plain ones
// copied to `Distinte04` as the save of a slip does, and the yearly balance
// rows typed there by hand for the years before the slips.

#include "tools/demo/Ufficio.h"

#include "frame/core/Giorni.h"
#include "store/Transazione.h"

#include <QSqlError>

#include <algorithm>
#include <cmath>

namespace sorvane::demo {
namespace {

constexpr qint64 MovimentiNormali = 6000;
constexpr int PrimoNumeroManuale = 800000000;
constexpr int NumeroRiservato = 999999999;
constexpr double LirePerEuro = 1936.27;

// Reasons as the demo's reason table has them.
enum Causale { Sottoscrizione, Pac, Rimborso, Switch, Aggiuntivo, Premio, Liquidazione };
const char *const CodiciCausale[] = {"001", "002", "003", "004", "005", "006", "009"};

struct Movimento
{
    int giorno = 0;
    const ClienteDemo *cliente = nullptr;
    int ditta = 0;
    Causale causale = Sottoscrizione;
    double importo = 0;
    const ProdottoDemo *prodotti[2][5] = {};
    int quanti[2] = {0, 0};
};

// The highest number of a ledger below a limit, 0 when it has none.
int MassimoCodice(QSqlDatabase &db, const QString &tabella, int limite)
{
    QSqlQuery q(db);
    q.prepare(QStringLiteral("SELECT MAX(dstCodice) FROM %1 WHERE dstCodice < ?").arg(tabella));
    q.addBindValue(limite);
    return q.exec() && q.next() ? q.value(0).toInt() : 0;
}

double Normale(Caso &caso)
{
    const double u = 1.0 - caso.reale();
    return std::sqrt(-2.0 * std::log(u)) * std::cos(6.283185307179586 * caso.reale());
}

// An amount as a person types it: lire whole and round, euro with cents
// only where the amount comes from a computation (a redemption, a switch).
double Importo(Caso &caso, Causale causale, bool lire)
{
    static const int pacEuro[] = {50, 100, 150, 200, 250, 300, 500};
    static const int pacLire[] = {100000, 150000, 200000, 250000, 300000, 500000, 1000000};
    if (causale == Pac)
        return lire ? caso.scegli(pacLire) : caso.scegli(pacEuro);
    double mediana = 15000;
    if (causale == Premio)
        mediana = 4000;
    else if (causale == Rimborso || causale == Liquidazione)
        mediana = 10000;
    else if (causale == Switch)
        mediana = 20000;
    const double euro = std::clamp(mediana * std::exp(0.9 * Normale(caso)), 500.0, 750000.0);
    const bool calcolato = causale == Rimborso || causale == Liquidazione || causale == Switch;
    if (lire) {
        const double valore = euro * LirePerEuro;
        if (calcolato)
            return std::round(valore);
        const double passo = valore >= 10e6 ? 1e6 : 50000;
        return std::max(passo, std::round(valore / passo) * passo);
    }
    if (calcolato)
        return std::round(euro * 100) / 100;
    const double passo = euro >= 5000 ? 500 : 50;
    return std::max(passo, std::round(euro / passo) * passo);
}

class Scrittore
{
public:
    Scrittore(QSqlDatabase &db, Caso &caso, const Ufficio &ufficio);
    bool scrivi(qint64 quanti, QString *errore);

private:
    std::vector<double> pesiGiorni();
    const ClienteDemo *cliente(int giorno);
    const ProdottoDemo *prodotto(int ditta, int giorno, const Movimento &m);
    void riempi(Movimento &m);
    bool registra(const Movimento &m, QString *errore);
    bool fallito(QSqlQuery &q, QString *errore);

    QSqlDatabase &m_db;
    Caso &m_caso;
    const Ufficio &m_ufficio;
    std::vector<double> m_pesiClienti; // cumulated
    std::vector<std::vector<const ProdottoDemo *>> m_perDitta;
    QSqlQuery m_distinte;
    QSqlQuery m_distinte04;
    int m_numero = 0;
    int m_numero04 = 0;
    const QString m_vuoto = QStringLiteral(" ");
    const QString m_zero = QStringLiteral("0");
    const QString m_uno = QStringLiteral("1");
    const QString m_chiusa = QStringLiteral("S");
    const QString m_lire = QStringLiteral("LIT");
    const QString m_euro = QStringLiteral("EUR");
    QString m_causali[7];
};

Scrittore::Scrittore(QSqlDatabase &db, Caso &caso, const Ufficio &ufficio)
    : m_db(db), m_caso(caso), m_ufficio(ufficio), m_perDitta(ufficio.ditte.size()),
      m_distinte(db), m_distinte04(db)
{
    double somma = 0;
    for (const ClienteDemo &c : ufficio.clienti)
        m_pesiClienti.push_back(somma += c.peso);
    for (const ProdottoDemo &p : ufficio.prodotti)
        m_perDitta[p.ditta].push_back(&p);
    for (int i = 0; i < 7; ++i)
        m_causali[i] = QLatin1String(CodiciCausale[i]);
}

bool Scrittore::fallito(QSqlQuery &q, QString *errore)
{
    *errore = TestoErroreSqlite(q.lastError());
    return false;
}

// How busy each day is: no Sundays, little on Saturdays and in August, a
// rush before the year's end, and an office that grows over the years.
std::vector<double> Scrittore::pesiGiorni()
{
    const int primo = GiornoDaData(QDate(1999, 1, 4));
    const double durata = std::max(1, m_ufficio.oggi - primo);
    std::vector<double> pesi;
    for (int g = primo; g <= m_ufficio.oggi; ++g) {
        const QDate d = DataDaGiorno(g);
        double peso = d.dayOfWeek() == 7 ? 0 : (d.dayOfWeek() == 6 ? 0.1 : 1);
        if (d.month() == 8)
            peso *= 0.3;
        else if (d.month() == 12)
            peso *= 1.3;
        peso *= (0.6 + 0.8 * (g - primo) / durata) * (0.5 + m_caso.reale());
        pesi.push_back(peso);
    }
    return pesi;
}

const ClienteDemo *Scrittore::cliente(int giorno)
{
    const std::vector<ClienteDemo> &clienti = m_ufficio.clienti;
    for (int tentativo = 0; tentativo < 30; ++tentativo) {
        const double x = m_caso.reale() * m_pesiClienti.back();
        const auto it = std::upper_bound(m_pesiClienti.begin(), m_pesiClienti.end(), x);
        const ClienteDemo &c = clienti[std::min<std::size_t>(it - m_pesiClienti.begin(),
                                                             clienti.size() - 1)];
        if (c.dal <= giorno && giorno <= c.al)
            return &c;
    }
    for (const ClienteDemo &c : clienti)
        if (c.dal <= giorno && giorno <= c.al)
            return &c;
    return &clienti.front();
}

// A product of the firm on sale that day and not yet in the movement.
const ProdottoDemo *Scrittore::prodotto(int ditta, int giorno, const Movimento &m)
{
    const auto &elenco = m_perDitta[ditta];
    for (int tentativo = 0; tentativo < 20; ++tentativo) {
        const ProdottoDemo *p = m_caso.scegli(elenco);
        if (p->dal > giorno || p->al < giorno)
            continue;
        bool presente = false;
        for (int r = 0; r < 2; ++r)
            for (int i = 0; i < m.quanti[r]; ++i)
                presente = presente || m.prodotti[r][i] == p;
        if (!presente)
            return p;
    }
    return nullptr;
}

void Scrittore::riempi(Movimento &m)
{
    m.cliente = cliente(m.giorno);
    m.ditta = m_caso.prob(0.8) ? m.cliente->ditta : int(m_caso.indice(m_perDitta.size()));
    const ProdottoDemo *primo = prodotto(m.ditta, m.giorno, m);
    for (int i = 0; !primo && i < int(m_perDitta.size()); ++i) {
        m.ditta = i;
        primo = prodotto(m.ditta, m.giorno, m);
    }
    if (!primo)
        return; // nothing on sale that day: the caller skips the movement
    m.prodotti[0][m.quanti[0]++] = primo;
    const int r = m_caso.intero(0, 99);
    if (primo->polizza)
        m.causale = r < 80 ? Premio : Liquidazione;
    else
        m.causale = r < 30 ? Sottoscrizione : r < 52 ? Pac : r < 67 ? Rimborso
                  : r < 80 ? Switch : Aggiuntivo;
    const int altri = m.causale == Pac ? 0 : (r % 10 < 7 ? 0 : r % 10 < 9 ? 1 : 2);
    for (int i = 0; i < altri; ++i)
        if (const ProdottoDemo *p = prodotto(m.ditta, m.giorno, m))
            m.prodotti[0][m.quanti[0]++] = p;
    if (m.causale == Switch) {
        const int giro = m_caso.intero(1, 3);
        for (int i = 0; i < giro; ++i)
            if (const ProdottoDemo *p = prodotto(m.ditta, m.giorno, m))
                m.prodotti[1][m.quanti[1]++] = p;
        if (m.quanti[1] == 0)
            m.causale = Rimborso;
    }
    m.importo = Importo(m_caso, m.causale, m.giorno < GiornoEuro);
}

bool Scrittore::registra(const Movimento &m, QString *errore)
{
    const int eta = m_ufficio.oggi - m.giorno;
    // Recent slips still wait for the firms' confirmations; old ones are
    // nearly all confirmed.
    const double aperta = eta <= 30 ? 0.6 : eta <= 120 ? 0.2 : eta <= 365 ? 0.03 : 0.004;
    bool segni[2][5] = {};
    bool chiusa = true;
    for (int r = 0; r < 2; ++r) {
        for (int i = 0; i < m.quanti[r]; ++i) {
            segni[r][i] = m_caso.prob(aperta);
            chiusa = chiusa && !segni[r][i];
        }
    }

    const bool lire = m.giorno < GiornoEuro;
    const bool entrata = m.causale != Rimborso && m.causale != Liquidazione &&
        m.causale != Switch;
    const bool assegno = entrata && m.causale != Pac && m_caso.prob(0.55);
    const QString numeroAssegno = assegno
        ? QString::number(m_caso.intero(100000, 999999)) +
              QString::number(m_caso.intero(1000, 9999))
        : m_vuoto;
    const QString &banca = assegno ? m_ufficio.banche[int(m_caso.indice(m_ufficio.banche.size()))]
                                   : m_vuoto;
    double spese = 0;
    if ((m.causale == Sottoscrizione || m.causale == Aggiuntivo) && m_caso.prob(0.25))
        spese = lire ? m_caso.intero(1, 6) * 5000.0 : m_caso.intero(1, 5) * 5.0;

    ++m_numero;
    const QString &ditta = m_ufficio.ditte[m.ditta];
    const QString &causale = m_causali[m.causale];
    const QString &moneta = lire ? m_lire : m_euro;
    for (int r = 0; r < 2; ++r) {
        if (r == 1 && m.quanti[1] == 0)
            break;
        QSqlQuery &q = m_distinte;
        Lega(q, 0, m_numero, r ? m_uno : m_zero, ditta, m.giorno, m.cliente->codice, causale,
             moneta, m.importo, numeroAssegno, banca, spese);
        for (int i = 0; i < 5; ++i) {
            const ProdottoDemo *p = i < m.quanti[r] ? m.prodotti[r][i] : nullptr;
            q.bindValue(11 + i, !p ? m_vuoto : (segni[r][i] ? p->segnato : p->codice));
        }
        q.bindValue(16, chiusa ? m_chiusa : m_vuoto);
        if (!q.exec())
            return fallito(q, errore);
    }
    if (m.quanti[1] > 0)
        return true; // a switch stays in the slips only

    QString prodotti = m.prodotti[0][0]->codice;
    for (int i = 1; i < m.quanti[0]; ++i)
        prodotti += QLatin1Char(',') + m.prodotti[0][i]->codice;
    QSqlQuery &q = m_distinte04;
    Lega(q, 0, ++m_numero04, ditta, m.giorno, m.cliente->codice, causale, moneta, m.importo,
         prodotti);
    return q.exec() || fallito(q, errore);
}

bool Scrittore::scrivi(qint64 quanti, QString *errore)
{
    m_numero = MassimoCodice(m_db, QStringLiteral("Distinte"), PrimoNumeroManuale);
    m_numero04 = MassimoCodice(m_db, QStringLiteral("Distinte04"), PrimoNumeroManuale);
    if (!m_distinte.prepare(QStringLiteral(
            "INSERT INTO Distinte (dstCodice, dstPrg, dstDitta, dstData, dstCliente, "
            "dstCausale, dstMoneta, dstImporto, dstAssegno, dstBanca, dstSpeseUT, dstCodP0, "
            "dstCodP1, dstCodP2, dstCodP3, dstCodP4, dstChiusa) "
            "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")))
        return fallito(m_distinte, errore);
    if (!m_distinte04.prepare(QStringLiteral(
            "INSERT INTO Distinte04 (dstCodice, dstDitta, dstData, dstCliente, dstCausale, "
            "dstMoneta, dstImporto, dstCodP) VALUES (?, ?, ?, ?, ?, ?, ?, ?)")))
        return fallito(m_distinte04, errore);

    // The movements spread over the days by weight; the running sum decides
    // how many fall on each day, so that exactly `quanti` come out.
    const std::vector<double> pesi = pesiGiorni();
    double totale = 0;
    for (double p : pesi)
        totale += p;
    const int primo = m_ufficio.oggi - int(pesi.size()) + 1;
    double cumulato = 0;
    qint64 fatti = 0;
    for (std::size_t g = 0; g < pesi.size(); ++g) {
        cumulato += pesi[g];
        const qint64 finoA = g + 1 == pesi.size()
            ? quanti : std::min(quanti, qint64(std::floor(quanti * (cumulato / totale))));
        while (fatti < finoA) {
            Movimento m;
            m.giorno = primo + int(g);
            riempi(m);
            if (m.quanti[0] == 0)
                break; // nothing on sale: the rest of the day's share moves on
            if (!registra(m, errore))
                return false;
            ++fatti;
        }
    }
    if (fatti < quanti) {
        *errore = QStringLiteral("Nessun prodotto in vendita per i movimenti");
        return false;
    }
    return true;
}

} // namespace

bool ScriviMovimenti(QSqlDatabase &db, Caso &caso, const Ufficio &ufficio, qint64 quanti,
                     QString *errore)
{
    Scrittore scrittore(db, caso, ufficio);
    return scrittore.scrivi(quanti > 0 ? quanti : MovimentiNormali, errore);
}

bool ScriviSaldi(QSqlDatabase &db, Caso &caso, const Ufficio &ufficio, QString *errore)
{
    Inserimento saldi(db, QStringLiteral("Distinte04"),
                      QStringLiteral("dstCodice dstDitta dstData dstCliente dstCausale "
                                     "dstMoneta dstImporto dstCodP")
                          .split(QLatin1Char(' ')));
    int numero = std::max(MassimoCodice(db, QStringLiteral("Distinte04"), NumeroRiservato),
                          PrimoNumeroManuale);
    const int primoAnnoSlip = 1999;
    // The round of the balances screen: client, year, payment, withdrawal,
    // in lire under the code that screen writes as it is.
    for (const ClienteDemo &c : ufficio.clienti) {
        double capitale = std::round(c.peso * 20) * 1e6 + 1e6;
        for (int anno = DataDaGiorno(c.dal).year(); anno < primoAnnoSlip; ++anno) {
            const QString descrizione = QStringLiteral("al 31/12/%1 Movimenti vari").arg(anno);
            const int giorno = GiornoDaData(QDate(anno, 1, 1));
            const double prelievo = caso.prob(0.4)
                ? std::round(capitale * caso.intero(5, 30) / 100 / 1e5) * 1e5 : 0;
            for (int verso = 0; verso < 2; ++verso) {
                const double importo = verso ? prelievo : capitale;
                if (importo > 0 &&
                    !saldi.scrivi({++numero, ufficio.ditte[c.ditta], giorno, c.codice,
                                   QLatin1String(verso ? "008" : "007"),
                                   QStringLiteral("LIT"), importo, descrizione})) {
                    *errore = saldi.errore();
                    return false;
                }
            }
            capitale = std::round(capitale * (1 + caso.intero(0, 12) / 100.0) / 1e5) * 1e5;
        }
    }
    return true;
}

} // namespace sorvane::demo
