// The management list over a ledger of a million movements: the default
// extraction (everything up to today, open ones) must show its first rows
// at once, and confirming a code must refresh the list at once, the user's
// place kept.

#include "bench/ArchiviBench.h"
#include "distinte/ControllaCampo.h"
#include "distinte/GesDist.h"
#include "distinte/ModelloDistinte.h"
#include "frame/core/Sessione.h"
#include "store/Transazione.h"

#include <QApplication>
#include <QSqlQuery>
#include <QTableView>
#include <benchmark/benchmark.h>
#include <memory>

using namespace sorvane;
using namespace sorvane::bench;

namespace {

constexpr int Movimenti = 1000000;
constexpr int Clienti = 3000;
constexpr int Oggi = 45458; // 15/06/2024
// Twenty years of slips, the newest today.
constexpr int PrimoGiorno = Oggi - 7300;

bool Esegui(QSqlQuery &q, const QVariantList &valori)
{
    for (int i = 0; i < valori.size(); ++i)
        q.bindValue(i, valori[i]);
    return q.exec();
}

// Every tenth movement a switch; every other one confirmed and closed.
bool RiempiLedger()
{
    Transazione t;
    QSqlQuery q(Db());
    q.prepare(QStringLiteral("INSERT INTO Clienti (CliCodice, CliRagsoc, CliRagsocEstesa,"
                             " CliCategoria) VALUES (?, ?, ' ', 'A')"));
    for (int c = 1; c <= Clienti; ++c) {
        if (!Esegui(q, {c, QStringLiteral("CLIENTE %1").arg(c, 5, 10, QLatin1Char('0'))}))
            return false;
    }
    if (!q.exec(QStringLiteral("INSERT INTO DistCausali VALUES ('001', 'VERSAMENTO', '+')")))
        return false;
    q.prepare(QStringLiteral("INSERT INTO Distinte (dstCodice, dstPrg, dstDitta, dstData,"
                             " dstCliente, dstCausale, dstMoneta, dstImporto, dstAssegno,"
                             " dstBanca, dstSpeseUT, dstCodP0, dstCodP1, dstCodP2, dstCodP3,"
                             " dstCodP4, dstChiusa) VALUES (?, ?, 'DITTA', ?, ?, '001', 'EUR',"
                             " ?, ' ', ' ', 0, ?, ?, ' ', ' ', ' ', ?)"));
    const QString marca = QStringLiteral("\n");
    for (int i = 0; i < Movimenti; ++i) {
        const bool aperto = i % 2 == 0;
        const QString m = aperto ? marca : QString();
        const int giorno = PrimoGiorno + int(qint64(i) * 7300 / Movimenti);
        for (int prg = 0; prg < (i % 10 == 9 ? 2 : 1); ++prg) {
            if (!Esegui(q, {i + 1, QString::number(prg), giorno, 1 + i % Clienti, 100.0 + i,
                            QStringLiteral("PROD") + QString::number(i % 97) + m,
                            QStringLiteral("ALTRO") + QString::number(i % 13) + m,
                            aperto ? QStringLiteral(" ") : QStringLiteral("S")}))
                return false;
        }
    }
    return t.conferma();
}

bool Prepara(const QTemporaryDir &dir)
{
    sessione().OggiTesto = QStringLiteral("15/06/2024");
    sessione().ModoProva = true;
    return ApriArchiviVuoti(dir) && RiempiLedger();
}

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

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return EseguiSuArchivi<QApplication>(argc, argv, "bench_gesdist", Prepara);
}
