// The recordset on a slip table the size of a busy office's archive: a
// Seek must stay one index search. The four files are made in a temporary
// folder at start.

#include "bench/ArchiviBench.h"
#include "store/Recordset.h"
#include "store/Transazione.h"

#include <QRandomGenerator>
#include <QSqlQuery>

using namespace sorvane;

namespace {

constexpr int Movimenti = 200000;

// Codes 10, 20, ...; every fourth movement a switch with a second row.
int Codice(int i) { return (i + 1) * 10; }

bool Prepara(const QTemporaryDir &dir)
{
    if (!bench::ApriArchiviVuoti(dir))
        return false;
    Transazione t;
    QSqlQuery q(Db());
    q.prepare(QStringLiteral("INSERT INTO Distinte (dstCodice, dstPrg, dstData, dstCliente, "
                             "dstMoneta, dstImporto) VALUES (?, ?, ?, ?, 'EUR', ?)"));
    for (int i = 0; i < Movimenti; ++i) {
        for (int prg = 0; prg < (i % 4 == 3 ? 2 : 1); ++prg) {
            q.addBindValue(Codice(i));
            q.addBindValue(QString::number(prg));
            q.addBindValue(37000 + i / 50);
            q.addBindValue(i % 3000);
            q.addBindValue(100.0 + i);
            if (!q.exec())
                return false;
        }
    }
    q.finish();
    return t.conferma();
}

Recordset Distinte()
{
    Recordset rs = Recordset::Apri(Db(), QStringLiteral("Distinte"));
    rs.SetIndex(QStringLiteral("primaria"));
    return rs;
}

// A Seek "=" on a random movement and a field read: the entry screen's
// check of a number.
void seekUguale(benchmark::State &state)
{
    Recordset rs = Distinte();
    QRandomGenerator g(7);
    for (auto _ : state) {
        rs.Seek(QStringLiteral("="), Codice(int(g.bounded(Movimenti))));
        benchmark::DoNotOptimize(rs.Fields(7));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(seekUguale);

// The newest movement number, as a new slip asks for it.
void seekUltimo(benchmark::State &state)
{
    Recordset rs = Distinte();
    for (auto _ : state) {
        rs.Seek(QStringLiteral("<"), 2147483646);
        benchmark::DoNotOptimize(rs.Fields(0));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(seekUltimo);

} // namespace

int main(int argc, char **argv)
{
    return sorvane::bench::EseguiSuArchivi(argc, argv, "bench_store", Prepara);
}
