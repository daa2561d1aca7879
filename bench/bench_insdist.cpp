// Opening the entry screen with a slip left half-typed: 500 working rows
// (400 movements, every fourth a switch) over a ledger of a busy office.
// The rows must be on screen at once.

#include "bench/ArchiviBench.h"
#include "bench/ArchiviDistinte.h"
#include "distinte/InsDist.h"

#include <QApplication>
#include <benchmark/benchmark.h>

using namespace sorvane;
using namespace sorvane::bench;

namespace {

bool PreparaConAvanzi(const QTemporaryDir &dir)
{
    if (!Prepara(dir))
        return false;
    Transazione t;
    return Riempi(QStringLiteral("BkDistinte"), 1, MovimentiDellaDistinta, false)
           && t.conferma();
}

void apriInsDist(benchmark::State &state)
{
    for (auto _ : state) {
        InsDist schermo;
        schermo.resize(1200, 700);
        schermo.show();
        QApplication::processEvents();
        benchmark::DoNotOptimize(schermo.isVisible());
        state.PauseTiming();
        schermo.hide();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(apriInsDist)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return EseguiSuArchivi<QApplication>(argc, argv, "bench_insdist", PreparaConAvanzi);
}
