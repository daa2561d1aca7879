#pragma once

// The rules of the calendar pop-up that need no window: what the after-change
// routine decides from the calendar's value, and the list of remembered dates
// kept in the local INI (`Date` of PARAMETRI, each date ended by "|").

#include <QDate>
#include <QString>
#include <QStringList>

namespace sorvane {

// A click on the selected day would leave the calendar without a day: the
// routine then steps away and back. An invalid valore is a calendar with no
// day selected.
bool DaRiselezionare(const QDate &valore, int giornoSelezionato);
// The day stepped through: 1, or 2 when the selected day is 1 itself, since
// setting the day it already holds would not redraw the selection.
int GiornoDiPassaggio(int giornoSelezionato);
// The selected day put on the calendar's month, cut to the month's length.
QDate GiornoNelMese(int anno, int mese, int giorno);

// MsgData: the date in words, "dd mmmm yyyy"; empty without a day.
QString TestoDataScelta(const QDate &valore);
// The exit button: "&CONFERMA" with a day, "&USCITA" without.
QString TestoUscita(const QDate &valore);
// "&OGGI" hides only while the calendar shows today.
bool OggiVisibile(const QDate &valore, const QDate &oggi);

// The entries of the remembered list: the trimmed pieces that are dates;
// anything else is dropped without a word.
QStringList LeggiElencoDate(const QString &testo);
// The list as it is stored: every entry followed by "|".
QString TestoElencoDate(const QStringList &voci);
// DataDefaultTmp as the index to select: used when it lies inside the list,
// else 0; -1 for an empty list.
int IndiceDateIniziale(const QString &valore, int conteggio);

// Where a date picked for the list goes: the index of an entry equal to it
// (presente), else before the first later entry, or at the end. So the list
// stays in date order, without repeats.
struct PostoData
{
    int indice = 0;
    bool presente = false;
};
PostoData PostoInElenco(const QStringList &voci, const QDate &data);

} // namespace sorvane
