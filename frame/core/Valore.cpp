#include "frame/core/Valore.h"

#include "frame/core/Giorni.h"
#include "frame/core/Locale.h"

#include <QDate>
#include <QDateTime>

#include <charconv>
#include <optional>
#include <string>

namespace sorvane {

void ImpostaLocaleProgramma()
{
    const QLocale sistema = QLocale::system();
    if (sistema.language() == QLocale::C)
        QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    else
        QLocale::setDefault(sistema);
}

const SeparatoriLocale &LocaleCorrente()
{
    thread_local SeparatoriLocale cache;
    thread_local bool pronto = false;
    const QLocale adesso;
    if (!pronto || !(adesso == cache.locale)) {
        cache.locale = adesso;
        cache.decimale = adesso.decimalPoint();
        cache.gruppo = adesso.groupSeparator();
        cache.decimaleChar = cache.decimale.size() == 1 ? cache.decimale[0] : QChar();
        cache.gruppoChar = cache.gruppo.size() == 1 ? cache.gruppo[0] : QChar();
        pronto = true;
    }
    return cache;
}

QChar SeparatoreDecimale()
{
    // The classic test writes 1/2 as text and looks for "0.5"; any separator
    // but "." counts as ",".
    return LocaleCorrente().decimale == QLatin1String(".") ? QLatin1Char('.')
                                                            : QLatin1Char(',');
}

namespace {

bool cifra(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

bool bianco(QChar c)
{
    return c.isSpace();
}

// The common shape of a typed amount, [sign] digits [separator digits], read
// without QLocale. Anything else (group separators, exponents, the other
// separator) goes the long way; so does a number too long for the buffer.
std::optional<double> numeroSemplice(QStringView t, QChar decimale)
{
    char buf[64];
    int n = 0;
    qsizetype i = 0;
    if (t[0] == u'-' || t[0] == u'+') {
        if (t[0] == u'-')
            buf[n++] = '-';
        ++i;
    }
    bool cifre = false;
    bool punto = false;
    for (; i < t.size(); ++i) {
        const char16_t c = t[i].unicode();
        if (n >= int(sizeof buf) - 1)
            return std::nullopt;
        if (cifra(c)) {
            buf[n++] = char(c);
            cifre = true;
        } else if (t[i] == decimale && !punto) {
            buf[n++] = '.';
            punto = true;
        } else {
            return std::nullopt;
        }
    }
    if (!cifre)
        return std::nullopt;
    double v = 0;
    const auto r = std::from_chars(buf, buf + n, v);
    if (r.ec != std::errc() || r.ptr != buf + n)
        return std::nullopt;
    return v;
}

} // namespace

bool LeggiNumero(const QString &testo, double *valore)
{
    qsizetype da = 0;
    qsizetype a = testo.size();
    while (da < a && bianco(testo[da]))
        ++da;
    while (a > da && bianco(testo[a - 1]))
        --a;
    if (da == a)
        return false;
    const QStringView t = QStringView(testo).mid(da, a - da);
    const SeparatoriLocale &loc = LocaleCorrente();
    if (!loc.decimaleChar.isNull()) {
        if (const auto v = numeroSemplice(t, loc.decimaleChar)) {
            if (valore)
                *valore = *v;
            return true;
        }
    }
    // QLocale also reads "inf" and "nan", which no one types as an amount: a
    // letter other than an exponent's rules the text out.
    for (QChar c : t) {
        if (c.isLetter() && c != QLatin1Char('e') && c != QLatin1Char('E'))
            return false;
    }
    bool ok = false;
    double v = loc.locale.toDouble(t, &ok);
    if (!ok) {
        static const QLocale conPunto = [] {
            QLocale c = QLocale::c();
            c.setNumberOptions(QLocale::RejectGroupSeparator);
            return c;
        }();
        v = conPunto.toDouble(t, &ok);
    }
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
    case QMetaType::SChar:
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
        const QString t = v.toString();
        double d = 0;
        if (LeggiNumero(t, &d))
            return d;
        if (const auto data = LeggiData(t))
            return GiornoDaData(*data);
        return 0;
    }
    case QMetaType::QDate:
        return GiornoDaData(v.toDate());
    case QMetaType::QDateTime:
        return GiornoDaDataOra(v.toDateTime());
    case QMetaType::Bool:
        return v.toBool() ? -1 : 0;
    default:
        return v.toDouble();
    }
}

double Val(const QString &testo)
{
    // Blanks anywhere are skipped, as the classic Val does; the number ends at
    // the first character that cannot continue it. "E" and "D" start an
    // exponent, which counts only when digits follow it.
    std::string s;
    bool cifre = false;
    bool punto = false;
    bool segno = true;      // a sign may come next
    int esponente = -1;     // where the exponent starts in s
    bool cifreEsponente = false;
    for (QChar q : testo) {
        const char16_t c = q.unicode();
        if (c == u' ' || c == u'\t' || c == u'\n' || c == u'\r')
            continue;
        if (cifra(c)) {
            s += char(c);
            (esponente < 0 ? cifre : cifreEsponente) = true;
            segno = false;
        } else if ((c == u'-' || c == u'+') && segno) {
            if (c == u'-' || esponente >= 0)
                s += char(c);
            segno = false;
        } else if (c == u'.' && !punto && esponente < 0) {
            s += '.';
            punto = true;
            segno = false;
        } else if ((c == u'e' || c == u'E' || c == u'd' || c == u'D') && cifre && esponente < 0) {
            esponente = int(s.size());
            s += 'e';
            segno = true;
        } else {
            break;
        }
    }
    if (!cifre)
        return 0;
    if (esponente >= 0 && !cifreEsponente)
        s.resize(esponente);
    double v = 0;
    const auto r = std::from_chars(s.data(), s.data() + s.size(), v);
    return r.ec == std::errc() ? v : 0;
}

} // namespace sorvane
