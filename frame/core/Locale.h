#pragma once

// The program's locale is the system's, except that a C/POSIX system gets
// Italian. ImpostaLocaleProgramma() sets it as Qt's default once at start;
// tests pin another with QLocale::setDefault. Everything else reads QLocale().

#include <QChar>
#include <QLocale>

namespace sorvane {

void ImpostaLocaleProgramma();

// The decimal separator of the program's locale: "," or ".".
QChar SeparatoreDecimale();

} // namespace sorvane
