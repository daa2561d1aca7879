// The average-interest print of a team over 10,000 movements of its two
// clients, in lire and euro across 2002: the selection read, both passes,
// the team's rate, PrtTesta and PrtCorpo emptied and written (no
// rendering), which must stay under 200 ms; and the rate's search alone on
// a series of 1,000 flows, under 20 ms.

#include "bench/ArchiviBench.h"
#include "ledger04/Interessi.h"
#include "ledger04/Tir.h"
#include "reports/Staging.h"
#include "store/Connessione.h"
#include "store/Transazione.h"

#include <QSqlQuery>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace sorvane;

namespace {

constexpr int Movimenti = 10000;
constexpr int Inizio = 36892; // 01/01/2001
constexpr int Giorni = 1460;  // four years

// Two team members, reasons of both signs, and the extraction's rows as the
// screen leaves them in WInterMedi: one a day or so, lire until 2001.
bool Prepara(const QTemporaryDir &dir)
{
    if (!bench::ApriArchiviVuoti(dir))
        return false;
    Transazione t;
    QSqlQuery q(Db());
    bool ok = q.exec(QStringLiteral("INSERT INTO Clienti (CliCodice, CliRagsoc, CliRagsocEstesa)"
                                    " VALUES (1, 'ROSSI MARIO', '5'), (2, 'ROSSI MARTA', '5')"))
              && q.exec(QStringLiteral("INSERT INTO Squadre VALUES (5, 1), (5, 2)"));
    ok = ok && q.prepare(QStringLiteral(
                  "INSERT INTO WInterMedi (CliRagsoc, dstCodice, dstDitta, dstData, dstCliente,"
                  " dstCausale, dstMoneta, dstImporto, dstCodP, Descrizione, Segno)"
                  " VALUES (?, ?, 'ALFA SIM', ?, ?, ?, ?, ?, 'FONDO', 'X', ?)"));
    for (int i = 1; ok && i <= Movimenti; ++i) {
        const int cliente = 1 + i % 2;
        const int giorno = Inizio + (i * Giorni) / Movimenti;
        const bool lire = giorno < 37257;
        const bool uscita = i % 4 == 0;
        for (const QVariant &v :
             {QVariant(cliente == 1 ? "ROSSI MARIO" : "ROSSI MARTA"), QVariant(i),
              QVariant(giorno), QVariant(cliente), QVariant(uscita ? "002" : "001"),
              QVariant(lire ? "LIT" : "EUR"), QVariant((lire ? 1936.27 : 1.0) * (500 + i % 700)),
              QVariant(uscita ? "-" : "+")})
            q.addBindValue(v);
        ok = q.exec();
    }
    return ok && t.conferma();
}

const CampiInteressi Campi{.cliente = QStringLiteral("1"),
                               .nomeCliente = QStringLiteral("ROSSI MARIO"),
                               .alGiorno = QStringLiteral("31"), .alMese = QStringLiteral("12"),
                               .alAnno = QStringLiteral("2004"),
                               .monetaFinale = QStringLiteral("EUR"),
                               .saldoFinale = QStringLiteral("5000000"),
                               .squadra = QStringLiteral("5"), .oggi = 45458};

void stagingInteressiSquadra(benchmark::State &state)
{
    for (auto _ : state) {
        StatoInteressi stato;
        const CalcoloInteressi calcolo = CalcolaInteressi(Campi, stato);
        if (!calcolo.righe || calcolo.righe->corpo.size() != Movimenti
            || !PreparaTemporanei(*calcolo.righe)) {
            state.SkipWithError("print not staged");
            break;
        }
        benchmark::DoNotOptimize(stato.TassoTir);
    }
    state.SetItemsProcessed(state.iterations() * Movimenti);
}
BENCHMARK(stagingInteressiSquadra)->Unit(benchmark::kMillisecond);

// The same without the staging: the reading and the computation alone.
void calcoloInteressiSquadra(benchmark::State &state)
{
    for (auto _ : state) {
        StatoInteressi stato;
        benchmark::DoNotOptimize(CalcolaInteressi(Campi, stato).righe);
    }
}
BENCHMARK(calcoloInteressiSquadra)->Unit(benchmark::kMillisecond);

// Payments in over two years and a closing value 8% a year above them.
void tirMilleFlussi(benchmark::State &state)
{
    SerieTir base;
    double versato = 0;
    for (int i = 1; i < 1000; ++i) {
        base.Aggiungi(1000 + i % 300, i * 0.73);
        versato += 1000 + i % 300;
    }
    base.Aggiungi(-versato * 1.08, 730);
    base.SegnoTir = 1;
    int giri = 0;
    for (auto _ : state) {
        SerieTir serie = base;
        benchmark::DoNotOptimize(CalcolaTirX(serie, &giri));
    }
    state.counters["giri"] = giri;
}
BENCHMARK(tirMilleFlussi)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return bench::EseguiSuArchivi(argc, argv, "bench_interessi", Prepara);
}
