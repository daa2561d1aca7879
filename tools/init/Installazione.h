#pragma once

// What sorvane-init does: a data folder with the layout the settings
// expect, the four databases with the whole schema and the rows a fresh
// office needs, optionally a demo office, and the local INI pointing at it
// all. Nothing that exists is overwritten: an existing database or INI
// stops the work before anything is written, and a failure halfway removes
// what this run created.

#include "frame/core/Impostazioni.h"
#include "frame/core/Messaggi.h"

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

// Where the new office lives on a server (an empty postazione: the host's
// name), and the file office (its folder) whose rows it takes, if any.
struct Server : ServerArchivio
{
    QString copia;
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

// The store tells its failures through the message seam; here they are
// kept for the report, and every question is answered Cancel so that no
// Retry can loop.
class MessaggiRaccolti : public Messaggi
{
public:
    MessaggiRaccolti() { installaMessaggi(this); }
    ~MessaggiRaccolti() override { installaMessaggi(nullptr); }
    Risposta chiedi(const Richiesta &r) override
    {
        testi.append(r.testo);
        return r.pulsanti == Pulsanti::Ok ? Risposta::Ok : Risposta::Annulla;
    }
    QStringList testi;
};

Disposizione Disponi(const QString &cartella, const QString &operatore);

// Runs the whole set-up. Progress lines and the final report go to
// `messaggi`; false with the reason in *errore.
bool Installa(const Opzioni &opzioni, const std::function<void(const QString &)> &messaggi,
              QString *errore);

// The rows every office starts with: the good and bad categories, the
// reasons of the opening balances, the report modules and the currencies.
bool ScriviRigheIniziali(QSqlDatabase &db, QString *errore);

// Copies the report templates of `origine` into `destinazione`, never over
// an existing one.
void InstallaModelli(const QString &origine, const QString &destinazione,
                     const std::function<void(const QString &)> &messaggi);

// The local INI's paths and operator for the layout `d`.
bool ScriviIniUfficio(const Disposizione &d, const QString &operatore, QString *errore);

// The demo office into the program's open connection.
bool ScriviDemo(const Opzioni &opzioni, QSqlDatabase &db, QString *errore);

// An office on a PostgreSQL server: the database (made when missing and the
// user may), the schemas of the operator and the shared index schema, the
// default rows or the demo, the local folders, and the local INI's
// [ARCHIVIO] pointing the program at it all.
bool InstallaSuServer(const Opzioni &opzioni, const Server &server,
                      const std::function<void(const QString &)> &messaggi, QString *errore);

} // namespace sorvane::init
