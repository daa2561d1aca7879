#pragma once

// Values read from files and tables are variants: Null (a database NULL),
// Empty (nothing at all), a number, a date or a text. QVariant carries all of
// them: Empty is an invalid QVariant, Null is a valid one that isNull()
// (what QSqlQuery hands back for a NULL column, or Null() below).

#include <QString>
#include <QVariant>

namespace sorvane {

inline QVariant Null() { return QVariant::fromValue(nullptr); }
inline QVariant Empty() { return QVariant(); }
inline bool IsNull(const QVariant &v) { return v.isValid() && v.isNull(); }
inline bool IsEmpty(const QVariant &v) { return !v.isValid(); }

// Reads a number written by a person: first with the program's locale
// (group separators allowed where they belong: "1.234" is 1234 in Italian),
// then with "." as decimal separator and no groups ("12.34" is 12.34 in
// Italian too). Leading and trailing blanks are allowed; nothing else is, nor
// "inf" and "nan", nor a number too large for a double.
bool LeggiNumero(const QString &testo, double *valore);

// True when the value is a number, or a text that LeggiNumero reads.
// Empty counts as numeric (it reads as 0); Null does not.
bool IsNumeric(const QVariant &v);

// The number a value stands for: numbers as they are, numeric texts through
// LeggiNumero, dates as their day number; anything else 0.
double CDbl(const QVariant &v);

// The numeric prefix of a text, "." as decimal point, in any locale; blanks
// anywhere are skipped, an exponent starts with "E" or "D": "12abc" is 12,
// "abc" is 0, " -3.5x" is -3.5, "1 2" is 12. A number too large for a double
// gives 0.
double Val(const QString &testo);

} // namespace sorvane
