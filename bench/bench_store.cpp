// The recordset on a slip table the size of a busy office's archive: a
// Seek must stay one index search, and a walk must not read the table
// whole. The four files are made in a temporary folder at start.

#include "bench/ArchiviBench.h"
#include "frame/core/Impostazioni.h"
#include "store/Cambi.h"
#include "store/Connessione.h"
#include "store/Recordset.h"
#include "store/Schema.h"
#include "store/Transazione.h"

#include <QCoreApplication>
#include <QDir>
#include <QRandomGenerator>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>
#include <benchmark/benchmark.h>

#include <cstdio>

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
    q.prepare(QStringLiteral("INSERT INTO TabCambi VALUES (?, ?, ?)"));
    for (const char *moneta : {"CHF", "GBP", "USD"}) {
        for (int g = 36000; g < 40000; g += 7) {
            q.addBindValue(QString::fromLatin1(moneta));
            q.addBindValue(double(g));
            q.addBindValue(1.0 + g / 100000.0);
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

// Both columns of the key, "<=" from a random point.
void seekDueChiavi(benchmark::State &state)
{
    Recordset rs = Distinte();
    QRandomGenerator g(11);
    for (auto _ : state) {
        rs.Seek(QStringLiteral("<="),
                QVariantList{Codice(int(g.bounded(Movimenti))) + 5, QStringLiteral("0")});
        benchmark::DoNotOptimize(rs.Fields(0));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(seekDueChiavi);

// Reading the table in index order, row by row.
void percorsoAvanti(benchmark::State &state)
{
    Recordset rs = Distinte();
    rs.MoveFirst();
    for (auto _ : state) {
        benchmark::DoNotOptimize(rs.Fields(7));
        rs.MoveNext();
        if (rs.Eof())
            rs.MoveFirst();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(percorsoAvanti);

// A client's movements on the secondary index "cliente": Seek, then the
// rows of that client.
void movimentiDiUnCliente(benchmark::State &state)
{
    Recordset rs = Recordset::Apri(Db(), QStringLiteral("Distinte"));
    rs.SetIndex(QStringLiteral("cliente"));
    QRandomGenerator g(5);
    qint64 righe = 0;
    for (auto _ : state) {
        const int cliente = int(g.bounded(3000));
        for (rs.Seek(QStringLiteral("="), cliente);
             !rs.Eof() && rs.Fields(4).toInt() == cliente; rs.MoveNext())
            ++righe;
    }
    state.SetItemsProcessed(righe);
}
BENCHMARK(movimentiDiUnCliente);

// Opening the table as the openers do.
void apertura(benchmark::State &state)
{
    for (auto _ : state) {
        Recordset rs = Distinte();
        benchmark::DoNotOptimize(rs.IsOpen());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(apertura);

// A rate, with the table opened and closed at each call.
void cercaCambio(benchmark::State &state)
{
    QRandomGenerator g(3);
    for (auto _ : state)
        benchmark::DoNotOptimize(CercaCambio(QStringLiteral("GBP"), 36000 + g.bounded(4000)));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(cercaCambio);

} // namespace

int main(int argc, char **argv)
{
    return sorvane::bench::EseguiSuArchivi(argc, argv, "bench_store", Prepara);
}
