#pragma once

// A ledger of a busy office for the benches of the management list and its
// export: twenty years of slips up to today, every tenth movement a switch,
// every other one confirmed and closed. The reference of those benches is
// the sqlite3 command-line tool on the same file, run by the bench itself.

#include "bench/ArchiviBench.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Sessione.h"
#include "store/Transazione.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QSqlQuery>
#include <QStringList>

namespace sorvane::bench {

inline constexpr int OggiLedger = 45458; // 15/06/2024
inline constexpr int GiorniLedger = 7300;

// `movimenti` movements of `clienti` clients, the firms alternating between
// two, one reason.
inline bool RiempiLedger(int movimenti, int clienti)
{
    Transazione t;
    QSqlQuery q(Db());
    q.prepare(QStringLiteral("INSERT INTO Clienti (CliCodice, CliRagsoc, CliRagsocEstesa,"
                             " CliCategoria) VALUES (?, ?, ' ', 'A')"));
    for (int c = 1; c <= clienti; ++c) {
        // Names repeat, so that the name sort has ties.
        const int nome = 1 + (c * 7919) % (clienti - clienti / 10);
        if (!EseguiRiga(q, {c, QStringLiteral("CLIENTE %1").arg(nome, 5, 10, QLatin1Char('0'))}))
            return false;
    }
    if (!q.exec(QStringLiteral("INSERT INTO DistCausali VALUES ('001', 'VERSAMENTO', '+')")))
        return false;
    q.prepare(QStringLiteral("INSERT INTO Distinte (dstCodice, dstPrg, dstDitta, dstData,"
                             " dstCliente, dstCausale, dstMoneta, dstImporto, dstAssegno,"
                             " dstBanca, dstSpeseUT, dstCodP0, dstCodP1, dstCodP2, dstCodP3,"
                             " dstCodP4, dstChiusa) VALUES (?, ?, ?, ?, ?, '001', 'EUR',"
                             " ?, ?, ?, ?, ?, ?, ' ', ' ', ' ', ?)"));
    const QString marca = QStringLiteral("\n");
    const QStringList banche{QStringLiteral("BPM"), QStringLiteral("UNICREDIT"),
                             QStringLiteral("INTESA"), QStringLiteral(" ")};
    for (int i = 0; i < movimenti; ++i) {
        const bool aperto = i % 2 == 0;
        const QString m = aperto ? marca : QString();
        const int giorno = OggiLedger - GiorniLedger + int(qint64(i) * GiorniLedger / movimenti);
        for (int prg = 0; prg < (i % 10 == 9 ? 2 : 1); ++prg) {
            if (!EseguiRiga(q, {i + 1, QString::number(prg),
                                i % 3 == 0 ? QStringLiteral("BETA") : QStringLiteral("DITTA"),
                                giorno, 1 + (i * 31) % clienti, 100.0 + (i * 37) % 50000 + 0.5,
                                QString::number(i % 1000), banche[i % banche.size()],
                                double(i % 7), QStringLiteral("PROD") + QString::number(i % 97) + m,
                                QStringLiteral("ALTRO") + QString::number(i % 13) + m,
                                aperto ? QStringLiteral(" ") : QStringLiteral("S")}))
                return false;
        }
    }
    return t.conferma();
}

inline bool PreparaLedger(const QTemporaryDir &dir, int movimenti, int clienti)
{
    sessione().OggiTesto = QStringLiteral("15/06/2024");
    sessione().ModoProva = true;
    return ApriArchiviVuoti(dir) && RiempiLedger(movimenti, clienti);
}

// A statement with its "?" replaced by the values, as the command-line tool
// takes it.
inline QString SqlConValori(QString sql, const QVariantList &valori)
{
    for (const QVariant &v : valori) {
        const qsizetype i = sql.indexOf(QLatin1Char('?'));
        const QString testo = v.typeId() == QMetaType::QString
                                  ? QLatin1Char('\'') + v.toString() + QLatin1Char('\'')
                                  : v.toString();
        sql.replace(i, 1, testo);
    }
    return sql;
}

// Milliseconds of the command-line tool running `comandi` on the data file,
// its output to `uscita` (nothing kept when empty); -1 when it failed.
inline double TempoSqlite3(const QString &comandi, const QString &uscita = QString())
{
    QProcess p;
    p.setStandardOutputFile(uscita.isEmpty() ? QProcess::nullDevice() : uscita);
    QElapsedTimer t;
    t.start();
    p.start(QStringLiteral("sqlite3"), {QStringLiteral("-batch"), impostazioni().FileDati});
    if (!p.waitForStarted())
        return -1;
    p.write(comandi.toUtf8() + "\n");
    p.closeWriteChannel();
    if (!p.waitForFinished(-1) || p.exitCode() != 0)
        return -1;
    return double(t.nsecsElapsed()) / 1e6;
}

} // namespace sorvane::bench
