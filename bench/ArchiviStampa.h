#pragma once

// The files of the benches of a firm's prints: 300 clients, a reason of each
// sign ("001" in, "002" out), the firm's card, and a ledger where the firm's
// rows stand among as many of another firm.

#include "bench/ArchiviBench.h"
#include "store/Transazione.h"

#include <QSqlQuery>

namespace sorvane::bench {

inline const QString DittaStampata = QStringLiteral("L'ARCA ASSICURAZIONI");

// The ledger's rows through `inserimento`: righe(q, ditta, codice) writes
// one firm's, the movement numbers counting on in `codice` from the first
// firm to the other.
template <typename Righe>
bool PreparaDitta(const QTemporaryDir &dir, const QString &inserimento, Righe righe)
{
    if (!ApriArchiviVuoti(dir))
        return false;
    Transazione t;
    QSqlQuery q(Db());
    bool ok = q.prepare(QStringLiteral("INSERT INTO Clienti (CliCodice, CliRagsoc) "
                                       "VALUES (?, ?)"));
    for (int c = 1; ok && c <= 300; ++c)
        ok = EseguiRiga(q, {c, QStringLiteral("CLIENTE NUMERO %1").arg(c)});
    int codice = 0;
    return ok && q.prepare(QStringLiteral("INSERT INTO DistCausali VALUES (?, ?, ?)"))
           && EseguiRiga(q, {QStringLiteral("001"), QStringLiteral("VERSAMENTO"), "+"})
           && EseguiRiga(q, {QStringLiteral("002"), QStringLiteral("RISCATTO"), "-"})
           && q.prepare(QStringLiteral("INSERT INTO Societa VALUES (?, 'VIA ROMA 1', '20121', "
                                       "'MILANO', 'MI')"))
           && EseguiRiga(q, {DittaStampata}) && q.prepare(inserimento)
           && righe(q, DittaStampata, codice) && righe(q, QStringLiteral("ALTRA DITTA"), codice)
           && t.conferma();
}

} // namespace sorvane::bench
