// The management list's export over a ledger of a million movements: a
// period of some 100,000 rows and the whole ledger, closed ones included,
// from the engine to the file, beside the sqlite3 command-line tool's CSV of
// the same statement. The peak memory of the program is a counter.
// The DATA column comes out as a day number (45123): `dstData` is a whole
// number in the ledger, the program's as the bench's, not a date field, and
// the export writes a number as it stands. The number is the spreadsheet's
// own serial of that day, which a date format shows as the date.

#include "bench/ArchiviLedger.h"
#include "distinte/ModelloDistinte.h"
#include "reports/Esporta.h"

#include <QApplication>
#include <QFileInfo>
#include <QTableView>
#include <benchmark/benchmark.h>
#include <sys/resource.h>

using namespace sorvane;
using namespace sorvane::bench;

namespace {

QTemporaryDir *s_dir = nullptr;

// The period's first day: 0 for the whole ledger.
CondizioneDistinte Condizione(int righe)
{
    FiltroDistinte f;
    f.ancheChiusi = true;
    if (righe < 1000000)
        f.dal = QStringLiteral("18/08/2022"); // some 100,000 rows to today
    return CondizioneEstrazione(f, OggiLedger);
}

double PiccoMB()
{
    rusage uso{};
    getrusage(RUSAGE_SELF, &uso);
    return double(uso.ru_maxrss) / 1024.0;
}

void Esporta(benchmark::State &state)
{
    const CondizioneDistinte c = Condizione(int(state.range(0)));
    ModelloDistinte modello;
    modello.Carica(QueryGestione(c, OrdinePer(QStringLiteral("CliRagsoc"), false)), c.parametri);
    QTableView vista;
    vista.setModel(&modello);
    const QList<ColonnaEsportata> colonne = ColonneVisibili(vista);
    const QString file = s_dir->filePath(QStringLiteral("EXPGDistinte.csv"));
    for (auto _ : state) {
        if (!ScriviSql(file, modello, colonne, QStringLiteral("GDistinte")))
            state.SkipWithError("export failed");
    }
    state.counters["KB"] = double(QFileInfo(file).size()) / 1024.0;
    state.counters["MB_picco"] = PiccoMB();
}
BENCHMARK(Esporta)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(3);

// The reference: the command-line tool's CSV of the same statement.
void Sqlite3Csv(benchmark::State &state)
{
    const CondizioneDistinte c = Condizione(int(state.range(0)));
    const QString sql =
        SqlConValori(QueryGestione(c, OrdinePer(QStringLiteral("CliRagsoc"), false)), c.parametri);
    const QString file = s_dir->filePath(QStringLiteral("sqlite3.csv"));
    for (auto _ : state) {
        const double ms = TempoSqlite3(QStringLiteral(".mode csv\n.separator ;\n") + sql + ';', file);
        if (ms < 0)
            state.SkipWithError("sqlite3 failed");
        state.SetIterationTime(ms / 1000.0);
    }
    state.counters["KB"] = double(QFileInfo(file).size()) / 1024.0;
}
BENCHMARK(Sqlite3Csv)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return EseguiSuArchivi<QApplication>(argc, argv, "bench_esporta", [](const QTemporaryDir &d) {
        s_dir = const_cast<QTemporaryDir *>(&d);
        return PreparaLedger(d, 1000000, 3000);
    });
}
