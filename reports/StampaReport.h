#pragma once

// One print of a module file: the caller sets the properties and calls
// lancioStampa. The module is looked for in the operator's report folder,
// then in the shared one; its rows are the staging tables of the work file.

#include <QString>

class QWidget;

namespace sorvane {

class StampaReport
{
public:
    QString stTipoStampa = QStringLiteral("V"); // "V", "P" or "D"; others are "V"
    int stCopie = 1;                  // not above 0 means 1
    QString stNomeModuloStampa;       // the report file's name, ".rpt" included
    QString stStringaSQL;             // the selection formula, offered as {{formula}}
    QString stIntestazioneVideo;      // title of the preview window
    QWidget *stObjStampante = nullptr; // parent of the print dialog
    QString stStampante;              // with "D": this printer in place of the default

    // False when the module is missing or unreadable, the rows cannot be
    // read or nothing was printed; the failure is told in a box, a missing
    // file as "GESTORE REPORT " + path + " INESISTENTE".
    bool lancioStampa();
};

} // namespace sorvane
