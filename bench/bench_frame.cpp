// Format and the date test run for every cell a grid lays out: these
// measure them on the values a grid of movements shows.

#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Valore.h"

#include <QLocale>
#include <benchmark/benchmark.h>

namespace {

// Runs f once an iteration and counts one item each time.
template <typename F>
void misura(benchmark::State &state, F f)
{
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    for (auto _ : state)
        benchmark::DoNotOptimize(f());
    state.SetItemsProcessed(state.iterations());
}

// A spread of amounts, so the digit and grouping paths vary.
constexpr double Importi[] = {0, 12.5, 1234.56, -987654.321, 1936.27, 25000000, 0.005, 73.1};

double prossimoImporto()
{
    static int i = 0;
    i = (i + 1) % int(std::size(Importi));
    return Importi[i];
}

void formatoNumero(benchmark::State &state, const QString &formato)
{
    misura(state, [&] { return sorvane::Format(prossimoImporto(), formato); });
}
BENCHMARK_CAPTURE(formatoNumero, importo, QStringLiteral("#,###,###,##0.00"));
BENCHMARK_CAPTURE(formatoNumero, lire, QStringLiteral("#,###,###,###,###"));
BENCHMARK_CAPTURE(formatoNumero, intero, QStringLiteral("#0"));

void formatoData(benchmark::State &state)
{
    const QString formato = QStringLiteral("dd/mm/yyyy");
    double giorno = 36000;
    misura(state, [&] {
        giorno = giorno < 40000 ? giorno + 1 : 36000;
        return sorvane::Format(giorno, formato);
    });
}
BENCHMARK(formatoData);

// A grid cell holding a text: the number and date tests come first.
void formatoTesto(benchmark::State &state)
{
    const QVariant valore(QStringLiteral("1234,56"));
    const QString formato = QStringLiteral("#,###,###,##0.00");
    misura(state, [&] { return sorvane::Format(valore, formato); });
}
BENCHMARK(formatoTesto);

void dataSiNo(benchmark::State &state, const QString &testo)
{
    misura(state, [&] { return sorvane::IsDate(testo); });
}
BENCHMARK_CAPTURE(dataSiNo, data, QStringLiteral("31/12/2001"));
BENCHMARK_CAPTURE(dataSiNo, nome, QStringLiteral("ROSSI MARIO"));
BENCHMARK_CAPTURE(dataSiNo, quasi, QStringLiteral("31/02/2001"));

void leggiNumero(benchmark::State &state)
{
    const QString testo = QStringLiteral("1234,56");
    double v = 0;
    misura(state, [&] { return sorvane::LeggiNumero(testo, &v); });
}
BENCHMARK(leggiNumero);

void arrotonda(benchmark::State &state)
{
    misura(state, [&] { return sorvane::Arrotonda(prossimoImporto(), 2); });
}
BENCHMARK(arrotonda);

} // namespace

BENCHMARK_MAIN();
