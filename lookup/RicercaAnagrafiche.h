#pragma once

// The statement of the client search (ChkCliC), apart from its window: the
// criteria as plain values in, the text with its bound values out. Every
// typed text is bound, so that an apostrophe or a double quote in any box
// searches for itself. A box matches by its start ("*" and "?" typed in a
// box still stand for any run of characters and any one character), the
// sex box exactly; closed clients are shown instead of the open ones, never
// with them, so the statement always has its WHERE.

#include "lookup/CercaNomi.h"

#include <QString>
#include <QVariantList>

#include <array>
#include <cstdint>

namespace sorvane {

// The criteria's text boxes, Btxt(1) to Btxt(12), in the statement's order.
enum BoxAnagrafica : int {
    BoxPartitaIva = 1,
    BoxCodiceFiscale = 2,
    BoxNome = 3,
    BoxCap = 4,
    BoxProvincia = 5,
    BoxNazione = 6,
    BoxSesso = 7,
    BoxTelefono = 8,
    BoxAttivita = 9,
    BoxRelazione = 10,
    BoxReferenze = 11,
    BoxRiconosci = 12,
    NumeroBoxAnagrafica = 12,
};
constexpr int MesiVisite = 12;

// The result grid's columns; a column's number is also its sort number.
enum ColonnaAnagrafica : int {
    AnaCodice = 0,
    AnaAbbinamento,
    AnaGruppo,
    AnaRagSoc,
    AnaIndirizzo,
    AnaCap,
    AnaLocalita,
    AnaProvincia,
    AnaNazione,
    AnaSesso,
    AnaTelefono,
    AnaTelefono1,
    AnaTelefono2,
    AnaFax,
    AnaCodiceFiscale,
    AnaContoCorrente,
    AnaAttivita,
    AnaRelazione,
    AnaReferenze,
    AnaRiconosci,
    NumeroColonneAnagrafica,
};

// The field behind a box (1 to 12) and behind a grid column.
QString CampoBox(int box);
QString CampoColonna(int colonna);
// The grid's heading of a column, as the screen shows it.
QString TitoloColonna(int colonna);

struct CriteriAnagrafiche
{
    std::array<QString, NumeroBoxAnagrafica + 1> testi; // [1] to [12]; [0] unused
    std::array<bool, MesiVisite> mesi{};                // January first
    QString azione;   // an action's code; blank: no action asked for
    bool abbinati = false; // "Abbin."
    bool chiusi = false;   // "Chiusi"
    bool gruppi = false;   // "Gruppi"
};

// The grid's order: the sort number (a column) and its direction, the name
// ascending at the start.
struct OrdineAnagrafiche
{
    std::uint8_t colonna = AnaRagSoc;
    std::uint8_t verso = VersoCrescente;
};

// The visits' twelve characters, "S" for a month asked for and "?" for the
// others, and the pattern that matches them in the stored field, whose
// thirteenth character is a blank; empty when no month is asked for.
QString MesiDelleVisite(const std::array<bool, MesiVisite> &mesi);
QString ModelloVisite(const std::array<bool, MesiVisite> &mesi);

// A typed text as a LIKE pattern (with ESCAPE '\'): "*" any run, "?" any
// one character, every other character for itself, "%" and "_" included.
QString ModelloLike(const QString &testo);

// The FROM, joins and WHERE part with its values, and the ORDER BY clause.
SqlRicerca CondizioniAnagrafiche(const CriteriAnagrafiche &criteri);
QString OrdineSql(const OrdineAnagrafiche &ordine);

// The grid's statement: the twenty columns of the grid, by the criteria,
// in the order asked for. The print's: whole client rows.
SqlRicerca SqlAnagrafiche(const CriteriAnagrafiche &criteri, const OrdineAnagrafiche &ordine);
SqlRicerca SqlRigheClienti(const CriteriAnagrafiche &criteri, const OrdineAnagrafiche &ordine);

// Every column of a client's row, in the table's order, each after
// `prefisso`: the print's staging tables have the same columns, and naming
// them keeps out whatever else the engine adds to a row.
QString CampiClienti(const QString &prefisso = {});

} // namespace sorvane
