// The 04 statement of a firm with 20,000 movements across the 2002 cut-over,
// among as many of another firm: the staging (the walk of the rows, the
// firm's card, PrtTesta, PrtCorpo and PrtPiede emptied and written) must
// stay under a second, and the PDF of DistXdit.rpt from the staged rows
// under ten. Run: build/bench/bench_stampa04

#include "bench/ArchiviStampa.h"
#include "ledger04/Distinte04.h"
#include "ledger04/StampaDistinta04.h"
#include "reports/CaricaDati.h"
#include "reports/Modello.h"
#include "reports/Renderer.h"
#include "reports/Staging.h"
#include "store/Connessione.h"

#include <QApplication>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace sorvane;

namespace {

constexpr int Movimenti = 20000;

// Rows from 2000 to 2003 in lire and euro.
bool Prepara(const QTemporaryDir &dir)
{
    return bench::PreparaDitta(
        dir,
        QStringLiteral("INSERT INTO Distinte04 (dstCodice, dstDitta, dstData, dstCliente, "
                       "dstCausale, dstMoneta, dstImporto, dstCodP) "
                       "VALUES (?, ?, ?, ?, ?, ?, ?, ?)"),
        [](QSqlQuery &q, const QString &ditta, int &codice) {
            bool ok = true;
            for (int i = 0; ok && i < Movimenti; ++i) {
                ++codice;
                const int giorno = 36526 + codice % 1400; // 2000 to 2003
                const bool lire = giorno < 37257 ? codice % 3 != 0 : codice % 11 == 0;
                ok = bench::EseguiRiga(
                    q, {codice, ditta, giorno, 1 + codice % 300, codice % 5 ? "001" : "002",
                        lire ? "LIT" : "EUR", lire ? 250000.0 + codice : 100.25 + codice,
                        QStringLiteral("FONDO %1 CLASSE A").arg(codice % 97)});
            }
            return ok;
        });
}

SchermoEstratto04 Schermo()
{
    FiltroDistinte filtro;
    filtro.dal = QStringLiteral("//");
    filtro.al = QStringLiteral("//");
    filtro.ditta = bench::DittaStampata;
    SchermoEstratto04 s;
    s.estrazione = CondizioneEstrazione04(filtro, 46000);
    s.dataDal = filtro.dal;
    s.dataAl = filtro.al;
    s.ditta = bench::DittaStampata;
    return s;
}

void stagingEstratto04(benchmark::State &state)
{
    const SchermoEstratto04 s = Schermo();
    for (auto _ : state) {
        const std::optional<DatiReport> dati = RigheEstratto04(s);
        if (!dati || dati->corpo.size() != Movimenti || !PreparaTemporanei(*dati)) {
            state.SkipWithError("statement not staged");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations() * Movimenti);
}
BENCHMARK(stagingEstratto04)->Unit(benchmark::kMillisecond);

// From the staged rows to the PDF file: loading them, filling the
// template, laying out and drawing every page.
void pdfEstratto04(benchmark::State &state)
{
    Modello modello;
    DatiReport dati;
    const std::optional<DatiReport> righe = RigheEstratto04(Schermo());
    if (!righe || !PreparaTemporanei(*righe)
        || !CaricaModello(QStringLiteral(MODULI_PREDEFINITI "/DistXdit.rpt"), modello)) {
        state.SkipWithError("statement not staged");
        return;
    }
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("DistXdit.pdf"));
    for (auto _ : state) {
        if (!CaricaDatiReport(DbLavoro(), dati)
            || !SalvaPdf(file, modello, CompilaModello(modello, dati))) {
            state.SkipWithError("PDF not written");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations() * Movimenti);
}
BENCHMARK(pdfEstratto04)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    return bench::EseguiSuArchivi<QApplication>(argc, argv, "bench_stampa04", Prepara);
}
