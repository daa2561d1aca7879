// The save of the entry screen: a slip of 500 working rows (400
// movements, every fourth a switch of two rows) moved to a ledger that
// already holds a busy office's movements. It must stay under a second.

#include "bench/ArchiviBench.h"
#include "distinte/Salvataggio.h"
#include "frame/core/Impostazioni.h"
#include "store/Connessione.h"
#include "store/Schema.h"
#include "store/Transazione.h"

#include <QCoreApplication>
#include <QDir>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>
#include <benchmark/benchmark.h>

#include <cstdio>

using namespace sorvane;

namespace {

constexpr int MovimentiGiaSalvati = 50000;
constexpr int MovimentiDellaDistinta = 400;

bool CreaArchivio(Archivio a)
{
    const QString nome = QUuid::createUuid().toString();
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), nome);
        db.setDatabaseName(PercorsoArchivio(a));
        QString errore;
        ok = db.open() && CreaSchema(db, a, QStringLiteral("main"), &errore);
        db.close();
    }
    QSqlDatabase::removeDatabase(nome);
    return ok;
}

// Rows of a slip table, `movimenti` movements from number `primo` on.
bool Riempi(const QString &tabella, int primo, int movimenti, bool marcate)
{
    QSqlQuery q(Db());
    q.prepare(QStringLiteral("INSERT INTO %1 (dstCodice, dstPrg, dstDitta, dstData, "
                             "dstCliente, dstCausale, dstMoneta, dstImporto, dstAssegno, "
                             "dstBanca, dstSpeseUT, dstCodP0, dstCodP1, dstCodP2, dstCodP3, "
                             "dstCodP4, dstChiusa) VALUES (?, ?, 'DITTA', ?, ?, '001', "
                             "'EUR', ?, ' ', ' ', 0, ?, ?, ' ', ' ', ' ', ' ')")
                  .arg(tabella));
    const QString marca = marcate ? QStringLiteral("\n") : QString();
    for (int i = 0; i < movimenti; ++i) {
        for (int prg = 0; prg < (i % 4 == 3 ? 2 : 1); ++prg) {
            q.addBindValue(primo + i);
            q.addBindValue(QString::number(prg));
            q.addBindValue(45000 + i % 300);
            q.addBindValue(i % 3000);
            q.addBindValue(100.0 + i);
            q.addBindValue(QStringLiteral("PRODOTTO") + QString::number(i % 97) + marca);
            q.addBindValue(QStringLiteral("ALTRO") + QString::number(i % 13) + marca);
            if (!q.exec())
                return false;
        }
    }
    return true;
}

bool Prepara(const QTemporaryDir &dir)
{
    Impostazioni &imp = impostazioni();
    imp.PathDati = QDir::toNativeSeparators(dir.path()) + QDir::separator();
    imp.FileDati = imp.PathDati + NomeFile(Archivio::Dati);
    imp.FileLavoro = imp.PathDati + NomeFile(Archivio::Lavoro);
    imp.FileVisite = imp.PathDati + NomeFile(Archivio::Visite);
    for (Archivio a : TuttiGliArchivi)
        if (!CreaArchivio(a))
            return false;
    if (!ConnettiDatabase())
        return false;
    Transazione t;
    return Riempi(QStringLiteral("Distinte"), 1, MovimentiGiaSalvati, true) && t.conferma();
}

void salvaDistinta(benchmark::State &state)
{
    int righe = 0;
    for (auto _ : state) {
        state.PauseTiming();
        {
            Transazione t;
            if (!Riempi(QStringLiteral("BkDistinte"), 1, MovimentiDellaDistinta, false)
                || !t.conferma()) {
                state.SkipWithError("working rows not written");
                break;
            }
        }
        state.ResumeTiming();
        const EsitoSalvataggio e = SalvaDistinta();
        if (!e.riuscito) {
            state.SkipWithError("save failed");
            break;
        }
        righe += e.righeDistinte;
    }
    state.SetItemsProcessed(righe);
}
BENCHMARK(salvaDistinta)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return sorvane::bench::EseguiSuArchivi(argc, argv, "bench_distinte", Prepara);
}
