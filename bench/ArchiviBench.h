#pragma once

// The main of a bench that works on a set of files made in a temporary
// folder: prepares them, runs the benchmarks, closes the connection.

#include "store/Connessione.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>

namespace sorvane::bench {

// Applicazione is QApplication for the benches that open screens.
template <typename Applicazione = QCoreApplication, typename Preparazione>
int EseguiSuArchivi(int argc, char **argv, const char *nome, Preparazione prepara)
{
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
