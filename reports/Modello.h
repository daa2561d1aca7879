#pragma once

// A report module: an HTML template with Mustache tags, looked for first in
// the operator's report folder, then in the shared one. The template's
// <header> and <footer> are drawn on every page; two <meta> tags may ask for
// groups of body rows and a landscape page. How a template names its fields
// is told in reports/README.md.

#include "reports/DatiReport.h"

#include <QString>

namespace sorvane {

struct Modello
{
    QString corpo;          // the flowing part of the page
    QString intestazione;   // inner HTML of <header>, drawn atop every page
    QString piede;          // inner HTML of <footer>, drawn at the foot
    QString stile;          // the <style> blocks, shared by the three parts
    QString gruppo;         // body field whose runs of equal values form groups
    bool orizzontale = false;
    QString cartella;       // folder of the file: images are found from here
    QString nome;           // the file's name without its extension
};

// The path of a module file: the operator's folder first, then the shared
// one; empty when neither has it. A blank folder is skipped.
QString PercorsoModulo(const QString &nomeFile, const QString &cartellaLocale,
                       const QString &cartella);
// The same with the folders of the configuration; when the file is missing
// tells "GESTORE REPORT " + path + " INESISTENTE" and returns empty.
QString CercaModulo(const QString &nomeFile);

// Where a PDF of the module is proposed: its name + ".pdf" in the prints
// folder of the settings (the home folder when that is blank).
QString FilePdfProposto(const Modello &modello);

// Splits a template's text into its parts.
Modello LeggiModello(const QString &testo, const QString &cartella = QString());
// Reads a template file (UTF-8); false when it cannot be read.
bool CaricaModello(const QString &percorso, Modello &modello);

// The filled parts, plain HTML. Header and footer keep the page marks
// SegnoPagina and SegnoPagine, replaced page by page when drawing.
struct ModelloCompilato
{
    QString corpo;
    QString intestazione;
    QString piede;
    QString errore;         // non-empty when a template part does not parse
};

inline QString SegnoPagina() { return QStringLiteral("\u2063PAG\u2063"); }
inline QString SegnoPagine() { return QStringLiteral("\u2063TOT\u2063"); }

// With primeRighe not negative, only that many body rows are listed (in
// `corpo` and in the groups), as the first pages of a long report need;
// counts and totals stay those of every row.
ModelloCompilato CompilaModello(const Modello &modello, const DatiReport &dati,
                                int primeRighe = -1);

} // namespace sorvane
