// The shared screen rules on the management screen's fields. Kept apart:
// the kinds of field of the screen rules and the slip's field indices share
// names.

#include "distinte/GesDist.h"

#include "frame/ui/Schermo.h"

#include <QLineEdit>

namespace sorvane {

void GesDist::installaSchermo()
{
    // The dates, the client codes and the reason take digits; 18 and 20, the
    // amount and the expenses, take an amount.
    auto modo = [](int i) -> std::uint8_t {
        if (i == 18 || i == 20)
            return ModoImporto;
        return i <= 4 || i == 6 || (i >= 21 && i <= 27) ? ModoCifre : ModoTesto;
    };
    QList<std::uint8_t> modi;
    for (int i = 1; i < m_txt.size(); ++i)
        modi.append(modo(i));
    m_schermo = new Schermo(this);
    m_schermo->campi(m_txt.mid(1), modi);
    m_schermo->tastoGiu = [this](int codice, int maschera) { return tastoGiu(codice, maschera); };
}

} // namespace sorvane
