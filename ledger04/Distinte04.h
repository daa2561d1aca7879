#pragma once

// The 04 ledger, `Distinte04`: one row per movement with one product text.
// Rows copied from the slips keep the slips' numbers, below 800000000;
// rows typed on the ledger's own screens take 800000001 upward and show
// their number less 800000000; 999999999 is kept for the opening balance of
// the interest computation. The extraction, the numbering and the writes of
// the ledger's screens, each write one transaction; no messages here.

#include "distinte/Gestione.h"

#include <QString>
#include <cstdint>
#include <optional>

namespace sorvane {

class Recordset;

inline constexpr std::int32_t BaseCodiceManuale = 800000000;
inline constexpr std::int32_t CodiceRiservato04 = 999999999;

// Columns of the ledger's lists, in grid order.
enum ColonnaLista04 : int {
    Lista04Prg = 0,         // dstCodice
    Lista04Data = 1,        // dstData
    Lista04Nominativo = 2,  // CliRagsoc
    Lista04Operazione = 3,  // dstCodP
    Lista04Causale = 4,     // Descrizione
    Lista04Moneta = 5,      // dstMoneta
    Lista04Importo = 6,     // dstImporto
    ColonneLista04 = 7,
};

struct RigaDistinta04
{
    std::int32_t dstCodice = 0;
    QString dstDitta = QStringLiteral(" ");
    std::int32_t dstData = 0;
    std::int32_t dstCliente = 0;
    QString dstCausale = QStringLiteral(" ");
    QString dstMoneta = QStringLiteral(" ");
    double dstImporto = 0;
    QString dstCodP = QStringLiteral(" ");
};

// The number a user reads for a row: a typed row's less 800000000.
std::int32_t NumeroMostrato04(std::int32_t codice);

// The number of the next typed row: after the highest below 999999999, and
// never below 800000001. One seek on "primaria"; the recordset moves.
std::int32_t ProssimoCodice04(Recordset &distinte04);

// The row of that number on a table open on "primaria"; nothing when absent.
std::optional<RigaDistinta04> CercaRiga04(Recordset &distinte04, std::int32_t codice);

// The extraction: the period, the client and the firm of the slips'
// management (GesDist), with no closed mark on this ledger. Ordered by date
// and number.
CondizioneDistinte CondizioneEstrazione04(const FiltroDistinte &filtro, std::int32_t oggi);
// Only the rows of one client (0: all), as the balances screen lists them.
CondizioneDistinte CondizioneCliente04(std::int32_t cliente);
QString OrdineDistinte04(); // " ORDER BY dstData, dstCodice"
// The grid's query: one column per ColonnaLista04.
QString QueryLista04(const CondizioneDistinte &condizione);
// Every field of the row with the client's name, the reason's words and
// its sign, for the statement.
QString QueryStampa04(const CondizioneDistinte &condizione);

// The row written under its number: added when the number is new, changed
// when it is there.
EsitoGestione SalvaRiga04(Recordset &distinte04, const RigaDistinta04 &riga);
// A new typed row: the next number (left in riga.dstCodice) and the row,
// in one transaction.
EsitoGestione AggiungiRiga04(Recordset &distinte04, RigaDistinta04 &riga);
// Deletes the row; on a failure the words are "NON CANCELLO IL MOVIMENTO  "
// and then the engine's.
EsitoGestione EliminaRiga04(Recordset &distinte04, std::int32_t codice);

} // namespace sorvane
