// Format and the date test run for every cell a grid lays out: these
// measure them on the values a grid of movements shows.

#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"

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
void formatoImporto(benchmark::State &state)
{
    constexpr double importi[] = {0, 12.5, 1234.56, -987654.321, 25000000, 0.005};
    const QString formato = QStringLiteral("#,###,###,##0.00");
    int i = 0;
    misura(state, [&] {
        i = (i + 1) % int(std::size(importi));
        return sorvane::Format(importi[i], formato);
    });
}
BENCHMARK(formatoImporto);

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

void dataSiNo(benchmark::State &state, const QString &testo)
{
    misura(state, [&] { return sorvane::IsDate(testo); });
}
BENCHMARK_CAPTURE(dataSiNo, data, QStringLiteral("31/12/2001"));
BENCHMARK_CAPTURE(dataSiNo, nome, QStringLiteral("ROSSI MARIO"));

} // namespace

BENCHMARK_MAIN();
