// The product master over 50,000 products made in a temporary folder: one
// keystroke of the search by code and by description (the query and the
// first rows the grid shows), each under 50 ms, and the screen opened on
// its first rows. Run headless: build/bench/bench_gesprod

#include "bench/ArchiviBench.h"
#include "store/Tabelle.h"
#include "store/Transazione.h"
#include "tables/GesProd.h"
#include "tables/ModelloProdotti.h"

#include <QApplication>
#include <QLineEdit>
#include <QSqlQuery>
#include <QTableView>

namespace {

using namespace sorvane;

constexpr int NumeroProdotti = 50000;

bool Prepara(const QTemporaryDir &dir)
{
    if (!bench::ApriArchiviVuoti(dir))
        return false;
    Transazione t;
    QSqlQuery c(Db());
    for (const char *categoria : {"OBB", "AZI", "LIQ", "MULTI"})
        if (!c.exec(QStringLiteral("INSERT INTO TabCategorie (Codice, Descrizione, Tipo, "
                                   "BuoniCattivi, Colore) VALUES ('%1', '%1', 'S', '1', 12648384)")
                        .arg(QLatin1String(categoria))))
            return false;
    QSqlQuery p(Db());
    p.prepare(QStringLiteral("INSERT INTO TabProdotti (Codice, Descrizione, Categoria, Gruppo, "
                             "Moneta, NoIndici, BuoniCattivi, Perc1, Perc2) "
                             "VALUES (?, ?, ?, 'A', 'EUR', ?, 1, 1.5, 40)"));
    static const char *const categorie[] = {"OBB", "AZI", "LIQ", "MULTI"};
    for (int i = 0; i < NumeroProdotti; ++i) {
        p.addBindValue(QStringLiteral("P%1").arg(i, 6, 10, QLatin1Char('0')));
        p.addBindValue(QStringLiteral("FONDO %1 SERIE %2").arg(i % 997).arg(i));
        p.addBindValue(QLatin1String(categorie[i % 4]));
        p.addBindValue(i % 10 == 9 ? 2 : 0);
        if (!p.exec())
            return false;
    }
    p.finish();
    return t.conferma();
}

// The texts of a search typed one key at a time, over and over.
void Digita(benchmark::State &stato, bool perDescrizione, const QString &testo)
{
    ModelloProdotti elenco;
    RicercaProdotti r;
    r.perDescrizione = perDescrizione;
    int i = 0;
    for (auto _ : stato) {
        r.testo = testo.left(1 + i++ % testo.size());
        elenco.cerca(r);
        benchmark::DoNotOptimize(elenco.rowCount());
        benchmark::DoNotOptimize(elenco.index(0, ProdColore).data(Qt::BackgroundRole));
    }
}

void BM_TastoCodice(benchmark::State &stato)
{
    Digita(stato, false, QStringLiteral("P04999"));
}
BENCHMARK(BM_TastoCodice)->Unit(benchmark::kMillisecond);

void BM_TastoDescrizione(benchmark::State &stato)
{
    // A text found in few rows scans the most.
    Digita(stato, true, QStringLiteral("SERIE 4999"));
}
BENCHMARK(BM_TastoDescrizione)->Unit(benchmark::kMillisecond);

void BM_AperturaSchermo(benchmark::State &stato)
{
    for (auto _ : stato) {
        tabelle().CodiceCercato.clear();
        GesProd g;
        g.show();
        QApplication::processEvents();
        benchmark::DoNotOptimize(g.elenco()->rowCount());
        g.reject();
    }
}
BENCHMARK(BM_AperturaSchermo)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return bench::EseguiSuArchivi<QApplication>(argc, argv, "bench_gesprod", Prepara);
}
