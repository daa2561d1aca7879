// The management list over a ledger of a million movements: the default
// extraction (everything up to today, open ones) and every heading's sort,
// each way, with closed movements or not and on one firm, must show their
// first rows at once, beside the sqlite3 command-line tool reading the
// same first rows of the same statement; confirming a code must refresh
// the list at once, the user's place kept.

#include "bench/ArchiviLedger.h"
#include "distinte/ControllaCampo.h"
#include "distinte/GesDist.h"
#include "distinte/ModelloDistinte.h"
#include "frame/core/Sessione.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QSqlQuery>
#include <QTableView>
#include <benchmark/benchmark.h>
#include <memory>
#include <vector>

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

// The sorts' arguments: the heading (an index into Testate), 1 for
// descending, and the filter (0 open ones, 1 closed as well, 2 one firm
// with closed as well).
constexpr int Testate[] = {GesData,    GesNominativo, GesCausale, GesImporto,
                           GesAssegno, GesBanca,      GesSpese};
const std::vector<std::vector<int64_t>> ArgomentiOrdini{{0, 1, 2, 3, 4, 5, 6}, {0, 1}, {0, 1, 2}};
constexpr int RigheVisibili = 128;

void Etichetta(benchmark::State &state)
{
    static const char *const filtri[] = {"aperti", "anche_chiusi", "ditta"};
    state.SetLabel(QStringLiteral("%1 %2")
                       .arg(OrdineColonna(Testate[state.range(0)], state.range(1) != 0))
                       .arg(QString::fromLatin1(filtri[state.range(2)]))
                       .toStdString());
}

// (c) A heading pressed on an extraction: the first rows painted.
void ordina(benchmark::State &state)
{
    const std::unique_ptr<GesDist> s = Schermo();
    s->Check1()->setChecked(state.range(2) != 0);
    if (state.range(2) == 2) {
        s->cmbSoc(1)->addItem(QStringLiteral("BETA"));
        s->cmbSoc(1)->setCurrentIndex(s->cmbSoc(1)->count() - 1);
    }
    s->EstraiDistinte();
    const int colonna = Testate[state.range(0)];
    for (auto _ : state) {
        s->OrdinaColonna(colonna, state.range(1) != 0);
        s->TDBGrid1()->viewport()->repaint();
    }
    state.counters["righe"] = s->Data1()->rowCount();
    Etichetta(state);
}
BENCHMARK(ordina)->ArgsProduct(ArgomentiOrdini)->Unit(benchmark::kMillisecond)->Iterations(7);

// The reference: the command-line tool reading as many first rows of the
// same statement.
void ordinaSqlite3(benchmark::State &state)
{
    FiltroDistinte f;
    f.ancheChiusi = state.range(2) != 0;
    if (state.range(2) == 2)
        f.ditta = QStringLiteral("BETA");
    const CondizioneDistinte c = CondizioneEstrazione(f, OggiLedger);
    const QString ordine = OrdineColonna(Testate[state.range(0)], state.range(1) != 0);
    const QString sql = SqlConValori(QueryGestione(c, ordine), c.parametri)
                        + QStringLiteral(" LIMIT %1;").arg(RigheVisibili);
    for (auto _ : state) {
        const double ms = TempoSqlite3(sql);
        if (ms < 0)
            state.SkipWithError("sqlite3 failed");
        state.SetIterationTime(ms / 1000.0);
    }
    Etichetta(state);
}
BENCHMARK(ordinaSqlite3)
    ->ArgsProduct(ArgomentiOrdini)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(7);

} // namespace

int main(int argc, char **argv)
{
    return EseguiSuArchivi<QApplication>(argc, argv, "bench_gesdist", Prepara);
}
