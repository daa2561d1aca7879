#include "frame/core/Campi.h"

#include "frame/core/Giorni.h"
#include "frame/core/Valore.h"

#include <QDateTime>

namespace sorvane {

QVariant DataDaCampo(const QVariant &valore)
{
    if (IsEmpty(valore) || IsNull(valore))
        return QVariant();
    switch (valore.typeId()) {
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return CDbl(valore);
    case QMetaType::QString: {
        const QString t = valore.toString();
        if (t.trimmed().isEmpty())
            return QVariant();
        const qsizetype barra = t.indexOf(QLatin1Char('/'));
        if (barra >= 0 && t.indexOf(QLatin1Char('/'), barra + 1) > barra) {
            if (auto d = LeggiData(t))
                return double(GiornoDaData(*d));
            return QVariant();
        }
        return IsNumeric(valore) ? valore : QVariant();
    }
    default:
        return IsNumeric(valore) ? valore : QVariant();
    }
}

QString TestoDaCampo(const QVariant &valore, const QString &predefinito)
{
    const QString difetto = predefinito.trimmed().isEmpty() ? QStringLiteral(" ") : predefinito;
    if (IsEmpty(valore) || IsNull(valore))
        return difetto;
    const QString t = valore.toString();
    if (t.trimmed().isEmpty() || t.startsWith(QChar(0)))
        return difetto;
    return t;
}

} // namespace sorvane
