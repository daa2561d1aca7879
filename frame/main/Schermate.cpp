#include "frame/main/Schermate.h"

#include <QMap>

namespace sorvane {

namespace {

QMap<int, FabbricaSchermo> &registro()
{
    static QMap<int, FabbricaSchermo> r;
    return r;
}

} // namespace

void RegistraSchermo(int indice, FabbricaSchermo fabbrica)
{
    registro().insert(indice, std::move(fabbrica));
}

FabbricaSchermo SchermoRegistrato(int indice)
{
    return registro().value(indice);
}

void AzzeraSchermi()
{
    registro().clear();
}

PreparazioneCornice CorniceDelMenu(int indice, bool modoProva)
{
    // The 300 twips more in ModoProva are the menu bar.
    const int barra = modoProva ? 300 : 0;
    switch (indice) {
    case 0:
    case 1:
    case 2:
    case 3:
    case 4:
        return {true, 0, 0, QString()};
    case 5:
        return {false, 9640, 4480 + barra, QStringLiteral("GESTIONE DITTE PER LE DISTINTE")};
    case 6:
        return {false, 4840, 4440 + barra, QStringLiteral("GESTIONE BANCHE PER LE DISTINTE")};
    case 7:
        return {false, 4700, 5140 + barra, QStringLiteral("GESTIONE CAUSALI PER LE DISTINTE")};
    default:
        return {};
    }
}

} // namespace sorvane
