#include "frame/core/Formato.h"

#include "frame/core/Giorni.h"
#include "frame/core/Locale.h"
#include "frame/core/Valore.h"

#include <QDateTime>
#include <QVarLengthArray>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace sorvane {

namespace {

// ---------------------------------------------------------------------------
// Digits of a number

// A magnitude as the decimal digits it has when written with 15 significant
// digits: value = 0.c[0]c[1]...c[n-1] x 10^punto, trailing zeros dropped, so
// the first `punto` digits are the whole part. No digits means zero.
struct Cifre
{
    char c[16];
    int n = 0;
    int punto = 0;

    char at(int i) const { return i >= 0 && i < n ? c[i] : '0'; }
    // Digit of 10^q in the whole part, and the j-th digit after the point.
    char intera(int q) const { return at(punto - 1 - q); }
    char decimale(int j) const { return at(punto + j); }
    int cifreIntere() const { return n ? std::max(punto, 0) : 0; }
    int cifreDecimali() const { return n ? std::max(n - punto, 0) : 0; }
};

Cifre scomponi(double assoluto)
{
    Cifre r;
    if (!(assoluto > 0))
        return r;
    // "d.dddddddddddddde+XX": the mantissa's 15 digits, then the exponent.
    char buf[32];
    const auto fine = std::to_chars(buf, buf + sizeof buf, assoluto,
                                    std::chars_format::scientific, 14).ptr;
    r.c[0] = buf[0];
    std::memcpy(r.c + 1, buf + 2, 14);
    r.n = 15;
    int esponente = 0;
    std::from_chars(buf + 18, fine, esponente);
    r.punto = (buf[17] == '-' ? -esponente : esponente) + 1;
    while (r.n > 0 && r.c[r.n - 1] == '0')
        --r.n;
    return r;
}

// Rounds half away from zero to `decimali` places after the point.
void arrotonda(Cifre &r, int decimali)
{
    const int tenute = r.punto + decimali;
    if (tenute >= r.n)
        return;
    if (tenute < 0) {
        r.n = 0;
        return;
    }
    const bool su = r.c[tenute] >= '5';
    r.n = tenute;
    if (su) {
        int i = tenute - 1;
        while (i >= 0 && r.c[i] == '9')
            --i;
        if (i < 0) { // 9.99 becomes 10: one digit more in front
            r.c[0] = '1';
            r.n = 1;
            ++r.punto;
        } else {
            ++r.c[i];
            r.n = i + 1;
        }
    }
    while (r.n > 0 && r.c[r.n - 1] == '0')
        --r.n;
}

// ---------------------------------------------------------------------------
// Output buffer: one allocation, for the QString at the end.

class Testo
{
public:
    void add(QChar c) { m_buf.append(c); }
    void add(QStringView s) { m_buf.append(s.data(), s.size()); }
    void add(char c) { m_buf.append(QChar(QLatin1Char(c))); }
    void numero(int v, int cifre) // zero-padded to `cifre`
    {
        char buf[12];
        const auto fine = std::to_chars(buf, buf + sizeof buf, v).ptr;
        for (int k = int(fine - buf); k < cifre; ++k)
            add('0');
        for (const char *p = buf; p < fine; ++p)
            add(*p);
    }
    QString str() const { return QString(m_buf.constData(), m_buf.size()); }

private:
    QVarLengthArray<QChar, 64> m_buf;
};

// A literal of a pattern: a quoted text, a character after "\", or any
// character that is not a placeholder. Returns the literal and moves i past it.
QStringView letterale(QStringView f, qsizetype &i)
{
    if (f[i] == u'"') {
        const qsizetype chiusa = f.indexOf(u'"', i + 1);
        const qsizetype fine = chiusa < 0 ? f.size() : chiusa;
        const QStringView t = f.mid(i + 1, fine - i - 1);
        i = fine + 1;
        return t;
    }
    if (f[i] == u'\\' && i + 1 < f.size()) {
        i += 2;
        return f.mid(i - 1, 1);
    }
    return f.mid(i++, 1);
}

// ---------------------------------------------------------------------------
// Number patterns: "0" prints a digit always, "#" only when it is
// significant; "," between placeholders groups thousands, right before the
// point (or the end) divides by a thousand; the first "." is the decimal
// point; "%" multiplies by a hundred; everything else is printed as it is.

struct Pezzo
{
    bool cifra;       // a placeholder, or else the literal `testo`
    QStringView testo;
};

struct Schema
{
    QVarLengthArray<Pezzo, 20> intero;   // before the point
    QVarLengthArray<Pezzo, 20> decimali; // after it
    bool punto = false;
    bool gruppi = false;
    bool percento = false;
    int scala = 0;        // thousands to divide by
    int posti = 0;        // placeholders of the whole part
    int minimoIntero = 0; // digits always printed: from the first "0" on
    int decimaliMax = 0;
    int decimaliMin = 0;  // up to the last "0" after the point
};

Schema leggiSchema(QStringView f)
{
    Schema s;
    int virgole = 0; // commas since the last whole-part placeholder
    int primoZero = -1;
    for (qsizetype i = 0; i < f.size();) {
        const char16_t c = f[i].unicode();
        if (c == u'0' || c == u'#') {
            if (!s.punto) {
                if (virgole && s.posti)
                    s.gruppi = true;
                virgole = 0;
                if (c == u'0' && primoZero < 0)
                    primoZero = s.posti;
                ++s.posti;
                s.intero.append({true, {}});
            } else {
                ++s.decimaliMax;
                if (c == u'0')
                    s.decimaliMin = s.decimaliMax;
                s.decimali.append({true, {}});
            }
            ++i;
        } else if (c == u'.' && !s.punto) {
            s.punto = true;
            s.scala += s.posti ? virgole : 0;
            virgole = 0;
            ++i;
        } else if (c == u',') {
            if (!s.punto)
                ++virgole;
            ++i;
        } else {
            s.percento = s.percento || c == u'%';
            const Pezzo p{false, letterale(f, i)};
            (s.punto ? s.decimali : s.intero).append(p);
        }
    }
    if (!s.punto && s.posti)
        s.scala += virgole;
    s.minimoIntero = primoZero < 0 ? 0 : s.posti - primoZero;
    return s;
}

QString formatoNumero(double valore, const Schema &s)
{
    if (!std::isfinite(valore))
        return QString();
    if (s.percento)
        valore *= 100;
    for (int k = 0; k < s.scala; ++k)
        valore /= 1000;
    Cifre d = scomponi(std::fabs(valore));
    arrotonda(d, s.decimaliMax);

    const SeparatoriLocale &loc = LocaleCorrente();
    Testo t;
    if (valore < 0 && d.n)
        t.add('-');
    const int larghezza = std::max(d.cifreIntere(), s.minimoIntero);
    const auto cifra = [&](int q) {
        t.add(d.intera(q));
        if (s.gruppi && q > 0 && q % 3 == 0)
            t.add(loc.gruppo);
    };
    // Placeholders take the digits from the right; the leftmost one takes all
    // those left over, so a number never loses digits to a short pattern.
    int posto = 0;
    for (const Pezzo &p : s.intero) {
        if (!p.cifra) {
            t.add(p.testo);
            continue;
        }
        const int q = s.posti - 1 - posto++;
        for (int k = posto == 1 ? larghezza - 1 : q; k >= q; --k) {
            if (k < larghezza)
                cifra(k);
        }
    }
    if (!s.posti) {
        for (int k = larghezza - 1; k >= 0; --k)
            cifra(k);
    }
    if (s.punto)
        t.add(loc.decimale);
    const int stampate = std::max(s.decimaliMin, d.cifreDecimali());
    int j = 0;
    for (const Pezzo &p : s.decimali) {
        if (!p.cifra)
            t.add(p.testo);
        else if (j < stampate)
            t.add(d.decimale(j++));
    }
    return t.str();
}

// No pattern: every significant digit, no groups.
QString formatoGenerale(double valore)
{
    if (!std::isfinite(valore))
        return QString();
    const Cifre d = scomponi(std::fabs(valore));
    Testo t;
    if (valore < 0 && d.n)
        t.add('-');
    for (int q = std::max(d.cifreIntere(), 1) - 1; q >= 0; --q)
        t.add(d.intera(q));
    if (d.cifreDecimali()) {
        t.add(LocaleCorrente().decimale);
        for (int j = 0; j < d.cifreDecimali(); ++j)
            t.add(d.decimale(j));
    }
    return t.str();
}

// ---------------------------------------------------------------------------
// Date patterns: d dd ddd dddd, m mm mmm mmmm (minutes after an hour or
// before seconds), y (day of the year) yy yyyy, h hh, n nn, s ss; letters in
// any case; everything else printed as it is.

bool letteraData(char16_t c)
{
    switch (c | 0x20) {
    case u'd': case u'm': case u'y': case u'h': case u'n': case u's':
        return true;
    default:
        return false;
    }
}

QString formatoData(const QDate &data, int secondi, QStringView f)
{
    int anno = 0;
    int mese = 0;
    int giorno = 0;
    data.getDate(&anno, &mese, &giorno);
    const QLocale &loc = LocaleCorrente().locale;
    Testo t;
    bool dopoOra = false;
    for (qsizetype i = 0; i < f.size();) {
        const char16_t c = f[i].unicode();
        if (!letteraData(c)) {
            t.add(letterale(f, i));
            continue;
        }
        const char16_t l = c | 0x20;
        int quante = 0;
        while (i < f.size() && (f[i].unicode() | 0x20) == l) {
            ++i;
            ++quante;
        }
        const int pad = quante >= 2 ? 2 : 1;
        bool minuti = l == u'n';
        if (l == u'm' && quante <= 2) {
            qsizetype k = i;
            while (k < f.size() && !letteraData(f[k].unicode()))
                ++k;
            minuti = dopoOra || (k < f.size() && (f[k].unicode() | 0x20) == u's');
        }
        dopoOra = l == u'h';
        if (minuti) {
            t.numero(secondi / 60 % 60, pad);
        } else if (l == u'd') {
            if (quante <= 2)
                t.numero(giorno, pad);
            else
                t.add(loc.dayName(data.dayOfWeek(),
                                  quante == 3 ? QLocale::ShortFormat : QLocale::LongFormat));
        } else if (l == u'm') {
            if (quante <= 2)
                t.numero(mese, pad);
            else
                t.add(loc.monthName(mese, quante == 3 ? QLocale::ShortFormat
                                                      : QLocale::LongFormat));
        } else if (l == u'y') {
            if (quante == 1)
                t.numero(data.dayOfYear(), 1);
            else if (quante < 4)
                t.numero(anno % 100, 2);
            else
                t.numero(anno, 4);
        } else if (l == u'h') {
            t.numero(secondi / 3600, pad);
        } else {
            t.numero(secondi % 60, pad);
        }
    }
    return t.str();
}

// ---------------------------------------------------------------------------
// Which kind of pattern

enum class Genere { Numero, Data, DataLunga };

struct Modello
{
    Genere genere;
    QStringView testo; // the pattern to lay out, named ones replaced
};

bool nome(QStringView f, QLatin1String n)
{
    return f.size() == n.size() && f.compare(n, Qt::CaseInsensitive) == 0;
}

Modello modello(QStringView f)
{
    if (!f.isEmpty() && f[0].isLetter()) {
        if (nome(f, QLatin1String("Standard")))
            return {Genere::Numero, u"#,##0.00"};
        if (nome(f, QLatin1String("Fixed")))
            return {Genere::Numero, u"0.00"};
        if (nome(f, QLatin1String("Percent")))
            return {Genere::Numero, u"0.00%"};
        if (nome(f, QLatin1String("General Number")))
            return {Genere::Numero, {}};
        if (nome(f, QLatin1String("Long Date")))
            return {Genere::DataLunga, f};
        if (nome(f, QLatin1String("Long Time")))
            return {Genere::Data, u"hh:mm:ss"};
        if (nome(f, QLatin1String("Short Time")))
            return {Genere::Data, u"hh:mm"};
    }
    // Placeholders make a number pattern even when a literal holds a letter;
    // date letters without them make a date pattern.
    bool data = false;
    for (qsizetype i = 0; i < f.size();) {
        const char16_t c = f[i].unicode();
        if (c == u'0' || c == u'#')
            return {Genere::Numero, f};
        if (c == u'"' || c == u'\\') {
            letterale(f, i);
            continue;
        }
        data = data || letteraData(c);
        ++i;
    }
    return {data ? Genere::Data : Genere::Numero, f};
}

QString numero(double valore, QStringView f)
{
    return f.isEmpty() ? formatoGenerale(valore) : formatoNumero(valore, leggiSchema(f));
}

QString data(const QDate &giorno, int secondi, const Modello &m)
{
    if (!giorno.isValid())
        return QString();
    if (m.genere == Genere::DataLunga)
        return LocaleCorrente().locale.toString(giorno, QLocale::LongFormat);
    return formatoData(giorno, secondi, m.testo);
}

// A day number as a date and the seconds of its time of day, rounded to the
// second as the classic date type shows it.
QString dataDaGiorno(double valore, const Modello &m)
{
    if (!(valore > GiornoMinimo - 1 && valore < GiornoMassimo + 1))
        return QString();
    double giorno = std::trunc(valore);
    int secondi = int(std::lround(std::fabs(valore - giorno) * 86400));
    if (secondi >= 86400) {
        secondi = 0;
        giorno += 1;
    }
    return data(DataDaGiorno(giorno), secondi, m);
}

} // namespace

QString Format(double valore, const QString &formato)
{
    const Modello m = modello(formato);
    return m.genere == Genere::Numero ? numero(valore, m.testo) : dataDaGiorno(valore, m);
}

QString Format(const QVariant &valore, const QString &formato)
{
    if (!valore.isValid() || valore.isNull())
        return QString();
    const Modello m = modello(formato);
    const bool numerico = m.genere == Genere::Numero;
    switch (valore.typeId()) {
    case QMetaType::QString: {
        const QString t = valore.toString();
        if (!numerico) {
            if (const auto d = LeggiData(t))
                return data(*d, 0, m);
        }
        double v = 0;
        if (!LeggiNumero(t, &v))
            return t;
        return numerico ? numero(v, m.testo) : dataDaGiorno(v, m);
    }
    case QMetaType::QDate:
        if (!numerico)
            return data(valore.toDate(), 0, m);
        break;
    case QMetaType::QDateTime:
        if (!numerico) {
            const QDateTime dt = valore.toDateTime();
            return data(dt.date(), dt.time().msecsSinceStartOfDay() / 1000, m);
        }
        break;
    default:
        if (!IsNumeric(valore))
            return valore.toString();
        break;
    }
    const double v = CDbl(valore);
    return numerico ? numero(v, m.testo) : dataDaGiorno(v, m);
}

double Arrotonda(double valore, int decimali)
{
    if (!std::isfinite(valore))
        return valore;
    Cifre d = scomponi(std::fabs(valore));
    arrotonda(d, std::clamp(decimali, 0, 400));
    if (!d.n)
        return 0;
    // The kept digits read back as an integer times a power of ten, which is
    // exactly what reading the formatted text gives.
    char buf[32];
    std::memcpy(buf, d.c, d.n);
    buf[d.n] = 'e';
    const auto fine = std::to_chars(buf + d.n + 1, buf + sizeof buf, d.punto - d.n).ptr;
    double v = 0;
    if (std::from_chars(buf, fine, v).ec != std::errc())
        return valore;
    return valore < 0 ? -v : v;
}

} // namespace sorvane
