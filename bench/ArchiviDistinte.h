#pragma once

// A set of files in a temporary folder with a slip ledger of a busy office,
// for the benches of the slip screens and their save.

#include "bench/ArchiviBench.h"
#include "distinte/Salvataggio.h"
#include "store/Transazione.h"

#include <QSqlQuery>

namespace sorvane::bench {

inline constexpr int MovimentiGiaSalvati = 50000;
inline constexpr int MovimentiDellaDistinta = 400;

// Rows of a slip table, `movimenti` movements from number `primo` on.
inline bool Riempi(const QString &tabella, int primo, int movimenti, bool marcate)
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

// Saves of a slip of the working rows above, each timed without its
// filling; the rows written to `Distinte`.
inline int MisuraSalvataggi(benchmark::State &state)
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
    return righe;
}

inline bool Prepara(const QTemporaryDir &dir)
{
    if (!ApriArchiviVuoti(dir))
        return false;
    Transazione t;
    return Riempi(QStringLiteral("Distinte"), 1, MovimentiGiaSalvati, true) && t.conferma();
}

} // namespace sorvane::bench
