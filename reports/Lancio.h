#pragma once

// Where a report goes: "V" the preview window, "P" a printer chosen in the
// print dialog, "D" the default printer (or a printer named by the caller)
// without asking. The preview's place and zoom follow the print settings of
// the configuration.

#include "reports/DatiReport.h"
#include "reports/Modello.h"

class QPrinter;
class QWidget;

namespace sorvane {

struct Lancio
{
    QChar tipo = QLatin1Char('V'); // anything but "P" and "D" is the preview
    int copie = 1;          // not above 0 means 1
    QString titolo;         // title of the preview window and of the job
    QString stampante;      // with "D": this printer, when it exists
    QWidget *padre = nullptr; // of the preview and the print dialog
};

// Sends the filled template where the launch says. True when a preview was
// shown or a job printed. A cancelled print dialog prints nothing and returns
// false with no text. A failure is told in a box, or, when errore is given,
// only written there.
bool LanciaReport(const Lancio &lancio, const Modello &modello, const DatiReport &dati,
                  QString *errore = nullptr);

// Looks for the module file (operator's folder, then shared folder) and
// reads it; false with "GESTORE REPORT " + path + " INESISTENTE" told when
// it is missing or unreadable.
bool ApriModulo(const QString &nomeFile, Modello &modello);

// ApriModulo, then LanciaReport.
bool LanciaModulo(const QString &nomeFile, const Lancio &lancio, const DatiReport &dati);

// The pages on a printer made ready by the caller (copies included).
// False when the printer or the PDF writer refuses them; motivo then tells
// why, in Italian before the system's words.
bool StampaSuStampante(QPrinter &stampante, const Modello &modello,
                       const ModelloCompilato &compilato, QString *motivo = nullptr);

// "P": the print dialog over a printer made ready for the module (its page,
// the copies, the job's title, and as the file of a print to PDF the one
// FilePdfProposto gives), then the pages. False when the dialog is
// cancelled, motivo left empty, or when the pages are refused, motivo
// telling why.
bool StampaConDialogo(const Modello &modello, const ModelloCompilato &compilato,
                      const QString &titolo, int copie, QWidget *padre, QString *motivo);

// Installs Qt's own Italian texts (the "qtbase" catalogue of the system's
// Qt), so that the standard dialogs a print opens, print, file and page
// set-up, speak like the program, with the few texts of those dialogs that
// the catalogue lacks. False when the catalogue is missing.
bool CaricaTestiQtItaliani();

} // namespace sorvane
