#include "frame/core/Giorni.h"

#include <cmath>

namespace sorvane {

namespace {
constexpr qint64 GiornoZeroJulian = 2415019; // 30/12/1899

bool bisestile(int anno)
{
    return (anno % 4 == 0 && anno % 100 != 0) || anno % 400 == 0;
}

int giorniDelMese(int anno, int mese)
{
    static constexpr int giorni[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return mese == 2 && bisestile(anno) ? 29 : giorni[mese - 1];
}

// Reads up to `massimo` ASCII digits from p; returns how many it read.
int leggiCifre(const QChar *&p, const QChar *fine, int massimo, int *valore)
{
    int v = 0;
    int n = 0;
    while (p < fine && n < massimo && p->unicode() >= u'0' && p->unicode() <= u'9') {
        v = v * 10 + (p->unicode() - u'0');
        ++p;
        ++n;
    }
    *valore = v;
    return n;
}

// Day, month and year of a date text, without building a QDate: the grid asks
// this of every cell it lays out.
bool leggiGMA(const QString &testo, int *giorno, int *mese, int *anno)
{
    const QChar *p = testo.constData();
    const QChar *fine = p + testo.size();
    while (p < fine && p->isSpace())
        ++p;
    while (fine > p && fine[-1].isSpace())
        --fine;
    if (fine - p < 5 || fine - p > 10)
        return false;
    if (!leggiCifre(p, fine, 2, giorno) || p == fine)
        return false;
    const QChar sep = *p++;
    if (sep != u'/' && sep != u'-' && sep != u'.')
        return false;
    if (!leggiCifre(p, fine, 2, mese) || p == fine || *p++ != sep)
        return false;
    const int cifreAnno = leggiCifre(p, fine, 4, anno);
    if (p != fine)
        return false;
    // A year of one or two digits falls in the window, so "1/2/3" is 2003.
    if (cifreAnno == 1 || cifreAnno == 2)
        *anno += *anno < 30 ? 2000 : 1900;
    else if (cifreAnno != 4 || *anno < 100)
        return false;
    return *mese >= 1 && *mese <= 12 && *giorno >= 1 && *giorno <= giorniDelMese(*anno, *mese);
}
} // namespace

int GiornoDaData(const QDate &data)
{
    return data.isValid() ? int(data.toJulianDay() - GiornoZeroJulian) : 0;
}

double GiornoDaDataOra(const QDateTime &dataOra)
{
    const int giorno = GiornoDaData(dataOra.date());
    const double ora = dataOra.time().msecsSinceStartOfDay() / 86400000.0;
    return giorno < 0 ? giorno - ora : giorno + ora;
}

QDate DataDaGiorno(double giorno)
{
    if (!(giorno > GiornoMinimo - 1 && giorno < GiornoMassimo + 1))
        return QDate();
    return QDate::fromJulianDay(GiornoZeroJulian + qint64(std::trunc(giorno)));
}

std::optional<QDate> LeggiData(const QString &testo)
{
    int g = 0;
    int m = 0;
    int a = 0;
    if (!leggiGMA(testo, &g, &m, &a))
        return std::nullopt;
    return QDate(a, m, g);
}

bool IsDate(const QString &testo)
{
    int g = 0;
    int m = 0;
    int a = 0;
    return leggiGMA(testo, &g, &m, &a);
}

QString OggiComeTesto()
{
    return QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"));
}

} // namespace sorvane
