#pragma once

// Every print of the program goes the same road: the staging tables of the
// work file (PrtTesta's one row, PrtCorpo's rows, PrtPiede's one row) are
// emptied and written, the report module is looked up by its key, and
// Gstampe runs it. A screen that prints makes a DatiReport of its fields
// (names as in the tables: TCampo1, CNumero3, Pnumero2, ...) and calls
// StampaModulo.

#include "reports/DatiReport.h"

#include <QString>

namespace sorvane {

// Values a screen hands to the print it starts.
struct ConsegnaStampa
{
    QString ModuloCorrente;  // the module's file name, as ModuloDiStampa gave it
    QString FormulaCorrente; // a selection formula; emptied after each print
    QString StampanteScelta; // a printer in place of the default one
};

ConsegnaStampa &consegnaStampa();

// The steps of a print's staging, as its handler finds them in
// sessione().CodiceStop, and their words.
enum PassoStampa : int { PassoPulizia = 1, PassoApertura = 2, PassoAggiornamento = 3 };
QString TestoPassoStampa(int passo);

// Empties the three staging tables, then writes the rows in one transaction
// of the work file. A failing step is told in its words, what the step wrote
// is undone, sessione().CodiceStop keeps the step and TestoErrore the
// engine's words; false then. A field the tables don't have fails step 3.
bool PreparaTemporanei(const DatiReport &righe);

// The report file of a module key: the key + ".rpt", unless the table
// `Moduli` has a row for the key, whose `MdFile` is then the answer. A
// database failure (or a row without a file) is told as "Tabella dei moduli
// non aggiornata!" and the default kept.
QString ModuloDiStampa(const QString &chiave);

// The whole print: staging, module, Gstampe, CodiceStop back to 0. False
// when the staging failed (nothing is printed then).
bool StampaModulo(const QString &chiave, const DatiReport &righe,
                  const QString &formula = QString());

} // namespace sorvane
