#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"

#include <benchmark/benchmark.h>

static void BM_IsDate(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(sorvane::IsDate(QStringLiteral("31/12/2001")));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_IsDate);

BENCHMARK_MAIN();
