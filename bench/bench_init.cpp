#include "tools/demo/DatiDemo.h"

#include "store/Schema.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

// A fresh office in a temporary folder: the four files on one connection,
// with their tables and main indexes, loaded as the set-up tool loads the
// demo (no syncing, a large page cache, the other indexes made afterwards).
class UfficioVuoto
{
public:
    UfficioVuoto()
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), Nome);
        db.setDatabaseName(m_cartella.filePath(sorvane::NomeFile(sorvane::Archivio::Lavoro)));
        m_pronto = db.open();
        for (sorvane::Archivio a : sorvane::TuttiGliArchivi) {
            const QString schema = sorvane::NomeSchema(a);
            if (a != sorvane::Archivio::Lavoro) {
                QSqlQuery q(db);
                q.prepare(QStringLiteral("ATTACH DATABASE ? AS %1").arg(schema));
                q.addBindValue(m_cartella.filePath(sorvane::NomeFile(a)));
                m_pronto = m_pronto && q.exec();
            }
            QSqlQuery(db).exec(QStringLiteral("PRAGMA %1.synchronous = OFF").arg(schema));
            QSqlQuery(db).exec(QStringLiteral("PRAGMA %1.cache_size = -65536").arg(schema));
            m_pronto = m_pronto && sorvane::CreaTabelle(db, a, schema, &m_errore);
        }
    }
    ~UfficioVuoto() { QSqlDatabase::removeDatabase(Nome); }

    bool pronto() const { return m_pronto; }
    QSqlDatabase db() const { return QSqlDatabase::database(Nome); }
    QString *errore() { return &m_errore; }

private:
    static inline const QString Nome = QStringLiteral("bench_init");
    QTemporaryDir m_cartella;
    QString m_errore;
    bool m_pronto = false;
};

void BM_GeneraDatiDemo(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        {
            UfficioVuoto ufficio;
            if (!ufficio.pronto()) {
                state.SkipWithError(qPrintable(*ufficio.errore()));
                return;
            }
            sorvane::OpzioniDemo opzioni;
            opzioni.movimenti = state.range(0);
            QSqlDatabase db = ufficio.db();
            state.ResumeTiming();
            const bool fatto = sorvane::GeneraDatiDemo(db, opzioni, ufficio.errore());
            state.PauseTiming();
            if (!fatto) {
                state.SkipWithError(qPrintable(*ufficio.errore()));
                return;
            }
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_GeneraDatiDemo)
    ->Arg(100000)
    ->Arg(1000000)
    ->Iterations(1)
    ->Unit(benchmark::kSecond)
    ->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
