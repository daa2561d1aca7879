#pragma once

// The program's locale is the system's, except that a C/POSIX system gets
// Italian. ImpostaLocaleProgramma() sets it as Qt's default once at start;
// tests pin another with QLocale::setDefault. Everything else reads QLocale().

#include <QChar>
#include <QLocale>
#include <QString>

namespace sorvane {

void ImpostaLocaleProgramma();

// The decimal separator of the program's locale: "," or ".".
QChar SeparatoreDecimale();

// The program's locale and its number separators, kept per thread and taken
// again only when QLocale::setDefault has changed the default: the grid asks
// for them once a cell, and a QLocale copy plus a pointer compare is all the
// check costs.
struct SeparatoriLocale
{
    QLocale locale;
    QString decimale;     // "," in Italian
    QString gruppo;       // "." in Italian
    QChar decimaleChar;   // the decimal separator when it is one character, else 0
    QChar gruppoChar;     // the same for the group separator
};
const SeparatoriLocale &LocaleCorrente();

} // namespace sorvane
