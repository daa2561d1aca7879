#include "frame/core/Impostazioni.h"
#include "frame/core/Sessione.h"
#include "reports/Anteprima.h"
#include "reports/CaricaDati.h"
#include "reports/Staging.h"
#include "store/Connessione.h"
#include "store/Schema.h"
#include "reports/Modello.h"
#include "reports/Renderer.h"
#include "tests/reports/DatiProva.h"

#include <QApplication>
#include <QDir>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>

#include <memory>

#include <benchmark/benchmark.h>

using namespace sorvane;

namespace {

// The schema of every file of the set, each attached in turn to a scratch
// connection, which creates it.
bool CreaFile()
{
    const QString nome = QUuid::createUuid().toString();
    bool ok = true;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), nome);
        db.setDatabaseName(QStringLiteral(":memory:"));
        ok = db.open();
        int n = 0;
        for (Archivio a : TuttiGliArchivi) {
            const QString schema = QStringLiteral("f%1").arg(++n);
            QSqlQuery q(db);
            QString errore;
            ok = ok && q.exec(QStringLiteral("ATTACH DATABASE '%1' AS %2")
                                  .arg(PercorsoArchivio(a), schema))
                 && CreaSchema(db, a, schema, &errore);
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(nome);
    return ok;
}

// The four files in a temporary folder, connected.
bool Connetti(const QTemporaryDir &dir)
{
    Impostazioni &imp = impostazioni();
    const QString sep = QDir::separator();
    imp.PathDati = QDir::toNativeSeparators(dir.path()) + sep + QStringLiteral("dati") + sep;
    imp.PathLavoro = QDir::toNativeSeparators(dir.path()) + sep;
    imp.FileDati = imp.PathDati + NomeFile(Archivio::Dati);
    imp.FileLavoro = imp.PathLavoro + NomeFile(Archivio::Lavoro);
    imp.FileVisite = imp.PathDati + NomeFile(Archivio::Visite);
    imp.FileIndici.clear(); // set by the connection of an earlier run
    QDir().mkpath(imp.PathDati);
    return CreaFile() && ConnettiDatabase();
}

} // namespace

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
BENCHMARK(BM_Pdf)->Arg(200)->Arg(5000)->Unit(benchmark::kMillisecond);

// The PDF of the preview's button: the pages laid out for the screen are
// drawn again, not laid out again.
static void BM_PdfDallaVista(benchmark::State &state)
{
    const Modello modello = prova::ModelloProva();
    const Impaginazione pagine(modello, CompilaModello(modello, prova::DatiEstratto(
                                                                   int(state.range(0)))));
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("vista.pdf"));
    for (auto _ : state)
        benchmark::DoNotOptimize(SalvaPdf(file, modello, pagine));
}
BENCHMARK(BM_PdfDallaVista)->Arg(5000)->Unit(benchmark::kMillisecond);

// Filling the template alone.
static void BM_Compila(benchmark::State &state)
{
    const Modello modello = prova::ModelloProva();
    const DatiReport dati = prova::DatiEstratto(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(CompilaModello(modello, dati));
}
BENCHMARK(BM_Compila)->Arg(5000)->Unit(benchmark::kMillisecond);

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

// The whole layout, as the preview has it when the count of pages shows.
static void BM_AnteprimaCompleta(benchmark::State &state)
{
    const Modello modello = prova::ModelloProva();
    const DatiReport dati = prova::DatiEstratto(int(state.range(0)));
    for (auto _ : state) {
        FinestraAnteprima finestra(modello, CompilaModello(modello, dati), QString(), &dati);
        finestra.attendiCompleta();
        benchmark::DoNotOptimize(finestra.vista()->pagine());
    }
}
BENCHMARK(BM_AnteprimaCompleta)->Arg(5000)->Unit(benchmark::kMillisecond)->UseRealTime();

// Laying out alone, without drawing.
static void BM_Impagina(benchmark::State &state)
{
    const Modello modello = prova::ModelloProva();
    const ModelloCompilato compilato = CompilaModello(modello, prova::DatiEstratto(
                                                                   int(state.range(0))));
    for (auto _ : state) {
        const Impaginazione pagine(modello, compilato);
        benchmark::DoNotOptimize(pagine.pagine());
    }
}
BENCHMARK(BM_Impagina)->Arg(1000)->Arg(2500)->Arg(5000)->Unit(benchmark::kMillisecond);

// A print's staging: the tables emptied and the rows written in one
// transaction, then read back for the renderer.
static void BM_Temporanei(benchmark::State &state)
{
    QTemporaryDir dir;
    if (!Connetti(dir)) {
        state.SkipWithError(qPrintable("files not made: " + sessione().TestoErrore));
        return;
    }
    const DatiReport dati = prova::DatiEstratto(int(state.range(0)));
    for (auto _ : state) {
        DatiReport letti;
        if (!PreparaTemporanei(dati) || !CaricaDatiReport(DbLavoro(), letti))
            state.SkipWithError("staging failed");
        benchmark::DoNotOptimize(letti.corpo.size());
    }
    ChiudiDatabase();
}
BENCHMARK(BM_Temporanei)->Arg(5000)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
