#include "frame/core/Formato.h"

namespace sorvane {

QString Format(double valore, const QString &formato) { return QString::number(valore); }
QString Format(const QVariant &valore, const QString &formato) { return valore.toString(); }
double Arrotonda(double valore, int decimali) { return valore; }

} // namespace sorvane
