#include "reports/Renderer.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QScreen>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextOption>
#include <QUrl>

#include <cmath>
#include <functional>
#include <memory>

namespace sorvane {

namespace {

// The pages are laid out in the screen's units, as any text on screen, and
// scaled to the device's dots when drawn. A layout measured on a device of
// its own would cost more than twice as much for a long table.
double DpiSchermo()
{
    if (const QScreen *schermo = QGuiApplication::primaryScreen())
        return qRound(schermo->logicalDotsPerInchY());
    return 96;
}

constexpr double kStacco = 10; // space between header, body and footer

// Printed paper is black on white, whatever colours the desktop uses.
const char kStileBase[] =
    "body { color: #000000; background-color: #ffffff; }\n"
    "a { color: #000000; text-decoration: none; }\n"
    "th { font-weight: bold; }\n";

// The parts as documents, the measures of the page, and the page marks.
std::unique_ptr<QTextDocument> Documento(const Modello &modello, const QFont &font,
                                         const QString &html, double larghezza,
                                         double altezzaPagina = -1)
{
    auto doc = std::make_unique<QTextDocument>();
    doc->setUseDesignMetrics(true);
    doc->setDefaultFont(font);
    doc->setDefaultStyleSheet(QString::fromLatin1(kStileBase) + modello.stile);
    if (!modello.cartella.isEmpty())
        doc->setBaseUrl(QUrl::fromLocalFile(modello.cartella + QLatin1Char('/')));
    doc->setDocumentMargin(0);
    // A word is never cut in two: a line breaks between words only, and a
    // table's column is at least as wide as its longest word.
    QTextOption testo = doc->defaultTextOption();
    testo.setWrapMode(QTextOption::WordWrap);
    doc->setDefaultTextOption(testo);
    // The page size goes in before the text: a long table laid out once
    // costs enough, and setting the width afterwards would lay it out again.
    if (altezzaPagina > 0)
        doc->setPageSize(QSizeF(larghezza, altezzaPagina));
    else
        doc->setTextWidth(larghezza);
    doc->setHtml(html);
    return doc;
}

// A count of 0 is not known yet.
QString ConPagina(const QString &html, int pagina, int pagine)
{
    QString h = html;
    h.replace(SegnoPagina(), QString::number(pagina));
    h.replace(SegnoPagine(), pagine > 0 ? QString::number(pagine) : QStringLiteral("..."));
    return h;
}

void Disegna(QPainter &p, const QTextDocument &doc, const QRectF &clip)
{
    QAbstractTextDocumentLayout::PaintContext ctx;
    ctx.palette.setColor(QPalette::Text, Qt::black);
    ctx.palette.setColor(QPalette::Base, Qt::white);
    ctx.palette.setColor(QPalette::Link, Qt::black);
    ctx.clip = clip;
    doc.documentLayout()->draw(&p, ctx);
}

bool ConSegni(const QString &html)
{
    return html.contains(SegnoPagina()) || html.contains(SegnoPagine());
}

// A block that leaves a mark on paper: text, a picture, a rule, a colour.
bool Visibile(const QTextBlock &b)
{
    const QTextBlockFormat f = b.blockFormat();
    return !b.text().trimmed().isEmpty()
           || f.hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth)
           || f.background().style() != Qt::NoBrush;
}

// The pages that hold something of the body. The document's own count goes
// to its very bottom: the margin under the last paragraph, or the empty
// line that always follows a final table, may fall on a page of their own
// and would print as an empty page.
int PagineOccupate(const QTextDocument &doc, double altezzaPagina)
{
    const QAbstractTextDocumentLayout *layout = doc.documentLayout();
    const QTextFrame *radice = doc.rootFrame();
    double fondo = 0;
    for (QTextBlock b = doc.lastBlock(); b.isValid(); b = b.previous()) {
        QTextFrame *cornice = QTextCursor(b).currentFrame();
        while (cornice && cornice->parentFrame() != radice && cornice != radice)
            cornice = cornice->parentFrame();
        if (cornice && cornice != radice) {
            // A table is a mark as a whole: its rules and colours count too.
            fondo = layout->frameBoundingRect(cornice).bottom();
            break;
        }
        if (Visibile(b)) {
            fondo = layout->blockBoundingRect(b).bottom();
            break;
        }
    }
    // A hair's breadth over a page's end is rounding, not another page.
    return int(std::ceil(fondo / altezzaPagina - 1e-6));
}

} // namespace

struct Impaginazione::Dati
{
    Modello modello;
    ModelloCompilato compilato;
    QFont font;
    QSizeF area;
    double hIntest = 0;
    double hPiede = 0;
    double hCorpo = 0;
    int pagine = 1;
    bool parziale = false;
    std::unique_ptr<QTextDocument> corpo;
    // Kept when the part has no page marks: the same on every page.
    std::unique_ptr<QTextDocument> intestFissa;
    std::unique_ptr<QTextDocument> piedeFisso;
};

Impaginazione::Impaginazione(const Modello &modello, const ModelloCompilato &compilato,
                             const QSizeF &area, bool parziale)
    : d(std::make_unique<Dati>())
{
    d->parziale = parziale;
    d->modello = modello;
    d->compilato = compilato;
    d->area = area;
    d->font = CarattereReport();
    const double larghezza = area.width();

    // Header and footer are measured with a wide page number, so that no
    // page's own number changes the room they take.
    const ModelloCompilato &c = d->compilato;
    auto intest = Documento(d->modello, d->font, ConPagina(c.intestazione, 9999, 9999),
                            larghezza);
    auto piede = Documento(d->modello, d->font, ConPagina(c.piede, 9999, 9999), larghezza);
    d->hIntest = c.intestazione.isEmpty() ? 0 : intest->size().height() + kStacco;
    d->hPiede = c.piede.isEmpty() ? 0 : piede->size().height() + kStacco;
    d->hCorpo = qMax(50.0, area.height() - d->hIntest - d->hPiede);

    d->corpo = Documento(d->modello, d->font, c.corpo, larghezza, d->hCorpo);
    const int occupate = PagineOccupate(*d->corpo, d->hCorpo);
    d->pagine = parziale ? occupate - 1 : qMax(1, occupate);
    if (!ConSegni(c.intestazione))
        d->intestFissa = std::move(intest);
    if (!ConSegni(c.piede))
        d->piedeFisso = std::move(piede);
}

Impaginazione::Impaginazione(const Modello &modello, const ModelloCompilato &compilato)
    : Impaginazione(modello, compilato, AreaPagina(LayoutPagina(modello)))
{
}

Impaginazione::~Impaginazione() = default;

int Impaginazione::pagine() const
{
    return d->pagine;
}

bool Impaginazione::parziale() const
{
    return d->parziale;
}

QSizeF Impaginazione::area() const
{
    return d->area;
}

void Impaginazione::disegnaPagina(QPainter &p, int i) const
{
    const double larghezza = d->area.width();
    const ModelloCompilato &c = d->compilato;
    const int totale = d->parziale ? 0 : d->pagine;
    p.save();
    if (d->hIntest > 0) {
        std::unique_ptr<QTextDocument> propria;
        if (!d->intestFissa)
            propria = Documento(d->modello, d->font,
                                ConPagina(c.intestazione, i + 1, totale), larghezza);
        Disegna(p, d->intestFissa ? *d->intestFissa : *propria,
                QRectF(0, 0, larghezza, d->hIntest));
    }
    p.save();
    p.translate(0, d->hIntest);
    p.setClipRect(QRectF(0, 0, larghezza, d->hCorpo), Qt::IntersectClip);
    p.translate(0, -i * d->hCorpo);
    Disegna(p, *d->corpo, QRectF(0, i * d->hCorpo, larghezza, d->hCorpo));
    p.restore();
    if (d->hPiede > 0) {
        std::unique_ptr<QTextDocument> proprio;
        if (!d->piedeFisso)
            proprio = Documento(d->modello, d->font, ConPagina(c.piede, i + 1, totale),
                                larghezza);
        const QTextDocument &piede = d->piedeFisso ? *d->piedeFisso : *proprio;
        p.translate(0, d->area.height() - piede.size().height());
        Disegna(p, piede, QRectF(0, 0, larghezza, d->hPiede));
    }
    p.restore();
}

namespace {

double ScalaX(const QPagedPaintDevice &dev)
{
    return double(dev.logicalDpiX()) / DpiImpaginazione();
}

double ScalaY(const QPagedPaintDevice &dev)
{
    return double(dev.logicalDpiY()) / DpiImpaginazione();
}

// A PDF writer at the layout's resolution, with the page of the template,
// on a file opened here, so that a file that cannot be written says why.
// A file left half written is removed.
bool ScriviPdf(const QString &file, const Modello &modello, const QString &titolo,
               QString *errore, const std::function<int(QPdfWriter &)> &disegna)
{
    QFile uscita(file);
    if (!uscita.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        if (errore)
            *errore = uscita.errorString();
        return false;
    }
    bool scritto = false;
    {
        QPdfWriter pdf(&uscita);
        pdf.setResolution(int(DpiSchermo()));
        pdf.setCreator(QStringLiteral("SORVANE"));
        pdf.setTitle(titolo.isEmpty() ? QFileInfo(file).completeBaseName() : titolo);
        PreparaPagina(pdf, modello);
        scritto = disegna(pdf) > 0;
    }
    uscita.close();
    if (uscita.error() != QFileDevice::NoError) {
        scritto = false;
        if (errore)
            *errore = uscita.errorString();
    }
    if (!scritto)
        uscita.remove();
    return scritto;
}

} // namespace

double DpiImpaginazione()
{
    return DpiSchermo();
}

double UnitaPerMillimetro()
{
    return DpiImpaginazione() / 25.4;
}

QSizeF AreaPagina(const QPageLayout &layout)
{
    // In millimetres, the office's margins are exact; inches or whole
    // device pixels would round them, and a page a pixel narrower can wrap
    // a line and push a row onto the next page.
    return layout.paintRect(QPageLayout::Millimeter).size() * UnitaPerMillimetro();
}

QFont CarattereReport()
{
    // One family, not a list: every character format of a long table
    // carries a copy of it. The font matcher stands in the metric twin
    // where the family is missing.
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(9.5);
    return font;
}

QPageLayout LayoutPagina(const Modello &modello)
{
    return QPageLayout(QPageSize(QPageSize::A4),
                       modello.orizzontale ? QPageLayout::Landscape : QPageLayout::Portrait,
                       QMarginsF(15, 12, 15, 12), QPageLayout::Millimeter);
}

void PreparaPagina(QPagedPaintDevice &dispositivo, const Modello &modello)
{
    dispositivo.setPageLayout(LayoutPagina(modello));
}

int StampaDocumento(QPagedPaintDevice &dispositivo, const Modello &modello,
                    const ModelloCompilato &compilato)
{
    const Impaginazione pagine(modello, compilato, AreaPagina(dispositivo.pageLayout()));
    return StampaPagine(dispositivo, pagine);
}

int StampaPagine(QPagedPaintDevice &dispositivo, const Impaginazione &pagine)
{
    const double sx = ScalaX(dispositivo);
    const double sy = ScalaY(dispositivo);
    QPainter p;
    if (!p.begin(&dispositivo))
        return 0;
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    for (int i = 0; i < pagine.pagine(); ++i) {
        if (i > 0)
            dispositivo.newPage();
        p.save();
        p.scale(sx, sy);
        pagine.disegnaPagina(p, i);
        p.restore();
    }
    p.end();
    return pagine.pagine();
}

bool SalvaPdf(const QString &file, const Modello &modello, const ModelloCompilato &compilato,
              const QString &titolo, QString *errore)
{
    return ScriviPdf(file, modello, titolo, errore, [&](QPdfWriter &pdf) {
        return StampaDocumento(pdf, modello, compilato);
    });
}

bool SalvaPdf(const QString &file, const Modello &modello, const Impaginazione &pagine,
              const QString &titolo, QString *errore)
{
    return ScriviPdf(file, modello, titolo, errore,
                     [&](QPdfWriter &pdf) { return StampaPagine(pdf, pagine); });
}

} // namespace sorvane
