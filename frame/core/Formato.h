#pragma once

// The classic Format patterns the program uses. Numbers round half away from
// zero on their decimal digits as written with 15 significant digits, so
// Format(1.005, "#0.00") is "1.01" and Format(-2.5, "#0") is "-3". Group and
// decimal separators come from the program's locale.
//
// Number patterns: "#0", "#0.00", "#,###,###,##0", "#,###,###,##0.00",
// "#,###,###,###,###", "##,###,###,###.##", "#,##0.000000", "#0.000",
// "#,###,###,##0.000", "0.000", "00", "0000", "Standard", and the patterns
// "#,###,###,##0." followed by zeros and "###,###,##0.000" that the decimals
// setting builds. Date patterns: "dd", "mm", "yyyy", "dd/mm/yy",
// "dd/mm/yyyy", "dd mmmm yyyy", "Long Date", "Long Time".

#include <QString>
#include <QVariant>

namespace sorvane {

// A number in a number pattern; in a date pattern the number is a day number.
QString Format(double valore, const QString &formato);

// Any value: numbers and numeric texts as above, QDate/QDateTime and date
// texts in date patterns, Null and Empty as "", any other text unchanged.
QString Format(const QVariant &valore, const QString &formato);

// Rounds through a format and reads back: Arrotonda(x, 0) is Format(x, "#0")
// read as a number, Arrotonda(x, 2) the same with "#0.00".
double Arrotonda(double valore, int decimali);

} // namespace sorvane
