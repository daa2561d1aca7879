#include "ledger04/Tir.h"

#include "frame/core/Campi.h"
#include "frame/core/Formato.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Valore.h"
#include "store/Connessione.h"
#include "store/Motore.h"

#include <QSqlQuery>

#include <algorithm>
#include <cmath>
#include <optional>

namespace sorvane {

namespace {

// The present value must come within this many euro of zero.
constexpr double Tolleranza = 0.01;
// Rounds of the inner search before the step widens.
constexpr int GiriInterni = 100;
// Rejected steps in a row before the step widens.
constexpr int PassiIndietro = 10;
// The outer rounds have no natural end. The first guess grows by half every
// ten rounds (the step runs 0.09 down to its last value, then B grows), so
// after 300 rounds it stands at 0.1 x 1.5^30, about 19,000: a rate near two
// million per cent a year, beyond any real series (a gain of 100% in one day
// is 36,500%). Without a gain's sign every round restarts from 0 and the
// rounds repeat with a period of ten, the values the step takes, so a search
// not ended after ten rounds never ends. A search that gets to its bound is
// a failure of the arithmetic, TirFallito. Bounded so, a series of 1,000
// flows is answered or refused within a fraction of a second.
constexpr int GiriMassimi = 300;
constexpr int GiriSenzaSegno = 10;

// The present value of the series at rate r, or nothing when the arithmetic
// fails (a divisor of 0, a power of a negative base, an overflow: what
// IEEE arithmetic would carry on with as an infinity or a NaN). Counts the
// flows of each sign on the way; an amount of 0 counts as positive.
std::optional<double> ValoreAttuale(const SerieTir &s, double r, int &positivi, int &negativi)
{
    double v = 0;
    positivi = 0;
    negativi = 0;
    for (int i = 0; i < s.NumeroTir; ++i) {
        const double giorni = s.GiorniTir[std::size_t(i)];
        const double importo = s.ImportiTir[std::size_t(i)];
        // Older than a year: compound; a year or less: simple interest.
        const double f = giorni > 365 ? std::pow(1 + r, giorni / 365) : 1 + r * giorni / 365;
        if (f == 0 || !std::isfinite(f))
            return std::nullopt;
        v += importo / f;
        if (!std::isfinite(v))
            return std::nullopt;
        if (importo >= 0)
            ++positivi;
        else
            ++negativi;
    }
    return v;
}

} // namespace

void SerieTir::Dimensiona(int massimo)
{
    ImportiTir.reserve(std::size_t(std::max(massimo, 0)));
    GiorniTir.reserve(std::size_t(std::max(massimo, 0)));
}

void SerieTir::Aggiungi(double importo, double giorni)
{
    const auto i = std::size_t(NumeroTir++);
    if (ImportiTir.size() <= i) {
        ImportiTir.resize(i + 1);
        GiorniTir.resize(i + 1);
    }
    ImportiTir[i] = importo;
    GiorniTir[i] = giorni;
}

void SerieTir::Azzera()
{
    std::fill(ImportiTir.begin(), ImportiTir.end(), 0.0);
    std::fill(GiorniTir.begin(), GiorniTir.end(), 0.0);
    NumeroTir = 0;
}

std::int16_t Segno(double valore)
{
    return valore > 0 ? 1 : (valore < 0 ? -1 : 0);
}

double CalcolaTirX(SerieTir &s, int *giri)
{
    int contati = 0;
    if (!giri)
        giri = &contati;
    *giri = 0;
    // A series without flows has no flow of either sign.
    if (s.NumeroTir <= 0)
        return TirUnSegno;

    // Start: the step, the size of the first guess, a value outside the tolerance.
    double P = 0.09;
    double B = 0.1;
    double V = 1.0;
    std::int16_t Sb = 0;
    double R = 0, Rb = 0, D = 0, Vb = 0;
    int Iter = 0, Back = 0;
    int esterni = 0;

    // Widening: the step shrinks by a cent down to its last value (not
    // exactly 0 in double arithmetic, and given its round as it is); past
    // it the first guess grows by half and the step starts again.
    const auto allarga = [&P, &B] {
        if (P > 0) {
            P = P - 0.01;
        } else {
            B = B * 1.5;
            P = 0.09;
        }
    };

    // Outer rounds: each starts from the first guess on the gain's side.
    while (std::fabs(V) >= Tolleranza) {
        if (++esterni > (s.SegnoTir == 0 ? GiriSenzaSegno : GiriMassimi))
            return TirFallito;
        R = s.SegnoTir * B;
        Rb = R;
        D = 0;
        Vb = 0;
        Iter = 0;
        Back = 0;
        V = 1;
        // A series inside one year: its first flow is not discounted, from
        // now on (the series keeps the change).
        if (s.GiorniTir[std::size_t(s.NumeroTir - 1)] < 365)
            s.GiorniTir[0] = 0;

        // Inner rounds: steps of D towards the zero of V.
        while (std::fabs(V) >= Tolleranza) {
            ++Iter;
            ++*giri;
            if (Iter > GiriInterni) {
                allarga();
                break;
            }
            // A positive V means the rate is too high: the change is taken off.
            R = R - D;
            int positivi = 0, negativi = 0;
            const std::optional<double> valore = ValoreAttuale(s, R, positivi, negativi);
            if (!valore)
                return TirFallito;
            V = *valore;
            // Flows of one sign have no rate.
            if (positivi == 0 || negativi == 0)
                return TirUnSegno;
            if (Back >= PassiIndietro) {
                allarga();
                break;
            }
            if (Iter > 1) {
                // A good step comes no farther from zero and stays on its
                // side: the step that crosses the zero is undone, even inside
                // the tolerance, and the rate before it is the answer.
                if (std::fabs(Vb) >= std::fabs(V) && Sb == Segno(V)) {
                    Vb = V;
                    Rb = R;
                    Sb = Segno(V);
                    Back = 0;
                } else {
                    R = Rb;
                    D = D / 3;
                    Back = Back + 1;
                }
            } else {
                // The first value sets the side and the size of the steps.
                Vb = V;
                Sb = Segno(V);
                D = Sb * P;
            }
        }
    }
    const double tasso = R * 100;
    return std::isfinite(tasso) ? tasso : TirFallito;
}

double TirGruppo(const PeriodoTir &p)
{
    if (p.squadra == 0)
        return 0;
    QSqlQuery q(DbLavoro());
    LetturaInAvanti(q);
    if (!q.exec(QStringLiteral("SELECT dstData, dstMoneta, dstImporto, Segno FROM WInterMedi"
                               " ORDER BY dstData, dstCodice"))
        || !q.next())
        return 0;
    const Impostazioni &imp = impostazioni();
    SerieTir serie;
    double inSospeso = 0;
    std::int32_t dataSospesa = 0;
    bool finite = false;
    for (;;) {
        const std::int32_t corrente =
            finite ? p.DataFine : std::int32_t(CDbl(DataDaCampo(q.value(0))));
        // The row before becomes a flow at its own date, unless its amount is 0.
        if (inSospeso != 0 && dataSospesa > 0)
            serie.Aggiungi(inSospeso, dataSospesa - p.DataInizio + 1);
        if (finite) {
            // The closing value at the period's end; no closing balance, no rate.
            if (p.SaldoFinale == 0)
                return 0;
            serie.Aggiungi(-p.SaldoFinale, corrente - p.DataInizio + 1);
            serie.SegnoTir = Segno(p.GuadagnoTotale);
            return CalcolaTirX(serie);
        }
        const QString segno = TestoDaCampo(q.value(3), QStringLiteral("+"));
        inSospeso = CDbl(DataDaCampo(q.value(2)));
        // Only lire are turned into euro: any other currency enters as it is.
        if (TestoDaCampo(q.value(1)) == imp.CodLit)
            inSospeso = Arrotonda(inSospeso / imp.CambioLire, 2);
        if (segno == QLatin1String("-"))
            inSospeso = -inSospeso;
        dataSospesa = corrente;
        finite = !q.next();
    }
}

} // namespace sorvane
