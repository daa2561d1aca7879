#pragma once

// Numbers as the export writes them: as the locale writes them with 15
// significant digits and no group separator, its marks read once for a
// whole file. A whole number is written bare; a fraction whose shortest
// exact form has at most 15 digits is written from those digits, which are
// then the very digits of the rounding to 15; the rest, and locales with
// digits or signs of their own, go through QLocale.

#include <QLocale>
#include <QString>

namespace sorvane {

class FormatoNumeri
{
public:
    FormatoNumeri();

    // The ASCII form of n in testo (room for 32); -1 when only the locale
    // can write it.
    int ascii(double n, char *testo) const;
    QString testo(double n) const;

private:
    QLocale m_locale;
    bool m_semplice = false;
    char m_punto = '.';
};

} // namespace sorvane
