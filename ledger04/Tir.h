#pragma once

// The annual internal rate of return of a series of dated money flows, as
// the average-interest print shows it in its head. The search is the
// office's own stepping search, with simple discounting up to 365 days and
// compound beyond: its answers are the ones the office has always printed,
// so every comparison in it is kept as it is.

#include <QString>

#include <cstdint>
#include <vector>

namespace sorvane {

// The two out-of-band answers: every flow of one sign, and a search whose
// arithmetic failed.
inline constexpr double TirUnSegno = 0;
inline constexpr double TirFallito = 99999;

// The series. Flows run from 1 to NumeroTir; the arrays hold them from
// their first element (flow 1 is ImportiTir[0]).
struct SerieTir
{
    int NumeroTir = 0;
    // Amounts in euro: a payment in positive, a withdrawal negative, the
    // closing value negative.
    std::vector<double> ImportiTir;
    // Age of each flow in days from the period's start, its first day 1.
    std::vector<double> GiorniTir;
    // Sign of the period's total gain (-1, 0, +1): the side of the first guess.
    std::int16_t SegnoTir = 0;

    // Room for massimo flows, so that a long print does not regrow them.
    void Dimensiona(int massimo);
    void Aggiungi(double importo, double giorni);
    // Every flow back to 0 and none counted.
    void Azzera();
};

// The sign of a value as -1, 0 or +1.
std::int16_t Segno(double valore);

// The rate in per cent a year (7.25 is 7.25 %); TirUnSegno when the flows
// all have one sign (an amount of 0 counts as positive), TirFallito when the
// arithmetic failed. A series lying inside one year has its first flow's age
// set to 0 in serie, for good. *giri, when given, counts the inner rounds
// the search took (the cost of a search, for whoever watches it).
double CalcolaTirX(SerieTir &serie, int *giri = nullptr);

// What a team's rate needs of the print in hand.
struct PeriodoTir
{
    std::int32_t squadra = 0;      // the team number; 0, no team
    std::int32_t DataInizio = 0;   // the period as the print counts it
    std::int32_t DataFine = 0;
    double SaldoFinale = 0;        // in euro
    double GuadagnoTotale = 0;
};

// The rate of a whole team: its series from every row of `WInterMedi` in
// date order, an amount of 0 never a flow, only lire converted to euro,
// then the closing value. 0 without a team, without rows or when the rows
// cannot be read.
double TirGruppo(const PeriodoTir &periodo);

} // namespace sorvane
