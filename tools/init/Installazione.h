#pragma once

// What sorvane-init does: a data folder with the layout the settings
// expect, the four databases with the whole schema and the rows a fresh
// office needs, optionally a demo office, and the local INI pointing at it
// all. Nothing that exists is overwritten: an existing database or INI
// stops the work before anything is written, and a failure halfway removes
// what this run created.

#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <functional>

namespace sorvane::init {

struct Opzioni
{
    QString cartella;                             // DIR
    QString operatore = QStringLiteral("UFFICIO"); // BASE/OPERATORE
    bool demo = false;
    qint64 movimenti = 0; // with demo: 0 the normal office, N for benchmarks
    quint32 seme = 1;
    QString modelli; // folder of report templates to install; empty: none
};

// Paths of an installation in `cartella` for `operatore`.
struct Disposizione
{
    QString radice;
    QString pathDati;     // radice/dati/
    QString pathLavoro;   // radice/lavoro/
    QString pathModuli;   // radice/moduli/
    QString ini;          // radice/sorvane.ini
    QString fileDati, fileLavoro, fileVisite, fileIndici;
    QStringList cartelle; // every folder to make, parents first
};

Disposizione Disponi(const QString &cartella, const QString &operatore);

// Runs the whole set-up. Progress lines and the final report go to
// `messaggi`; false with the reason in *errore.
bool Installa(const Opzioni &opzioni, const std::function<void(const QString &)> &messaggi,
              QString *errore);

// The rows every office starts with: the good and bad categories, the
// reasons of the opening balances, the report modules and the currencies.
bool ScriviRigheIniziali(QSqlDatabase &db, QString *errore);

} // namespace sorvane::init
