#pragma once

// The demo's only source of chance: a Mersenne twister from the seed, with
// our own reductions to ranges so that one seed gives the same office on
// every compiler and standard library (the std distributions may differ).

#include <QtGlobal>

#include <cstddef>
#include <random>

namespace sorvane::demo {

class Caso
{
public:
    explicit Caso(quint32 seme) : m_mt(seme) {}

    quint32 grezzo() { return static_cast<quint32>(m_mt()); }

    // A whole number from da to a, both included (da <= a).
    int intero(int da, int a)
    {
        const quint64 ampiezza = quint64(qint64(a) - qint64(da)) + 1;
        return int(qint64(da) + qint64((quint64(grezzo()) * ampiezza) >> 32));
    }

    // In [0, 1), 32 bits of resolution are plenty here.
    double reale() { return grezzo() / 4294967296.0; }

    bool prob(double p) { return reale() < p; }

    std::size_t indice(std::size_t n) { return std::size_t(intero(0, int(n) - 1)); }

    template <class T, std::size_t N>
    const T &scegli(const T (&elenco)[N]) { return elenco[indice(N)]; }

    template <class C>
    const auto &scegli(const C &elenco) { return elenco[indice(elenco.size())]; }

private:
    std::mt19937 m_mt;
};

} // namespace sorvane::demo
