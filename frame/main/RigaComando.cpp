#include "frame/main/RigaComando.h"

#include "frame/core/Valore.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sorvane {

namespace {

const QChar Barra = QLatin1Char('|');

// Stands in for the operator of a run by hand, until the INI names one.
const QString OperatoreProva = QStringLiteral("PROVA");

std::int16_t In16Bit(double v)
{
    constexpr double minimo = std::numeric_limits<std::int16_t>::min();
    constexpr double massimo = std::numeric_limits<std::int16_t>::max();
    if (!std::isfinite(v))
        return 0;
    return static_cast<std::int16_t>(std::clamp(v, minimo, massimo));
}

// Takes the field up to the next "|" out of the line. The last field (no
// "|" left) goes through the numeric reading, so that letters read "0".
QString ProssimoCampo(QString &riga)
{
    const qsizetype barra = riga.indexOf(Barra);
    QString campo;
    if (barra < 0) {
        campo = QString::number(Val(riga.trimmed()), 'g', 17);
        riga.clear();
    } else {
        campo = riga.left(barra).trimmed();
        riga = riga.mid(barra + 1).trimmed();
    }
    return campo;
}

std::optional<int> Coordinata(const QString &campo)
{
    if (campo.isEmpty() || !IsNumeric(QVariant(campo)))
        return std::nullopt;
    return In16Bit(std::nearbyint(CDbl(QVariant(campo))));
}

} // namespace

ParametriAvvio SpezzaRigaComando(const QString &riga)
{
    ParametriAvvio p;
    QString resto = riga;
    resto.remove(QLatin1Char('"'));

    const qsizetype prima = resto.indexOf(Barra);
    if (prima < 0) {
        p.Operatore = OperatoreProva;
        resto = QStringLiteral("9");
        p.ModoProva = true;
    } else {
        p.Operatore = resto.left(prima);
        resto = resto.mid(prima + 1).trimmed();
    }
    p.Operatore = p.Operatore.toUpper();

    const qsizetype barra = resto.indexOf(Barra);
    if (barra < 0) {
        p.IndiceMenu = In16Bit(std::trunc(Val(resto.trimmed())));
        resto.clear();
    } else {
        p.IndiceMenu = In16Bit(std::trunc(Val(resto.left(barra).trimmed())));
        resto = resto.mid(barra + 1).trimmed();
    }
    p.OffsetX = Coordinata(ProssimoCampo(resto));
    p.OffsetY = Coordinata(ProssimoCampo(resto));

    if (p.IndiceMenu < 0) {
        p.ModoProva = true;
        p.IndiceMenu = 9;
    }
    return p;
}

MisureSchermo MisuraSchermo(int larghezzaTwips, int altezzaTwips)
{
    MisureSchermo m;
    m.LarghezzaMax = larghezzaTwips + 120;
    m.AltezzaMax = altezzaTwips + 120;
    m.LarghezzaSchermo = larghezzaTwips;
    m.AltezzaSchermo = altezzaTwips;
    if (larghezzaTwips > 13000) {
        m.LarghezzaSchermo = 12120;
        m.AltezzaSchermo = 9120;
    }
    return m;
}

Posizione PosizionaCornice(Posizione offset, int larghezzaCornice, int larghezzaMax)
{
    if (offset.x + larghezzaCornice > larghezzaMax)
        offset.x = larghezzaMax - larghezzaCornice;
    if (offset.y + larghezzaCornice > larghezzaMax)
        offset.y = larghezzaMax - larghezzaCornice;
    return offset;
}

} // namespace sorvane
