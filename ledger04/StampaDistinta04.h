#pragma once

// The statement of the 04 ledger, what the adviser hands to a client: the
// rows of the list in the list's order, one body row each, the head with
// the period, the firm and the client, and the foot with the totals split
// at the 01/01/2002 cut-over, in lire and in euro, each also converted.
// For a client in a team the foot also holds the other members' totals
// over the same period and firm, and the grand totals. The module is
// "DistXdit" without a client, "DistC04" with one, its team variant
// ("...1.rpt") when the team label shows anything.

#include "distinte/Gestione.h"
#include "reports/DatiReport.h"

#include <QString>
#include <cstdint>
#include <optional>

namespace sorvane {

// What the statement reads from the screen beside the list: the extraction
// the list shows (its first two values are the period's day numbers), the
// period's texts as joined then, and the firm, client and team as the
// fields hold them when the print is asked for.
struct SchermoEstratto04
{
    CondizioneDistinte estrazione;
    QString dataDal; // "d/m/yyyy", "//" when the fields were blank
    QString dataAl;
    QString ditta;         // the firm filter's text
    QString codiceCliente; // the client code field
    QString nomeCliente;   // the client name field
    QString squadra;       // the team label's caption

    // The client code's value as a whole number; 0: no client.
    std::int32_t cliente() const;
};

// Sums of rows by era and sign, each positive: the lire rows (before
// 2002) with a "+" reason and the others, the euro rows alike.
struct Totali04
{
    double piuLire = 0;
    double menoLire = 0;
    double piuEuro = 0;
    double menoEuro = 0;
};

// The amounts of rows walked in order. Before 01/01/2002 a row counts in
// lire, an euro amount at CambioLire, rounded to the lira. From then on it
// counts in euro, rounded to the cent; but a lire row of that time takes
// the lire value of the latest earlier row of the lire era that was walked
// (0 when none was), over CambioLire, and not its own amount.
class Importi04
{
public:
    struct Importo
    {
        double valore = 0;
        bool euro = false;
    };
    Importo Aggiungi(std::int32_t giorno, const QString &moneta, double importo, bool piu);
    const Totali04 &totali() const { return m_totali; }

private:
    double m_lire = 0;
    Totali04 m_totali;
};

// The team's part of the foot: the codes "( client, member, ... )" and the
// sums of the other members' rows of the period (and firm, when one is
// chosen), walked as the client's are. Empty text and zero sums without a
// team number; nothing when a table cannot be read (the words in *errore).
struct Gruppo04
{
    QString elenco;
    Totali04 totali;
};
std::optional<Gruppo04> SommaGruppo(const SchermoEstratto04 &schermo, QString *errore = nullptr);

// The staged rows without printing them. Nothing when the list is empty;
// nothing with *errore set when a table cannot be read.
std::optional<DatiReport> RigheEstratto04(const SchermoEstratto04 &schermo,
                                          QString *errore = nullptr);

// The report file: the module of "DistXdit" without a client; of
// "DistC04" with one, and with text in the team label that file's name cut
// in front of ".RPT" (any case) with "1.rpt" after it.
QString ModuloEstratto04(const SchermoEstratto04 &schermo);

// The whole print: an empty list leaves without a word; a failed step is
// told in its words, leaves its step in CodiceStop and prints nothing (the
// reading of the rows and the team belongs to the writing step). False
// when nothing was printed.
bool StampaDistinta04(const SchermoEstratto04 &schermo);

} // namespace sorvane
