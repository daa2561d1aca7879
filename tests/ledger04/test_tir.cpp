// The rate of return's stepping search on series whose answer is known:
// the out-of-band answers, the simple and the compound side of a year, the
// first flow's age forced to 0, and the faults of the arithmetic.

#include "ledger04/Tir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace sorvane;

namespace {

SerieTir Serie(std::initializer_list<std::pair<double, double>> flussi, std::int16_t segno)
{
    SerieTir s;
    for (const auto &[importo, giorni] : flussi)
        s.Aggiungi(importo, giorni);
    s.SegnoTir = segno;
    return s;
}

struct Caso
{
    const char *nome;
    SerieTir serie;
    double tasso;     // the answer, to four decimals
    int giri = -1;    // the inner rounds, when the case fixes them
};

} // namespace

TEST(CalcolaTirX, CasiNoti)
{
    const Caso casi[] = {
        // Compound past a year: 1000 become 1100 in 365 days.
        {"un anno e un giorno", Serie({{1000, 1}, {-1100, 366}}, 1), 10.0014, 10},
        {"nessun flusso negativo", Serie({{1000, 1}, {500, 200}, {0, 366}}, 1), 0},
        {"nessun flusso positivo", Serie({{-1000, 1}, {-1100, 366}}, -1), 0},
        // Within a year: the first flow is not discounted and the rate is
        // the simple one, 5% over 192.5 days, 9.4805% a year, met within the
        // tolerance on the value.
        {"dentro l'anno", Serie({{1000, 10}, {-1050, 192.5}}, 1), 9.4815},
        // No gain, balanced flows: V is 0 at the first guess of 0.
        {"guadagno nullo", Serie({{1000, 1}, {500, 100}, {-1500, 300}}, 0), 0, 1},
        // A loss. The ninth step from -10% brings V within the tolerance
        // but across its zero: it is undone, and -10% is the answer.
        {"perdita", Serie({{1000, 1}, {-900, 366}}, -1), -10, 10},
        // A deep loss still has a rate above -100%.
        {"perdita profonda", Serie({{1000, 1}, {-1, 800}}, -1), -95.7270},
        // A closing value too small for the steps to meet a rate: R steps
        // onto -1 and below, where a power of a negative base has no value.
        {"saldo troppo piccolo", Serie({{1000, 1}, {-0.000001, 800}}, -1), TirFallito},
    };
    for (const Caso &c : casi) {
        SCOPED_TRACE(c.nome);
        SerieTir s = c.serie;
        int giri = 0;
        const double tasso = CalcolaTirX(s, &giri);
        EXPECT_NEAR(tasso, c.tasso, 0.00005);
        if (c.giri >= 0)
            EXPECT_EQ(giri, c.giri);
    }
}

// The first flow's age: forced to 0 only when the last flow is under 365
// days, and the series keeps the change.
TEST(CalcolaTirX, PrimaEtaAZeroSoloDentroLAnno)
{
    SerieTir dentro = Serie({{1000, 10}, {-1050, 192.5}}, 1);
    CalcolaTirX(dentro);
    EXPECT_EQ(dentro.GiorniTir[0], 0);
    SerieTir anno = Serie({{1000, 10}, {-1100, 365}}, 1);
    CalcolaTirX(anno);
    EXPECT_EQ(anno.GiorniTir[0], 10);
}

// Faults that IEEE arithmetic would carry on with: a divisor that comes to
// exactly 0 (a discount over eight thousand years underflows), an amount
// beyond any double, a NaN.
TEST(CalcolaTirX, GuastiDellAritmetica)
{
    const double enorme = std::numeric_limits<double>::max();
    SerieTir divisore = Serie({{1000, 1}, {-1, 3e6}}, -1);
    SerieTir traboccato = Serie({{enorme, 1}, {enorme, 2}, {-1, 366}}, 1);
    SerieTir nan = Serie({{std::nan(""), 1}, {-1000, 366}}, 1);
    for (SerieTir *s : {&divisore, &traboccato, &nan})
        EXPECT_EQ(CalcolaTirX(*s), TirFallito);
    SerieTir vuota;
    EXPECT_EQ(CalcolaTirX(vuota), TirUnSegno);
}

// A search that cannot end: no gain's sign, and V above 0 at every rate
// above -100%, so every step is undone. Its rounds repeat; it stops and fails.
TEST(CalcolaTirX, RicercaSenzaFineFallisce)
{
    SerieTir s = Serie({{1000, 1}, {1000, 400}, {-1, 400}}, 0);
    int giri = 0;
    EXPECT_EQ(CalcolaTirX(s, &giri), TirFallito);
    EXPECT_LE(giri, 10 * 100);
}
