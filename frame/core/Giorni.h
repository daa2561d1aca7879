#pragma once

// Day numbers: a date is the count of days from 30/12/1899 (day 0), so that
// 31/12/2001 is 37256 and 01/01/2002 is 37257. Columns holding a date keep
// that number. The fraction of a day number is the time of day; before day 0
// the fraction still counts forward from midnight, so -1.25 is 29/12/1899
// at 06:00, as the classic date type has it.

#include <QDate>
#include <QDateTime>
#include <QString>
#include <optional>

namespace sorvane {

constexpr int GiornoEuro = 37257; // 01/01/2002, first day of the euro

// The classic date type runs from 01/01/0100 to 31/12/9999.
constexpr int GiornoMinimo = -657434;
constexpr int GiornoMassimo = 2958465;

int GiornoDaData(const QDate &data); // an invalid date gives 0
// The day number of a date and time, the time as the fraction.
double GiornoDaDataOra(const QDateTime &dataOra);
// The fraction (time of day) is dropped; a number outside the classic range
// (or not a number) gives an invalid date.
QDate DataDaGiorno(double giorno);

// Reads "d/m/y" (separators "/", "-" or ".", the same one twice), one or two
// digits for day and month, one, two or four for the year; years of one or
// two digits 0-29 are 2000-2029, 30-99 are 1930-1999 ("1/2/3" is 01/02/2003);
// four-digit years from 0100 to 9999. Only real calendar days; no other
// order and no other shape (three-digit years are not dates). Leading and
// trailing blanks are allowed.
std::optional<QDate> LeggiData(const QString &testo);
bool IsDate(const QString &testo);

// Today's date as "dd/mm/yyyy".
QString OggiComeTesto();

} // namespace sorvane
