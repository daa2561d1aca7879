// The 04 ledger's screen over a demo office whose ledger holds a million
// rows: the default extraction must show its first rows within 300 ms, a
// client's within 50 ms, and the next number of a typed row is one seek
// (well under 5 ms).

#include "bench/ArchiviDemo.h"
#include "ledger04/ControllaCampo4.h"
#include "ledger04/Distinte04.h"
#include "ledger04/GesDist4.h"
#include "ledger04/ModelloDistinte04.h"
#include "store/Tabelle.h"

#include <QApplication>
#include <QLineEdit>
#include <QSqlQuery>
#include <QTableView>
#include <benchmark/benchmark.h>
#include <memory>

using namespace sorvane;
using namespace sorvane::bench;

namespace {

constexpr qint64 Righe = 1000000;

bool Prepara(const QTemporaryDir &dir)
{
    return PreparaUfficioDemo(dir, Righe);
}

std::unique_ptr<GesDist4> Schermo()
{
    auto s = std::make_unique<GesDist4>();
    s->resize(1100, 700);
    s->show();
    QApplication::processEvents();
    return s;
}

// (a) ESTRAI over the default filter, the first rows painted.
void estraiTutto(benchmark::State &state)
{
    const std::unique_ptr<GesDist4> s = Schermo();
    for (auto _ : state) {
        s->Estrai();
        s->TDBGrid1()->viewport()->repaint();
    }
    state.counters["righe"] = s->Data1()->rowCount();
}
BENCHMARK(estraiTutto)->Unit(benchmark::kMillisecond)->Iterations(5);

// (b) ESTRAI for one client.
void estraiCliente(benchmark::State &state)
{
    const std::unique_ptr<GesDist4> s = Schermo();
    QSqlQuery q(Db());
    q.exec(QStringLiteral("SELECT dstCliente FROM Distinte04 LIMIT 1"));
    q.next();
    s->txt(Campo04CodiceFiltro)->setText(q.value(0).toString());
    for (auto _ : state) {
        s->Estrai();
        s->TDBGrid1()->viewport()->repaint();
    }
    state.counters["righe"] = s->Data1()->rowCount();
}
BENCHMARK(estraiCliente)->Unit(benchmark::kMillisecond)->Iterations(20);

// (c) The next number of "&AGGIUNGI" and of the balances' "&CONFERMA".
void prossimoCodice(benchmark::State &state)
{
    ApriDistinte04();
    for (auto _ : state)
        benchmark::DoNotOptimize(ProssimoCodice04(tabelle().RsDistinte04));
    tabelle().RsDistinte04.Close();
}
BENCHMARK(prossimoCodice)->Unit(benchmark::kMicrosecond)->Iterations(200);

} // namespace

int main(int argc, char **argv)
{
    return EseguiSuArchivi<QApplication>(argc, argv, "bench_ledger04", Prepara);
}
