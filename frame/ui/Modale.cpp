#include "frame/ui/Modale.h"

#include <QDialog>

namespace sorvane {

namespace {
GestoreModale &gestore()
{
    static GestoreModale g;
    return g;
}
} // namespace

int EseguiModale(QDialog &dialogo)
{
    if (gestore())
        return gestore()(dialogo);
    return dialogo.exec();
}

void installaGestoreModale(GestoreModale g)
{
    gestore() = std::move(g);
}

} // namespace sorvane
