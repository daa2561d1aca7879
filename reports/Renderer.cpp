#include "reports/Renderer.h"

#include "reports/PezziTabella.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QFileInfo>
#include <QFontInfo>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextOption>
#include <QTextTable>
#include <QThread>
#include <QUrl>

#include <cmath>
#include <functional>
#include <memory>
#include <vector>

namespace sorvane {

namespace {

// Templates measure in pixels of 1/96 inch and in points, and the pages are
// laid out at 96 units to the inch whatever the screen or the device: a
// sheet of labels counts on its pitch. Painting scales to the device.
constexpr double kDpi = 96;

// The font sizes in points of styles or markup, scaled.
QString PuntiScalati(const QString &testo, double scala)
{
    if (scala == 1.0)
        return testo;
    static const QRegularExpression punti(
        QStringLiteral(R"((\bfont(?:-size)?\s*:[^;}"'<>]*?)(\d+(?:\.\d*)?|\.\d+)pt\b)"),
        QRegularExpression::CaseInsensitiveOption);
    QString scalato;
    qsizetype da = 0;
    for (auto it = punti.globalMatch(testo); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        scalato += QStringView(testo).mid(da, m.capturedStart(2) - da);
        scalato += QString::number(m.captured(2).toDouble() * scala, 'g', 12);
        da = m.capturedEnd(2);
    }
    return scalato.append(QStringView(testo).mid(da));
}

// The report's font and the scale of the layout's points. Text laid out
// without a device takes a pixel for a unit but a point at the screen's
// dots per inch (a 72-point font is as many pixels tall), so on a screen of
// other than 96 every point is scaled to stand at 96. A device of 96 dots
// per inch would put the points right but scale the pixels, and a layout
// measured on a device costs more than twice as much for a long table.
struct Carattere
{
    QFont font;
    double scala = 1.0;
};

Carattere CarattereImpaginato()
{
    QFont settantadue;
    settantadue.setPointSizeF(72);
    const int dpi = QFontInfo(settantadue).pixelSize();
    Carattere c;
    c.scala = dpi > 0 ? kDpi / dpi : 1.0;
    c.font = CarattereReport();
    c.font.setPointSizeF(c.font.pointSizeF() * c.scala);
    return c;
}

constexpr double kStacco = 10; // space between header, body and footer

// Printed paper is black on white, whatever colours the desktop uses.
const char kStileBase[] =
    "body { color: #000000; background-color: #ffffff; }\n"
    "a { color: #000000; text-decoration: none; }\n"
    "th { font-weight: bold; }\n";

// The parts as documents, the measures of the page, and the page marks.
std::unique_ptr<QTextDocument> Documento(const Modello &modello, const Carattere &carattere,
                                         const QString &html, double larghezza,
                                         double altezzaPagina = -1)
{
    auto doc = std::make_unique<QTextDocument>();
    doc->setUseDesignMetrics(true);
    doc->setDefaultFont(carattere.font);
    doc->setDefaultStyleSheet(QString::fromLatin1(kStileBase)
                              + PuntiScalati(modello.stile, carattere.scala));
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
    doc->setHtml(PuntiScalati(html, carattere.scala));
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

// A piece of the body laid out on its own, and the page its first page is.
struct Pezzo
{
    std::unique_ptr<QTextDocument> doc;
    int prima = 0;
};

// Rows of a long table per piece. Qt lays out and draws a table at a cost
// that grows with the whole table on every page (each page looks its cells
// up in the whole document and walks the headings of every page), so a
// statement of 20,000 rows took four times as long per row as one of 5,000.
constexpr int kRighePezzo = 1000;

int PaginaDi(double y, double altezzaPagina)
{
    return int(std::floor(y / altezzaPagina + 1e-9));
}

// The body's long table in pieces of kRighePezzo rows, each a table of its
// own starting at the top of a page: the page where the rows of a piece
// end is laid out again as the first of the next. A piece is kept only if
// the rows it shares with the one before stand exactly where that one put
// them, cell by cell; from the same row at the same place with the same
// columns, the rest of the table can only fall the same way. False when
// they do not (the caller then lays out the whole at once).
// Rows before the end of a piece where the next one is read from, in a
// worker thread while this one is laid out: more than a page holds. The
// rows above the page it truly starts on are then taken out of it.
constexpr int kRigheAnticipo = 250;

// A piece's markup read into a document in a thread of its own and handed
// to the calling thread, which lays it out and draws it. Reading the
// markup touches no font, so the text may still be laid out and drawn in
// one thread only.
class Anticipo
{
public:
    template<typename F>
    void avvia(F leggi)
    {
        QThread *destinazione = QThread::currentThread();
        m_thread.reset(QThread::create([this, leggi, destinazione] {
            m_doc = leggi();
            m_doc->moveToThread(destinazione);
        }));
        m_thread->start();
    }
    std::unique_ptr<QTextDocument> prendi()
    {
        attendi();
        return std::move(m_doc);
    }
    ~Anticipo() { attendi(); }

private:
    void attendi()
    {
        if (m_thread)
            m_thread->wait();
        m_thread.reset();
    }
    std::unique_ptr<QThread> m_thread;
    std::unique_ptr<QTextDocument> m_doc;
};

QTextTable *TabellaDi(const QTextDocument &doc, int indice)
{
    const QList<QTextFrame *> figli = doc.rootFrame()->childFrames();
    return indice < figli.size() ? qobject_cast<QTextTable *>(figli.at(indice)) : nullptr;
}

// The body's long table in pieces of kRighePezzo rows, each a table of its
// own starting at the top of a page: the page where the rows of a piece
// end is laid out again as the first of the next. A piece is kept only if
// the rows it shares with the one before stand exactly where that one put
// them, cell by cell; from the same row at the same place with the same
// columns, the rest of the table can only fall the same way. False when
// they do not (the caller then lays out the whole at once).
bool ImpaginaAPezzi(const Modello &modello, const Carattere &carattere, const QString &html,
                    const TabellaLunga &tabella, double larghezza, double altezzaPagina,
                    std::vector<Pezzo> &pezzi, int &occupate)
{
    const auto leggi = [&](int da, int a) {
        return Documento(modello, carattere, PezzoTabella(html, tabella, da, a), larghezza,
                         altezzaPagina);
    };
    const int n = tabella.conteggio();
    int da = 0;
    int a = qMin(n, kRighePezzo);
    auto doc = leggi(da, a);
    int prima = 0;
    int testata = -1;
    int daAttese = 0;
    QList<QRectF> attese; // the shared rows' cells, on the page they start
    for (;;) {
        Anticipo prossimo;
        const int daProssimo = qMax(da + 1, a - kRigheAnticipo);
        const int aProssimo = qMin(n, daProssimo + kRighePezzo);
        if (a < n)
            prossimo.avvia([=] { return leggi(daProssimo, aProssimo); });

        QTextTable *t = TabellaDi(*doc, da == 0 ? tabella.indice : 0);
        if (!t || t->rows() < a - da || (testata >= 0 && t->rows() - (a - da) != testata))
            return false;
        testata = t->rows() - (a - da);
        const QAbstractTextDocumentLayout *layout = doc->documentLayout();
        const auto cella = [&](int riga, int colonna) {
            return layout->blockBoundingRect(
                t->cellAt(testata + riga - da, colonna).firstCursorPosition().block());
        };
        const int colonne = t->columns();
        for (int i = 0; i < attese.size(); ++i) {
            const QRectF r = cella(daAttese + i / colonne, i % colonne);
            const QRectF &atteso = attese.at(i);
            if (qAbs(r.top() - atteso.top()) > 1e-6 || qAbs(r.left() - atteso.left()) > 1e-6
                || qAbs(r.width() - atteso.width()) > 1e-6
                || qAbs(r.height() - atteso.height()) > 1e-6)
                return false;
        }
        if (a == n) {
            occupate = prima + PagineOccupate(*doc, altezzaPagina);
            pezzi.push_back({std::move(doc), prima});
            return true;
        }
        const int ultima = PaginaDi(cella(a - 1, 0).top(), altezzaPagina);
        int s = a - 1;
        while (s > da && PaginaDi(cella(s - 1, 0).top(), altezzaPagina) >= ultima)
            --s;
        if (ultima < 1 || (s == da && da > 0))
            return false;
        attese.clear();
        for (int r = s; r < a; ++r)
            for (int c = 0; c < colonne; ++c)
                attese.append(cella(r, c).translated(0, -ultima * altezzaPagina));
        daAttese = s;
        pezzi.push_back({std::move(doc), prima});
        prima += ultima;

        doc = prossimo.prendi();
        QTextTable *seguente = TabellaDi(*doc, 0);
        if (s >= daProssimo && seguente && seguente->rows() >= testata + s - daProssimo) {
            if (s > daProssimo)
                seguente->removeRows(testata, s - daProssimo);
            a = aProssimo;
        } else {
            a = qMin(n, s + kRighePezzo);
            doc = leggi(s, a);
        }
        da = s;
    }
}

// The body laid out, in pieces when it holds a long table; `occupate` is
// the count of pages that hold something of it.
std::vector<Pezzo> ImpaginaCorpo(const Modello &modello, const Carattere &carattere,
                                 const QString &html, double larghezza, double altezzaPagina,
                                 int &occupate)
{
    std::vector<Pezzo> pezzi;
    if (const auto tabella = TrovaTabellaLunga(html, 2 * kRighePezzo)) {
        if (ImpaginaAPezzi(modello, carattere, html, *tabella, larghezza, altezzaPagina, pezzi,
                           occupate))
            return pezzi;
        pezzi.clear();
    }
    auto doc = Documento(modello, carattere, html, larghezza, altezzaPagina);
    occupate = PagineOccupate(*doc, altezzaPagina);
    pezzi.push_back({std::move(doc), 0});
    return pezzi;
}

} // namespace

struct Impaginazione::Dati
{
    Modello modello;
    ModelloCompilato compilato;
    Carattere carattere;
    QSizeF area;
    double hIntest = 0;
    double hPiede = 0;
    double hCorpo = 0;
    int pagine = 1;
    bool parziale = false;
    std::vector<Pezzo> corpo;
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
    d->carattere = CarattereImpaginato();
    const double larghezza = area.width();

    // Header and footer are measured with a wide page number, so that no
    // page's own number changes the room they take.
    const ModelloCompilato &c = d->compilato;
    auto intest = Documento(d->modello, d->carattere, ConPagina(c.intestazione, 9999, 9999),
                            larghezza);
    auto piede = Documento(d->modello, d->carattere, ConPagina(c.piede, 9999, 9999), larghezza);
    d->hIntest = c.intestazione.isEmpty() ? 0 : intest->size().height() + kStacco;
    d->hPiede = c.piede.isEmpty() ? 0 : piede->size().height() + kStacco;
    // Qt breaks the pages of a layout at multiples of its page height in
    // 64ths of a unit; a height with more decimals would drift from its
    // pages by a fraction on each, a few units after some hundred pages.
    d->hCorpo = std::floor(qMax(50.0, area.height() - d->hIntest - d->hPiede) * 64) / 64;

    int occupate = 0;
    d->corpo = ImpaginaCorpo(d->modello, d->carattere, c.corpo, larghezza, d->hCorpo, occupate);
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
            propria = Documento(d->modello, d->carattere,
                                ConPagina(c.intestazione, i + 1, totale), larghezza);
        Disegna(p, d->intestFissa ? *d->intestFissa : *propria,
                QRectF(0, 0, larghezza, d->hIntest));
    }
    p.save();
    p.translate(0, d->hIntest);
    p.setClipRect(QRectF(0, 0, larghezza, d->hCorpo), Qt::IntersectClip);
    auto pezzo = d->corpo.rbegin();
    while (pezzo->prima > i)
        ++pezzo;
    const int propria = i - pezzo->prima;
    p.translate(0, -propria * d->hCorpo);
    Disegna(p, *pezzo->doc, QRectF(0, propria * d->hCorpo, larghezza, d->hCorpo));
    p.restore();
    if (d->hPiede > 0) {
        std::unique_ptr<QTextDocument> proprio;
        if (!d->piedeFisso)
            proprio = Documento(d->modello, d->carattere, ConPagina(c.piede, i + 1, totale),
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
    return double(dev.logicalDpiX()) / kDpi;
}

double ScalaY(const QPagedPaintDevice &dev)
{
    return double(dev.logicalDpiY()) / kDpi;
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
        pdf.setResolution(int(kDpi));
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
    return kDpi;
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
