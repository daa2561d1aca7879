// Report rendering: a long statement to PDF, and the preview's first page.

#include "reports/Anteprima.h"
#include "reports/Renderer.h"
#include "tests/reports/DatiProva.h"

#include <QApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <memory>

using namespace sorvane;

// The whole road of a print to PDF: fill the template, lay out, draw.
static void BM_Pdf(benchmark::State &state)
{
    const Modello modello = prova::ModelloProva();
    const DatiReport dati = prova::DatiEstratto(int(state.range(0)));
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("estratto.pdf"));
    for (auto _ : state)
        benchmark::DoNotOptimize(SalvaPdf(file, modello, CompilaModello(modello, dati)));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_Pdf)->Arg(5000)->Unit(benchmark::kMillisecond);

// The preview up to its first page on the screen: fill the template, lay out
// the first rows, draw the pages in sight. The rest is laid out meanwhile in
// a worker thread, which is waited for outside the timing.
static void BM_Anteprima(benchmark::State &state)
{
    const Modello modello = prova::ModelloProva();
    const DatiReport dati = prova::DatiEstratto(int(state.range(0)));
    for (auto _ : state) {
        auto finestra = std::make_unique<FinestraAnteprima>(
            modello, CompilaModello(modello, dati), QString(), &dati);
        finestra->resize(1000, 800);
        finestra->show();
        benchmark::DoNotOptimize(finestra->vista()->viewport()->grab());
        state.PauseTiming();
        finestra->attendiCompleta();
        finestra.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_Anteprima)->Arg(5000)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
