#include "frame/core/Giorni.h"

#include <cmath>

namespace sorvane {

namespace {
const qint64 GiornoZeroJulian = QDate(1899, 12, 30).toJulianDay();

// Reads one to four ASCII digits starting at i; -1 when there are none.
int leggiCifre(const QString &t, int &i, int massimo, int *quante)
{
    int v = 0;
    int n = 0;
    while (i < t.size() && n < massimo) {
        const ushort c = t[i].unicode();
        if (c < '0' || c > '9')
            break;
        v = v * 10 + (c - '0');
        ++i;
        ++n;
    }
    *quante = n;
    return n ? v : -1;
}

bool separatore(QChar c)
{
    return c == QLatin1Char('/') || c == QLatin1Char('-') || c == QLatin1Char('.');
}
} // namespace

int GiornoDaData(const QDate &data)
{
    return int(data.toJulianDay() - GiornoZeroJulian);
}

QDate DataDaGiorno(double giorno)
{
    return QDate::fromJulianDay(GiornoZeroJulian + qint64(std::floor(giorno)));
}

std::optional<QDate> LeggiData(const QString &testo)
{
    const QString t = testo.trimmed();
    int i = 0;
    int n = 0;
    const int g = leggiCifre(t, i, 2, &n);
    if (g < 0 || i >= t.size() || !separatore(t[i]))
        return std::nullopt;
    const QChar sep = t[i++];
    const int m = leggiCifre(t, i, 2, &n);
    if (m < 0 || i >= t.size() || t[i] != sep)
        return std::nullopt;
    ++i;
    int a = leggiCifre(t, i, 4, &n);
    if (a < 0 || i != t.size() || n == 3 || n == 1)
        return std::nullopt;
    if (n == 2)
        a += a < 30 ? 2000 : 1900;
    const QDate d(a, m, g);
    if (!d.isValid())
        return std::nullopt;
    return d;
}

bool IsDate(const QString &testo)
{
    return LeggiData(testo).has_value();
}

QString OggiComeTesto()
{
    return QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"));
}

} // namespace sorvane
