#pragma once

// The working list of the average-interest screen, `WInterMedi`: the rows of
// `Distinte04` of one client, or of a whole team, over a period and a firm,
// copied afresh at each extraction and then read by the print. Beside them
// stands the opening-balance row, number 999999999, reason "900", which the
// screen rewrites as its fields change and which never reaches the ledger.
// Also the checks of the screen's fields where they differ from the 04
// ledger's: the two balances' currencies and amounts, the client at 20 and
// 21. No widgets and no messages below the screen's own routine.

#include "distinte/ControllaCampo.h"
#include "distinte/Gestione.h"

#include <QString>
#include <cstdint>

namespace sorvane {

struct ControlloCampi4;

enum CampoInterMedi : int {
    CampoIMMonetaIniziale = 16,
    CampoIMSaldoIniziale = 17,
    CampoIMMonetaFinale = 18,
    CampoIMSaldoFinale = 19,
    CampoIMCodiceCliente = 20,
    CampoIMNomeCliente = 21,
};

inline constexpr auto CausaleSaldoIniziale = "900";

// What the screen keeps between its extraction, the balance row and the
// print.
struct StatoInterMedi
{
    std::int32_t ClienteEstratto = 0;
    std::int32_t DataInizio = 0; // 0: from the beginning
    std::int32_t DataFine = 0;   // today when the fields hold no date
    std::int32_t PrimoCliente = 0;
    std::int32_t PrimaData = 0;
};

// The extraction's filter, as the fields hold it.
struct FiltroInterMedi
{
    QString dal; // the from-date fields joined by "/"
    QString al;
    QString cliente;  // the client code field
    std::int32_t squadra = 0; // above 0: the team's rows, every member's
    QString ditta;            // blank: every firm
    std::int32_t oggi = 0;
};

// Empties WInterMedi and fills it with the filter's rows that carry an
// amount, in one transaction; the period and the client go to `stato`.
// The first row's client and date follow (PrimoMovimento); the balance row
// is the caller's to write.
EsitoGestione EstraiInterMedi(const FiltroInterMedi &filtro, StatoInterMedi &stato);

// The screen's list of WInterMedi, one column per ColonnaLista04, in the
// order the print reads the rows: a team's client by client.
QString QueryListaInterMedi(bool squadra);

// The client and date the balance row takes when the fields leave them
// open: the earliest row's. A typed start date and client win.
void PrimoMovimento(StatoInterMedi &stato);

// The opening balance as the fields hold it.
struct SaldoIniziale
{
    QString moneta;  // txt(16)
    QString importo; // txt(17), signed as typed
    QString dal;     // the from-date fields joined by "/"
    QString cliente; // the client code field, for a client not yet known
    QString ditta;
};

// Writes the balance row, or deletes it for an amount of 0 (or no amount),
// in one transaction. Its date is the from date, else the first row's; its
// client the first row's, else the field's, with the name cut to 35.
EsitoGestione ScriviSaldoIniziale(const SaldoIniziale &saldo, StatoInterMedi &stato);

// The field checks of the screen: the movement and the period as the 04
// ledger's, the balances' currencies (a rate on the date beside them) and
// amounts, the client at 20 and 21 as the ledger's filter client. Answers
// (and leaves) sessione().CodiceStop, 0 when good.
struct ControlloInterMedi
{
    ControlloInterMedi(CampiMaschera &campi, ControlloCampi4 &movimento);

    int ControllaCampoIM(int indice);
    // The currency a blank balance currency takes on gaining focus: lire for
    // a date before 2002 in the fields beside it, else the base currency.
    QString MonetaProposta(int indice) const;
    // The date beside a balance's currency, as text.
    QString DataDellaMoneta(int indice) const;

    CampiMaschera &txt;
    ControlloCampi4 &movimento;
    double CambioCampo = 0; // the last rate looked up
};

// The words of a code of these checks; empty for a code without.
QString TestoErroreCampoIM(int codice);
// Shows the message of sessione().CodiceStop in a stop box titled
// "KELVAR - ERRORE N. " and the code; answers the field to get the focus.
int MostraErroreCampoIM();

} // namespace sorvane
