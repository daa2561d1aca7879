#pragma once

// A picture of the screen, or of the active window, written into a PDF file
// and opened, for the office to send to support. Qt's own PDF writer is the
// "printer"; its settings are section PDF of the local INI: UseAutosave,
// AutosaveFilename (must be "<Title>"), AutosaveDirectory,
// FilenameSubstitutions ("name|new name\" pairs).

#include <QPixmap>
#include <QString>

namespace sorvane {

struct ImpostazioniPdf
{
    QString StampantePdf; // "PDFCREATOR" when usable
    QString NomePdf;      // the file's name without extension
    QString CartellaPdf;  // its folder, without a final separator
};

ImpostazioniPdf &pdf();

// Fills pdf() from the local INI at start; blank texts turn the PDF path off.
void RilevaPdf();
// True when the three settings are all filled.
bool PdfPronto();

// 0 the whole screen, 1 the active window. The picture goes to the clipboard
// as well, so that it can be pasted into the mail of the fallback.
QPixmap CatturaSchermo(int finestra);

// Writes the picture into CartellaPdf/NomePdf.pdf (an older file replaced),
// landscape when it is wider than tall, scaled down to fit within margins of
// 300 twips, then opens it. A missing folder is made first. Returns the
// file's path; empty when the PDF path is off, or when the folder cannot be
// made or the file written, which is told with the system's words.
QString SchermoInPdf(int finestra, const QPixmap &immagine);

// Ctrl+0 and Ctrl+1: capture, then the PDF, or a new mail to support when the
// PDF path is off. CodiceStop is clear afterwards.
void SchermataPerAssistenza(int finestra);

} // namespace sorvane
