#pragma once

// One drawing function for every device: the preview, a real printer and a
// PDF file all get the same pages. The body flows over the pages with the
// table headings repeated; header and footer are drawn on each page, with
// its number and the count of pages.

#include "reports/Modello.h"

#include <QFont>
#include <QSizeF>

#include <memory>

class QPagedPaintDevice;
class QPageLayout;
class QPainter;

namespace sorvane {

// The pages are laid out at 96 units to the inch, the pixels the templates
// measure in, whatever the screen or the device; drawing scales them to the
// device's dots.
double DpiImpaginazione();

// The printable area of a page in the units above, exact: whatever counts
// the pages and whatever paints them take it from here, so that they lay
// out one and the same document.
QSizeF AreaPagina(const QPageLayout &layout);
// Millimetres to the units above.
double UnitaPerMillimetro();

// The reports' default font: Arial 9.5 pt, or its metric twin (Liberation
// Sans) where Arial is missing, so that a page holds as much everywhere.
QFont CarattereReport();

// A4 with the office's margins, landscape when the template asks for it.
QPageLayout LayoutPagina(const Modello &modello);
void PreparaPagina(QPagedPaintDevice &dispositivo, const Modello &modello);

// A filled template laid out once on pages of a given printable area (in
// the units above); any page is then drawn on demand, so that a preview
// draws only what it shows. It may be made in a worker thread, and is then
// drawn and freed in that thread too.
class Impaginazione
{
public:
    // A partial layout is of the first rows only, to show the first pages
    // while the whole is laid out: its last page, which the missing rows
    // would fill, does not count (so it may have no page at all), and the
    // count of pages prints as "...".
    Impaginazione(const Modello &modello, const ModelloCompilato &compilato,
                  const QSizeF &area, bool parziale = false);
    // On AreaPagina(LayoutPagina(modello)).
    Impaginazione(const Modello &modello, const ModelloCompilato &compilato);
    ~Impaginazione();
    Impaginazione(const Impaginazione &) = delete;
    Impaginazione &operator=(const Impaginazione &) = delete;

    int pagine() const;
    bool parziale() const;
    QSizeF area() const;
    // Draws page `indice` (0 is the first) with the painter's origin at the
    // printable area's corner and its scale at the layout's units.
    void disegnaPagina(QPainter &p, int indice) const;

private:
    struct Dati;
    std::unique_ptr<Dati> d;
};

// Lays the report out once on the device's page layout and draws every
// page; returns the number of pages, 0 when the device refuses to start.
int StampaDocumento(QPagedPaintDevice &dispositivo, const Modello &modello,
                    const ModelloCompilato &compilato);

// Draws every page of a layout made for the device's printable area.
int StampaPagine(QPagedPaintDevice &dispositivo, const Impaginazione &pagine);

// The whole report as a PDF file; false when the file cannot be written,
// with the system's words in errore.
bool SalvaPdf(const QString &file, const Modello &modello, const ModelloCompilato &compilato,
              const QString &titolo = QString(), QString *errore = nullptr);
// The same from a layout of LayoutPagina(modello), which a PDF page matches
// exactly: the pages are not laid out again.
bool SalvaPdf(const QString &file, const Modello &modello, const Impaginazione &pagine,
              const QString &titolo = QString(), QString *errore = nullptr);

} // namespace sorvane
