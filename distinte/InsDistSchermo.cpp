// The shared screen rules on the entry screen's fields. Kept apart: the
// kinds of field of the screen rules and the slip's field indices share
// names.

#include "distinte/InsDist.h"

#include "frame/ui/Schermo.h"

#include <QLineEdit>

namespace sorvane {

void InsDist::installaSchermo()
{
    // Day, month, year, client code and reason take digits; 18 and 20, the
    // amount and the expenses, take an amount.
    QList<QLineEdit *> campi(m_txt.begin() + 1, m_txt.end());
    QList<std::uint8_t> modi;
    for (int i = 1; i <= 20; ++i) {
        if (i <= 4 || i == 6)
            modi.append(ModoCifre);
        else if (i == 18 || i == 20)
            modi.append(ModoImporto);
        else
            modi.append(ModoTesto);
    }
    m_schermo = new Schermo(this);
    m_schermo->campi(campi, modi);
    m_schermo->tastoGiu = [this](int codice, int maschera) { return tastoGiu(codice, maschera); };
}

} // namespace sorvane
