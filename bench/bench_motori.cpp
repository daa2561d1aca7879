// The two engines side by side in one run, on the same office: the
// management list's extraction over a ledger of a million movements, and
// the entry screen's save of a slip of 500 working rows over it. The files
// live in a temporary folder; the server is the one SORVANE_PROVA_SERVER
// names ("host:port", e.g. the tests' private cluster), in a database made
// for the run and dropped after it. Without it only the files are measured.
// Run: SORVANE_PROVA_SERVER=127.0.0.1:54329 build/bench/bench_motori

#include "bench/ArchiviDistinte.h"
#include "bench/ArchiviLedger.h"
#include "distinte/GesDist.h"
#include "distinte/ModelloDistinte.h"
#include "distinte/Salvataggio.h"
#include "frame/core/Messaggi.h"
#include "store/Motore.h"
#include "store/Tabelle.h"

#include <QApplication>
#include <QSqlError>
#include <QTableView>
#include <memory>

using namespace sorvane;
using namespace sorvane::bench;

namespace {

constexpr int Movimenti = 1000000;
constexpr int Clienti = 3000;

// The settings of each engine's set; empty when that set is missing.
Impostazioni g_file;
Impostazioni g_server;
bool g_serverPronto = false;
QString g_database;
QString g_operatoreFile; // the server's set is the operator "BENCH"'s

bool EseguiSql(const QString &sql)
{
    QSqlQuery q(Db());
    if (q.exec(sql))
        return true;
    std::fprintf(stderr, "%s\n%s\n", qPrintable(sql), qPrintable(q.lastError().text()));
    return false;
}

// A statement on the server's maintenance database.
bool Amministra(const QString &sql)
{
    const QString nome = QUuid::createUuid().toString();
    bool fatto = false;
    {
        QSqlDatabase db = AggiungiServer(nome);
        db.setDatabaseName(QStringLiteral("postgres"));
        fatto = db.open() && QSqlQuery(db).exec(sql);
    }
    QSqlDatabase::removeDatabase(nome);
    return fatto;
}

// The same ledger as the files' (bench/ArchiviLedger.h), written by the
// server itself: a million rows sent one by one would take minutes.
bool RiempiLedgerServer()
{
    Transazione t;
    return EseguiSql(QStringLiteral(
               "INSERT INTO Clienti (CliCodice, CliRagsoc, CliRagsocEstesa, CliCategoria) "
               "SELECT c, 'CLIENTE ' || lpad(CAST(1 + (c * 7919) % %2 AS text), 5, '0'), ' ', 'A' "
               "FROM generate_series(1, %1) AS c")
                         .arg(Clienti)
                         .arg(Clienti - Clienti / 10))
        && EseguiSql(QStringLiteral("INSERT INTO DistCausali VALUES ('001', 'VERSAMENTO', '+')"))
        && EseguiSql(QStringLiteral(
               "INSERT INTO Distinte (dstCodice, dstPrg, dstDitta, dstData, dstCliente, "
               "dstCausale, dstMoneta, dstImporto, dstAssegno, dstBanca, dstSpeseUT, dstCodP0, "
               "dstCodP1, dstCodP2, dstCodP3, dstCodP4, dstChiusa) "
               "SELECT i + 1, CAST(p AS text), CASE WHEN i % 3 = 0 THEN 'BETA' ELSE 'DITTA' END, "
               "%1 - %2 + CAST(i AS bigint) * %2 / %3, 1 + (i * 31) % %4, "
               "'001', 'EUR', 100.0 + (CAST(i AS bigint) * 37) % 50000 + 0.5, CAST(i % 1000 AS text), "
               "(ARRAY['BPM', 'UNICREDIT', 'INTESA', ' '])[i % 4 + 1], i % 7, "
               "'PROD' || (i % 97) || CASE WHEN i % 2 = 0 THEN chr(10) ELSE '' END, "
               "'ALTRO' || (i % 13) || CASE WHEN i % 2 = 0 THEN chr(10) ELSE '' END, "
               "' ', ' ', ' ', CASE WHEN i % 2 = 0 THEN ' ' ELSE 'S' END "
               "FROM generate_series(0, %3 - 1) AS i "
               "CROSS JOIN generate_series(0, 1) AS p WHERE p = 0 OR i % 10 = 9")
                         .arg(OggiLedger)
                         .arg(GiorniLedger)
                         .arg(Movimenti)
                         .arg(Clienti))
        && t.conferma() && EseguiSql(QStringLiteral("ANALYZE"));
}

bool PreparaServer(const QString &indirizzo)
{
    ServerArchivio server;
    if (!LeggiIndirizzo(indirizzo, server))
        return false;
    server.utente = qEnvironmentVariable("PGUSER", QStringLiteral("sorvane"));
    server.postazione = QStringLiteral("bench");
    Impostazioni &imp = impostazioni();
    imp.Motore = QStringLiteral("POSTGRES");
    imp.Server = server;
    sessione().CodiceOperatore = QStringLiteral("BENCH");
    g_database = QStringLiteral("bench_") + QUuid::createUuid().toString(QUuid::Id128).left(20);
    if (!Amministra(QStringLiteral("CREATE DATABASE \"%1\"").arg(g_database)))
        return false;
    imp.Server.database = g_database;
    g_server = imp; // for the drop at the end, whatever happens next
    const QString nome = QUuid::createUuid().toString();
    bool fatto = true;
    {
        QSqlDatabase db = AggiungiServer(nome);
        fatto = db.open();
        QString errore;
        for (Archivio a : TuttiGliArchivi)
            fatto = fatto && CreaSchema(db, a, SchemaServer(a), &errore);
    }
    QSqlDatabase::removeDatabase(nome);
    return fatto && ConnettiDatabase() && RiempiLedgerServer();
}

bool PreparaMotori(const QTemporaryDir &dir)
{
    if (!PreparaLedger(dir, Movimenti, Clienti))
        return false;
    g_file = impostazioni();
    g_operatoreFile = sessione().CodiceOperatore;
    ChiudiDatabase();
    const QString indirizzo = qEnvironmentVariable("SORVANE_PROVA_SERVER");
    if (indirizzo.isEmpty()) {
        std::printf("SORVANE_PROVA_SERVER not set: the server half is skipped\n");
    } else if (PreparaServer(indirizzo)) {
        g_serverPronto = true;
        ChiudiDatabase();
    } else {
        std::fprintf(stderr, "the server's set could not be made: its half is skipped\n");
    }
    return true;
}

// The program's connection on the set of the benchmark's engine (0 the
// files, 1 the server); false when that set is missing.
bool Usa(benchmark::State &state)
{
    const bool server = state.range(0) != 0;
    state.SetLabel(server ? "postgres" : "sqlite");
    const Impostazioni &imp = server ? g_server : g_file;
    if (server && !g_serverPronto) {
        state.SkipWithError("no server");
        return false;
    }
    ChiudiTutteLeTabelle();
    ChiudiDatabase();
    impostazioni() = imp;
    sessione().CodiceOperatore = server ? QStringLiteral("BENCH") : g_operatoreFile;
    if (!ConnettiDatabase()) {
        state.SkipWithError("not connected");
        return false;
    }
    return true;
}

// ESTRAI over the default filter, the first rows painted.
void estrai(benchmark::State &state)
{
    if (!Usa(state))
        return;
    auto s = std::make_unique<GesDist>();
    s->resize(1220, 720);
    s->show();
    QApplication::processEvents();
    for (auto _ : state) {
        s->EstraiDistinte();
        s->TDBGrid1()->viewport()->repaint();
        benchmark::DoNotOptimize(s->Data1()->rowCount());
    }
}
BENCHMARK(estrai)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(5);

// The save of 500 working rows (400 movements) into the ledger.
void salva(benchmark::State &state)
{
    if (Usa(state))
        MisuraSalvataggi(state);
}
BENCHMARK(salva)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(10);

} // namespace

int main(int argc, char **argv)
{
    // A failure is told on the console and answered Cancel, never retried.
    MessaggiRegistrati messaggi;
    messaggi.gestore = [](const Richiesta &r) {
        std::fprintf(stderr, "%s\n", qPrintable(r.testo));
        return std::optional(Risposta::Annulla);
    };
    const int esito = EseguiSuArchivi<QApplication>(argc, argv, "bench_motori", PreparaMotori);
    if (!g_database.isEmpty()) {
        impostazioni() = g_server;
        Amministra(QStringLiteral("DROP DATABASE IF EXISTS \"%1\" WITH (FORCE)").arg(g_database));
    }
    return esito;
}
