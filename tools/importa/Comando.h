#pragma once

// sorvane-importa as a whole: finds the legacy files, plans the import,
// makes the data folder when it does not exist yet, writes, and reports.

#include "tools/importa/Importazione.h"

namespace sorvane::importa {

struct Opzioni
{
    QString sorgente;     // a folder of legacy files or one Access file
    QString destinazione; // a data folder of sorvane-init, or a new one
    QString operatore;    // empty: the destination's, else UFFICIO
    bool sostituisci = false;
    QString modelli; // report templates for a new data folder
};

// The legacy files in a folder, as the suite lays them out: the operator's
// DatiDV, VisiteDV and WorkDV in the operator's own subfolder (or in the
// folder itself), IndiciDV in the folder. Names are matched without regard
// to case. Without an operator, the one subfolder that holds a DatiDV is
// taken; *operatore then tells which.
QStringList TrovaFileAccess(const QString &cartella, QString *operatore);

// Imports `sorgenti` into the data folder `destinazione` for `operatore`.
// A folder without sorvane.ini is made first, as sorvane-init does, and
// its starting rows give way to the office's own. When no table of the
// program is in the sources, nothing is touched; on any failure the folder
// is left as it was.
bool ImportaInCartella(const QList<const Sorgente *> &sorgenti, const Opzioni &opzioni,
                       const Resoconto &resoconto, QString *errore);

// The command: false with the reason in *errore.
bool Esegui(const Opzioni &opzioni, const Resoconto &resoconto, QString *errore);

} // namespace sorvane::importa
