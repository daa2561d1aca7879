#include "reports/FormatoNumeri.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace sorvane {

namespace {

QLocale LocaleNumeri()
{
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale;
}

} // namespace

FormatoNumeri::FormatoNumeri() : m_locale(LocaleNumeri())
{
    const QString punto = m_locale.decimalPoint();
    const char16_t p = punto.size() == 1 ? punto.at(0).unicode() : u'\0';
    m_semplice = m_locale.zeroDigit() == QLatin1String("0")
                 && m_locale.negativeSign() == QLatin1String("-") && p > u' ' && p < 0x80
                 && p != u';' && p != u'"';
    m_punto = char(p);
}

int FormatoNumeri::ascii(double n, char *testo) const
{
    if (std::isfinite(n) && std::floor(n) == n && std::fabs(n) < 1e15)
        return int(std::to_chars(testo, testo + 32, static_cast<qint64>(n)).ptr - testo);
    if (!m_semplice || !std::isfinite(n))
        return -1;
    char breve[40];
    const auto fine =
        std::to_chars(breve, breve + sizeof breve, n, std::chars_format::scientific).ptr;
    const char *c = breve;
    char *o = testo;
    if (*c == '-')
        *o++ = *c++;
    char cifre[24];
    int k = 0;
    for (; c < fine && *c != 'e'; ++c) {
        if (*c != '.')
            cifre[k++] = *c;
    }
    int esponente = 0;
    if (c + 1 < fine && c[1] == '+')
        ++c;
    std::from_chars(c + 1, fine, esponente);
    while (k > 1 && cifre[k - 1] == '0')
        --k;
    const int intere = esponente + 1; // digits before the point
    // Outside these the locale writes an exponent.
    if (k > 15 || intere < -3 || intere > 15)
        return -1;
    if (intere <= 0) {
        *o++ = '0';
        *o++ = m_punto;
        o = std::fill_n(o, -intere, '0');
        o = std::copy_n(cifre, k, o);
    } else if (intere < k) {
        o = std::copy_n(cifre, intere, o);
        *o++ = m_punto;
        o = std::copy_n(cifre + intere, k - intere, o);
    } else {
        o = std::copy_n(cifre, k, o);
        o = std::fill_n(o, intere - k, '0');
    }
    return int(o - testo);
}

QString FormatoNumeri::testo(double n) const
{
    char t[32];
    const int lunghezza = ascii(n, t);
    return lunghezza < 0 ? m_locale.toString(n, 'g', 15) : QString::fromLatin1(t, lunghezza);
}

} // namespace sorvane
