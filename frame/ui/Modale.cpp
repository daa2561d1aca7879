#include "frame/ui/Modale.h"

#include <QApplication>
#include <QDialog>

namespace sorvane {

namespace {
GestoreModale &gestore()
{
    static GestoreModale g;
    return g;
}
} // namespace

RitornoAllaFinestra::RitornoAllaFinestra() : m_finestra(QApplication::activeWindow()) {}

RitornoAllaFinestra::~RitornoAllaFinestra()
{
    if (!m_finestra || !m_finestra->isVisible() || QApplication::activeWindow() == m_finestra)
        return;
    QApplication::setActiveWindow(m_finestra);
    m_finestra->activateWindow();
}

int EseguiModale(QDialog &dialogo)
{
    if (gestore())
        return gestore()(dialogo);
    RitornoAllaFinestra ritorno;
    return dialogo.exec();
}

void installaGestoreModale(GestoreModale g)
{
    gestore() = std::move(g);
}

} // namespace sorvane
