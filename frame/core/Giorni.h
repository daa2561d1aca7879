#pragma once

// Day numbers: a date is the count of days from 30/12/1899 (day 0), so that
// 31/12/2001 is 37256 and 01/01/2002 is 37257. Columns holding a date keep
// that number.

#include <QDate>
#include <QString>
#include <optional>

namespace sorvane {

constexpr int GiornoEuro = 37257; // 01/01/2002, first day of the euro

int GiornoDaData(const QDate &data);
QDate DataDaGiorno(double giorno); // the fraction (time of day) is dropped

// Reads "d/m/y" (separators "/", "-" or "."), one or two digits for day and
// month, two or four for the year; two-digit years 00-29 are 2000-2029,
// 30-99 are 1930-1999. Only real calendar days. Leading and trailing blanks
// are allowed.
std::optional<QDate> LeggiData(const QString &testo);
bool IsDate(const QString &testo);

// Today's date as "dd/mm/yyyy".
QString OggiComeTesto();

} // namespace sorvane
