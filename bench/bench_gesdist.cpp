// The management list over a ledger of a million movements: the default
// extraction (everything up to today, open ones) must show its first rows
// at once, and confirming a code must refresh the list at once, the user's
// place kept.

#include "bench/ArchiviLedger.h"
#include "distinte/ControllaCampo.h"
#include "distinte/GesDist.h"
#include "distinte/ModelloDistinte.h"
#include "frame/core/Sessione.h"

#include <QApplication>
#include <QSqlQuery>
#include <QTableView>
#include <benchmark/benchmark.h>
#include <memory>

using namespace sorvane;
using namespace sorvane::bench;

namespace {

constexpr int Movimenti = 1000000;
constexpr int Clienti = 3000;

bool Prepara(const QTemporaryDir &dir) { return PreparaLedger(dir, Movimenti, Clienti); }

std::unique_ptr<GesDist> Schermo()
{
    auto s = std::make_unique<GesDist>();
    s->resize(1220, 720);
    s->show();
    QApplication::processEvents();
    return s;
}

// (a) ESTRAI over the default filter, the first rows painted.
void estraiTutto(benchmark::State &state)
{
    const std::unique_ptr<GesDist> s = Schermo();
    for (auto _ : state) {
        s->EstraiDistinte();
        s->TDBGrid1()->viewport()->repaint();
        benchmark::DoNotOptimize(s->Data1()->rowCount());
    }
    state.counters["righe"] = s->Data1()->rowCount();
}
BENCHMARK(estraiTutto)->Unit(benchmark::kMillisecond)->Iterations(5);

// (b) A double click on an open code of a movement with two: the mark
// goes (or comes back), the list is refreshed at the same place.
void confermaCodice(benchmark::State &state)
{
    const std::unique_ptr<GesDist> s = Schermo();
    s->EstraiDistinte();
    const int riga = 200;
    s->Data1()->CaricaFinoA(riga);
    s->TDBGrid1()->setCurrentIndex(s->Data1()->index(riga, GesPrimoCodice));
    for (auto _ : state) {
        s->DoppioClick(riga, GesPrimoCodice);
        s->TDBGrid1()->viewport()->repaint();
    }
    state.counters["riga"] = s->TDBGrid1()->currentIndex().row();
}
BENCHMARK(confermaCodice)->Unit(benchmark::kMillisecond)->Iterations(20);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return EseguiSuArchivi<QApplication>(argc, argv, "bench_gesdist", Prepara);
}
