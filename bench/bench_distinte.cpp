// The save of the entry screen: a slip of 500 working rows (400
// movements, every fourth a switch of two rows) moved to a ledger that
// already holds a busy office's movements. It must stay under a second.

#include "bench/ArchiviDistinte.h"
#include "distinte/Salvataggio.h"

using namespace sorvane;
using namespace sorvane::bench;

namespace {

void salvaDistinta(benchmark::State &state)
{
    state.SetItemsProcessed(MisuraSalvataggi(state));
}
BENCHMARK(salvaDistinta)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return EseguiSuArchivi(argc, argv, "bench_distinte", Prepara);
}
