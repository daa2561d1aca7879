#pragma once

// The classic Format patterns the program uses. Numbers round half away from
// zero on their decimal digits as written with 15 significant digits, so
// Format(1.005, "#0.00") is "1.01" and Format(-2.5, "#0") is "-3"; a value
// that rounds to zero has no "-". Group and decimal separators come from the
// program's locale.
//
// Number patterns are read by one engine: "0" prints a digit always, "#" only
// when it is significant (so "#,###" of 0 is "" and "##.##" of 0 is the bare
// separator), "," between placeholders groups thousands, "," right before the
// point divides by a thousand, the first "." is the decimal point, "%"
// multiplies by a hundred, text in double quotes or after "\" and any other
// character is printed as it is. Named: "Standard" ("#,##0.00"), "Fixed" ("0.00"),
// "Percent" ("0.00%"), "General Number" and "" (every significant digit).
// Infinities and NaN give "".
//
// Date patterns, on a day number (the fraction is the time of day): d dd ddd
// dddd, m mm mmm mmmm ("mmmm" the locale's month name, m/mm are minutes after
// an hour or before seconds), yy yyyy (y alone: day of the year), h hh, n nn,
// s ss; named "Long Date" (the locale's long date), "Long Time" ("hh:mm:ss"),
// "Short Time" ("hh:mm"). A day number outside 01/01/0100 - 31/12/9999 gives "".

#include <QString>
#include <QVariant>

namespace sorvane {

// A number in a number pattern; in a date pattern the number is a day number.
QString Format(double valore, const QString &formato);

// Any value: numbers and numeric texts as above, QDate/QDateTime and date
// texts in date patterns, Null and Empty as "", any other text unchanged.
QString Format(const QVariant &valore, const QString &formato);

// Rounds through a format and reads back: Arrotonda(x, 0) is Format(x, "#0")
// read as a number, Arrotonda(x, 2) the same with "#0.00", and so on with
// "#0." and n zeros; the same double, without building the text. A negative
// n counts as 0.
double Arrotonda(double valore, int decimali);

} // namespace sorvane
