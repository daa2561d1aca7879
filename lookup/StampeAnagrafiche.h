#pragma once

// The two prints of the client search, apart from its window. Both stage
// the clients found in `PrtClienti`, whole rows in the grid's order, for
// the suite's programs that print from there; the program's own modules
// read the same clients from `PrtCorpo`, and the criteria from `PrtTesta`:
//
// - "CliTel", the phone list: every client found, one body row each;
// - "CliEtic", the address labels: one label per name and address (a name
//   is taken without the "*" and "=" marks that end it), passed through
//   `WPrtClienti`; a body row holds a row of three labels of the sheet.

#include "lookup/RicercaAnagrafiche.h"
#include "reports/DatiReport.h"

#include <QString>

namespace sorvane {

inline const QString ModuloTelefoni = QStringLiteral("CliTel");
inline const QString ModuloEtichette = QStringLiteral("CliEtic");

// The labels of a sheet: three across, eight down.
constexpr int EtichettePerRiga = 3;
constexpr int RigheEtichettePerFoglio = 8;

// A name as a label prints it: without the trailing "*" and "=" marks (and
// the blanks among them).
QString NomeEtichetta(const QString &ragsoc);

// Empties PrtTesta, PrtClienti and WPrtClienti and stages the clients of
// the module in PrtClienti, in one transaction. A failure is told with the
// step's words and the engine's, and answers false.
bool PreparaClienti(const QString &modulo, const CriteriAnagrafiche &criteri,
                    const OrdineAnagrafiche &ordine);

// The module's rows from what PrtClienti holds, with the criteria in the
// head row: TCampo1 to TCampo10 the boxes 1 to 10, TCampo11 the action,
// TCampo12 "CHIUSI", TCampo13 "ABBINATI", TCampo14 "IN GRUPPO" when asked,
// TCampo15 and TCampo16 the boxes 11 and 12, TCampo17 the months asked.
DatiReport RigheClienti(const QString &modulo, const CriteriAnagrafiche &criteri,
                        const QString &testoAzione);

// The whole print: staged, then its module printed. False when nothing was.
bool StampaClienti(const QString &modulo, const CriteriAnagrafiche &criteri,
                   const OrdineAnagrafiche &ordine, const QString &testoAzione);

} // namespace sorvane
