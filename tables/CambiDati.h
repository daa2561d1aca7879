#pragma once

// The exchange screen's list: one row per currency of `TabNazioni` that the
// screen shows (GesCmb above 0, in GesCmb order), with its rate against one
// euro on a day, held in memory so that the grid never reads the files while
// it paints. The rates of a day are read once, one index seek per currency;
// the whole list is written back in one transaction.
//
// Nothing here shows a message: failures return false with the sentence
// the user is to read.

#include "store/Recordset.h"

#include <QList>
#include <QString>

#include <array>
#include <cstdint>

namespace sorvane {

// The screen's three uses, chosen by the caller before showing it.
enum : std::uint8_t {
    CambiAreaEuro = 1,  // the euro-area currencies, fixed at 01/01/1999
    CambiExtraEuro = 2, // the other currencies, any day
    RicercaValute = 3,  // every currency, as a picker from a currency field
};

// What a caller hands the screen, and what it gets back in
// tabelle().CodiceCercato.
struct StatoGesCambi
{
    std::uint8_t ModoCambi = RicercaValute;
    double DataCambi = 0; // the day of interest, a day number
};

StatoGesCambi &gesCambi();

// 01/01/1999: the euro-area currencies keep their one rate under this day.
constexpr int GiornoAreaEuro = 36161;

// Columns of the list, as the grid shows them.
enum ColonnaCambi : int {
    ColCodiceMoneta = 0,
    ColDescrizione = 1,
    ColRapporto = 2,   // the rate as text: the only column the user edits
    ColNonDelGiorno = 3, // blank: stored for this very day; "N": older or none
    ColVariazione = 4, // percent change against the stored rate, after an edit
    ColOriginale = 5,  // the stored rate: the comparison base
    ColonneCambi = 6,
};

using RigaCambi = std::array<QString, ColonneCambi>;

QString TitoloCambi(std::uint8_t modo);
QString IntestazioneCambi(int colonna);
// The query of the list: the shown currencies of the mode, in their order.
QString SqlValute(std::uint8_t modo);
// A rate as the list writes it, "#,##0.000000".
QString TestoRapporto(double valore);
// The number a rate's text holds; anything that is no number is 0.
double ValoreRapporto(const QString &testo);

class ElencoCambi
{
public:
    const QList<RigaCambi> &righe() const { return m_righe; }
    int size() const { return int(m_righe.size()); }
    const QString &cella(int riga, int colonna) const { return m_righe[riga][colonna]; }
    // The rate was stored for the very day of the list.
    bool delGiorno(int riga) const { return m_righe[riga][ColNonDelGiorno].isEmpty(); }

    // The currencies of the mode, the other columns blank.
    bool caricaValute(std::uint8_t modo, QString *errore);
    // The rates on giorno: the newest row of cambi (TabCambi on "primaria")
    // at or before it, of the same currency.
    void caricaCambi(Recordset &cambi, double giorno);
    // A rate typed in the grid: text that is no number becomes "0"; the
    // change against a stored rate above 0 goes into VAR. %.
    void modificaRapporto(int riga, const QString &testo);
    // Row da moves to place a, the rows between shifting by one.
    void sposta(int da, int a);

    // Writes every row's rate for giorno in one transaction: a rate above 0
    // adds or changes that day's row, any other removes it. All or nothing.
    bool conferma(Recordset &cambi, double giorno, QString *errore) const;
    // Stores the list's order in GesCmb, in one transaction.
    bool salvaOrdine(QString *errore);

private:
    QList<RigaCambi> m_righe;
    // GesCmb of the rows as they were read, in order: the places the list
    // holds. A mode that shows part of the currencies reorders them within
    // their own places, and the others keep theirs.
    QList<qint64> m_posti;
};

} // namespace sorvane
