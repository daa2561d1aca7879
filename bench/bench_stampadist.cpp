// The staging of the slip print: an extraction of 5,000 rows (some 4,350
// movements, every seventh a switch of two rows) read from a ledger that
// also holds other firms' movements, then PrtTesta and PrtCorpo emptied and
// written. The rendering is measured by bench_reports. It must stay under
// two seconds.

#include "bench/ArchiviStampa.h"
#include "distinte/StampaDistinta.h"
#include "reports/Staging.h"
#include "store/Connessione.h"

#include <QSqlQuery>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace sorvane;

namespace {

constexpr int RigheStampate = 5000;

// 5,000 rows of each firm, every seventh movement a switch of two rows.
bool Prepara(const QTemporaryDir &dir)
{
    return bench::PreparaDitta(
        dir,
        QStringLiteral("INSERT INTO Distinte (dstCodice, dstPrg, dstDitta, dstData, dstCliente, "
                       "dstCausale, dstMoneta, dstImporto, dstAssegno, dstBanca, dstSpeseUT, "
                       "dstCodP0, dstCodP1, dstCodP2, dstCodP3, dstCodP4, dstChiusa) VALUES "
                       "(?, ?, ?, ?, ?, ?, 'EUR', ?, '123456', 'BANCA POPOLARE', 2.5, ?, ?, "
                       "'POL77', ' ', ' ', ' ')"),
        [](QSqlQuery &q, const QString &ditta, int &codice) {
            bool ok = true;
            for (int righe = 0; ok && righe < RigheStampate;) {
                ++codice;
                for (int prg = 0; ok && prg < (codice % 7 == 0 ? 2 : 1); ++prg, ++righe) {
                    ok = bench::EseguiRiga(
                        q, {codice, QString::number(prg), ditta, 45000 + codice % 365,
                            1 + codice % 300, codice % 5 ? "001" : "002", 100.0 + codice,
                            QStringLiteral("FND%1\n").arg(codice % 97),
                            QStringLiteral("GEST%1").arg(codice % 13)});
                }
            }
            return ok;
        });
}

void stagingStampaDistinta(benchmark::State &state)
{
    FiltroDistinte filtro;
    filtro.dal = QStringLiteral("//");
    filtro.al = QStringLiteral("//");
    filtro.ditta = bench::DittaStampata;
    filtro.ancheChiusi = true;
    const CondizioneDistinte condizione = CondizioneEstrazione(filtro, 46000);
    qsizetype righe = 0;
    for (auto _ : state) {
        const std::optional<DatiReport> dati = RigheStampaDistinta(condizione, filtro);
        if (!dati || dati->corpo.size() < RigheStampate || !PreparaTemporanei(*dati)) {
            state.SkipWithError("print not staged");
            break;
        }
        righe += dati->corpo.size();
    }
    state.SetItemsProcessed(righe);
}
BENCHMARK(stagingStampaDistinta)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return bench::EseguiSuArchivi(argc, argv, "bench_stampadist", Prepara);
}
