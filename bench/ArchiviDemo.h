#pragma once

// The demo office of the set-up tool at scale, its ledger of `righe` rows
// ending on 15/06/2024, the session's today that day and in test mode: for
// the benches of the 04 ledger's screens.

#include "bench/ArchiviBench.h"
#include "frame/core/Sessione.h"
#include "tools/demo/DatiDemo.h"

namespace sorvane::bench {

inline bool PreparaUfficioDemo(const QTemporaryDir &dir, qint64 righe)
{
    sessione().OggiTesto = QStringLiteral("15/06/2024");
    sessione().ModoProva = true;
    if (!ApriArchiviVuoti(dir))
        return false;
    QSqlDatabase db = Db();
    OpzioniDemo opzioni;
    opzioni.movimenti = righe;
    opzioni.oggi = QDate(2024, 6, 15);
    QString errore;
    return GeneraDatiDemo(db, opzioni, &errore);
}

} // namespace sorvane::bench
