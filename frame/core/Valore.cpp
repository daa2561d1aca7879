#include "frame/core/Valore.h"

#include "frame/core/Giorni.h"
#include "frame/core/Locale.h"

#include <QDate>
#include <QDateTime>

namespace sorvane {

void ImpostaLocaleProgramma()
{
    const QLocale sistema = QLocale::system();
    if (sistema.language() == QLocale::C)
        QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    else
        QLocale::setDefault(sistema);
}

QChar SeparatoreDecimale()
{
    // The classic test: 1/2 written as text reads "0.5" or "0,5".
    const QString s = QLocale().toString(0.5);
    return s.contains(QLatin1Char('.')) ? QLatin1Char('.') : QLatin1Char(',');
}

bool LeggiNumero(const QString &testo, double *valore)
{
    const QString t = testo.trimmed();
    if (t.isEmpty())
        return false;
    bool ok = false;
    double v = QLocale().toDouble(t, &ok);
    if (!ok)
        v = QLocale::c().toDouble(t, &ok);
    if (ok && valore)
        *valore = v;
    return ok;
}

bool IsNumeric(const QVariant &v)
{
    if (IsEmpty(v))
        return true;
    if (IsNull(v))
        return false;
    switch (v.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::UChar:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::Bool:
        return true;
    case QMetaType::QString:
        return LeggiNumero(v.toString(), nullptr);
    default:
        return false;
    }
}

double CDbl(const QVariant &v)
{
    if (!v.isValid() || v.isNull())
        return 0;
    switch (v.typeId()) {
    case QMetaType::QString: {
        double d = 0;
        if (LeggiNumero(v.toString(), &d))
            return d;
        if (auto data = LeggiData(v.toString()))
            return GiornoDaData(*data);
        return 0;
    }
    case QMetaType::QDate:
        return GiornoDaData(v.toDate());
    case QMetaType::QDateTime: {
        const QDateTime dt = v.toDateTime();
        return GiornoDaData(dt.date()) + dt.time().msecsSinceStartOfDay() / 86400000.0;
    }
    case QMetaType::Bool:
        return v.toBool() ? -1 : 0;
    default:
        return v.toDouble();
    }
}

double Val(const QString &testo)
{
    // Blanks anywhere are skipped, as the classic Val does; the number ends at
    // the first character that cannot continue it.
    QString s;
    s.reserve(testo.size());
    for (QChar c : testo) {
        if (c != QLatin1Char(' ') && c != QLatin1Char('\t'))
            s.append(c);
    }
    int i = 0;
    const int n = s.size();
    if (i < n && (s[i] == QLatin1Char('-') || s[i] == QLatin1Char('+')))
        ++i;
    bool cifre = false;
    while (i < n && s[i].isDigit() && s[i].unicode() < 128) {
        ++i;
        cifre = true;
    }
    if (i < n && s[i] == QLatin1Char('.')) {
        ++i;
        while (i < n && s[i].isDigit() && s[i].unicode() < 128) {
            ++i;
            cifre = true;
        }
    }
    if (!cifre)
        return 0;
    int fine = i;
    if (i < n && (s[i] == QLatin1Char('e') || s[i] == QLatin1Char('E'))) {
        int j = i + 1;
        if (j < n && (s[j] == QLatin1Char('-') || s[j] == QLatin1Char('+')))
            ++j;
        int k = j;
        while (k < n && s[k].isDigit() && s[k].unicode() < 128)
            ++k;
        if (k > j)
            fine = k;
    }
    return QLocale::c().toDouble(s.left(fine));
}

} // namespace sorvane
