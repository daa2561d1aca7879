#pragma once

// The average-interest print: what a client's (or a team's) money earned
// over a period, from the movements the extraction left in `WInterMedi` and
// the closing balance the user types. The gain is the closing balance less
// the net of the movements, spread evenly over the days of the period; each
// movement's row shows the share its balance earned while it stood, and the
// head the total, the gain per year, the mean capital, the annual rate of
// return and the period's own return. Staged into PrtTesta and PrtCorpo for
// the module "InterMed" ("InterMed1" for a team).
//
// The screen gathers its fields into CampiInteressi and calls
// StampaInteressi; what the print leaves for the screen (the period's start
// moved to the earliest movement, the balances in euro, the gain) comes
// back in StatoInteressi.

#include "reports/DatiReport.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace sorvane {

// The fields of the screen as typed.
struct CampiInteressi
{
    QString cliente;     // client code
    QString nomeCliente; // the name beside it, printed as it stands
    QString dalGiorno, dalMese, dalAnno;
    QString alGiorno, alMese, alAnno;
    QString monetaIniziale, saldoIniziale;
    QString monetaFinale, saldoFinale;
    QString ditta;   // the firm filter's text; blank for every firm
    QString squadra; // the team label's caption: a number, empty, or a note
    std::int32_t oggi = 0; // today's day number
};

// What the print keeps between runs, shared with the screen.
struct StatoInteressi
{
    std::int32_t ClienteCorrente = 0;
    // The period as the print counts it. The start moves to the earliest
    // movement (or today, if that is earlier) and stays moved.
    std::int32_t DataInizio = 0;
    std::int32_t DataFine = 0;
    double SaldoIniziale = 0; // in euro at the start
    double SaldoFinale = 0;   // in euro at the end, when positive
    double GuadagnoTotale = 0;
    double CapitaleMedio = 0;
    double GuadagnoGiorno = 0;
    double TassoTir = 0;
};

// The list the extraction shows and the print reads: a team's rows client
// by client, one client's rows by date.
QString TestoListaInteressi(bool squadra);

// The module of the print: ModuloDiStampa("InterMed"), and for a team (any
// caption in the label, a number or not) the same name with "1" before
// ".rpt".
QString ModuloInteressi(const QString &squadra);

// How the computation ended.
struct CalcoloInteressi
{
    // The rows to stage; none when there is nothing to print.
    std::optional<DatiReport> righe;
    // What to tell the user: a field not given, a currency without a rate,
    // a selection that cannot be read. Empty when nothing is to be said
    // (an empty selection is not told).
    QString avviso;
};

// Reads the fields, then the selection, and works out every field of the
// print's rows; stato takes the values the screen keeps. Nothing is staged.
CalcoloInteressi CalcolaInteressi(const CampiInteressi &campi, StatoInteressi &stato);

// The whole print: the computation, its message if any, the staging (a
// failing step says its words and prints nothing), the module, Gstampe.
// False when nothing was printed.
bool StampaInteressi(const CampiInteressi &campi, StatoInteressi &stato);

} // namespace sorvane
