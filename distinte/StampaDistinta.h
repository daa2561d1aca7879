#pragma once

// The slip print: the movements of the management list's last extraction
// staged into PrtTesta and PrtCorpo, then the slip per firm ("DistXdit") or,
// when the filter names a client, the slip per client ("DistXcli").

#include "distinte/Gestione.h"
#include "reports/DatiReport.h"

namespace sorvane {

// The staged rows of the print without running it: the head from the
// filter (the firm's five fields read from `Societa` when one is chosen),
// one body row per row of the query, the total in TNumero1. Nothing when
// the extraction has no rows; *errore gets the engine's words when the
// query fails.
std::optional<DatiReport> RigheStampaDistinta(const CondizioneDistinte &ultima,
                                              const FiltroDistinte &filtro,
                                              QString *errore = nullptr);

// The firm's block of a print's head, TCampo4 to TCampo8: blanks, then the
// firm's name, address, CAP, town and province when a firm of that name
// (trimmed) has a card. False only when the lookup itself failed, with the
// engine's words in *errore.
bool ScriviDitta(const QString &ditta, QVariantMap &testa, QString *errore);

// The whole print: an empty extraction leaves without a word; a failed
// staging step is told by its message and prints nothing, and leaves its
// step in CodiceStop (a firm card that cannot be read fails the writing
// step); after a print CodiceStop is 0. A query that cannot run is told in
// the engine's words. False when nothing was printed.
bool StampaDistinta(const CondizioneDistinte &ultima, const FiltroDistinte &filtro);

} // namespace sorvane
