#pragma once

// The main of a bench that works on a set of files made in a temporary
// folder: prepares them, runs the benchmarks, closes the connection.

#include "frame/core/Impostazioni.h"
#include "store/Connessione.h"
#include "store/Schema.h"

#include <QCoreApplication>
#include <QDir>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <type_traits>

namespace sorvane::bench {

// A prepared statement run with `valori` bound in their order.
inline bool EseguiRiga(QSqlQuery &q, const QVariantList &valori)
{
    for (int i = 0; i < valori.size(); ++i)
        q.bindValue(i, valori[i]);
    return q.exec();
}

// One file of the set, made with its whole schema.
inline bool CreaArchivio(Archivio a)
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

// The four files, empty, in the folder, and the program's connection on them.
inline bool ApriArchiviVuoti(const QTemporaryDir &dir)
{
    Impostazioni &imp = impostazioni();
    imp.PathDati = QDir::toNativeSeparators(dir.path()) + QDir::separator();
    imp.FileDati = imp.PathDati + NomeFile(Archivio::Dati);
    imp.FileLavoro = imp.PathDati + NomeFile(Archivio::Lavoro);
    imp.FileVisite = imp.PathDati + NomeFile(Archivio::Visite);
    for (Archivio a : TuttiGliArchivi)
        if (!CreaArchivio(a))
            return false;
    return ConnettiDatabase();
}

// Applicazione is QApplication for the benches that open screens; they run
// offscreen unless QT_QPA_PLATFORM says otherwise.
template <typename Applicazione = QCoreApplication, typename Preparazione>
int EseguiSuArchivi(int argc, char **argv, const char *nome, Preparazione prepara)
{
    if (!std::is_same_v<Applicazione, QCoreApplication>
        && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Applicazione app(argc, argv);
    QTemporaryDir dir;
    if (!dir.isValid() || !prepara(dir)) {
        std::fprintf(stderr, "%s: the files could not be made\n", nome);
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    ChiudiDatabase();
    return 0;
}

} // namespace sorvane::bench
