#include "reports/VistaPagine.h"

#include "reports/Renderer.h"

#include <QImage>

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <cmath>

namespace sorvane {

namespace {

constexpr int kBordo = 12;   // desk around the pages
constexpr int kStacco = 12;  // desk between two pages
constexpr double kMinimo = 0.1;
constexpr double kMassimo = 6.0;
constexpr double kPasso = 1.25;
constexpr int kTenute = 6;   // pages kept drawn

} // namespace

QImage DisegnaFoglio(const Impaginazione &pagine, int indice, const QSizeF &foglio,
                     const QPointF &margine, double scala, qreal dpr)
{
    const QSizeF pixel = foglio * scala;
    QImage img(QSize(qRound(pixel.width()), qRound(pixel.height())) * dpr,
               QImage::Format_ARGB32_Premultiplied);
    img.setDevicePixelRatio(dpr);
    img.fill(Qt::white);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.scale(scala, scala);
    p.translate(margine);
    pagine.disegnaPagina(p, indice);
    return img;
}

VistaPagine::VistaPagine(int pagine, const Foglio &disegna, const QSizeF &foglio,
                         QWidget *padre)
    : QAbstractScrollArea(padre), m_pagine(pagine), m_disegna(disegna), m_foglio(foglio),
      m_disegnate(kTenute)
{
    viewport()->setBackgroundRole(QPalette::Dark);
    viewport()->setAutoFillBackground(true);
    setFocusPolicy(Qt::StrongFocus);
    aggiornaBarre();
}

void VistaPagine::setPagine(int pagine, const Foglio &disegna)
{
    const int prima = pagina();
    m_pagine = pagine;
    m_disegna = disegna;
    m_disegnate.clear();
    aggiornaBarre();
    vaiAPagina(prima);
    viewport()->update();
}

void VistaPagine::setModoZoom(ModoZoom modo)
{
    m_modo = modo;
    aggiornaBarre();
    viewport()->update();
}

double VistaPagine::carta() const
{
    return logicalDpiY() / DpiImpaginazione();
}

double VistaPagine::fattore() const
{
    const QSize v = viewport()->size();
    const QSizeF foglio = m_foglio * carta();
    const double larghezza = (v.width() - 2.0 * kBordo) / foglio.width();
    switch (m_modo) {
    case ModoZoom::Larghezza:
        return qBound(kMinimo, larghezza, kMassimo);
    case ModoZoom::PaginaIntera:
        return qBound(kMinimo, qMin(larghezza, (v.height() - 2.0 * kBordo) / foglio.height()),
                      kMassimo);
    case ModoZoom::Fattore:
        break;
    }
    return m_fattore;
}

void VistaPagine::setFattore(double fattore)
{
    const int prima = pagina();
    m_fattore = qBound(kMinimo, fattore, kMassimo);
    m_modo = ModoZoom::Fattore;
    aggiornaBarre();
    vaiAPagina(prima);
    viewport()->update();
}

void VistaPagine::ingrandisci()
{
    setFattore(fattore() * kPasso);
}

void VistaPagine::riduci()
{
    setFattore(fattore() / kPasso);
}

int VistaPagine::pagine() const
{
    return qMax(1, m_pagine);
}

int VistaPagine::pagina() const
{
    // The page that holds the upper third of the view; at the end of the
    // scroll, the last one, which may not reach the top.
    const QScrollBar *barra = verticalScrollBar();
    if (barra->maximum() > 0 && barra->value() == barra->maximum())
        return pagine();
    const int y = verticalScrollBar()->value() + viewport()->height() / 3 - kBordo;
    return qBound(1, y / qMax(1, passoPagina()) + 1, pagine());
}

void VistaPagine::vaiAPagina(int pagina)
{
    const int n = qBound(1, pagina, pagine());
    verticalScrollBar()->setValue((n - 1) * passoPagina());
    segnalaPagina();
}

QSizeF VistaPagine::foglioInPixel() const
{
    return m_foglio * (fattore() * carta());
}

int VistaPagine::passoPagina() const
{
    return qRound(foglioInPixel().height()) + kStacco;
}

void VistaPagine::aggiornaBarre()
{
    const QSizeF f = foglioInPixel();
    const QSize v = viewport()->size();
    const int alto = pagine() * passoPagina() - kStacco + 2 * kBordo;
    const int largo = qRound(f.width()) + 2 * kBordo;
    verticalScrollBar()->setRange(0, qMax(0, alto - v.height()));
    verticalScrollBar()->setPageStep(v.height());
    verticalScrollBar()->setSingleStep(qMax(1, v.height() / 10));
    horizontalScrollBar()->setRange(0, qMax(0, largo - v.width()));
    horizontalScrollBar()->setPageStep(v.width());
    horizontalScrollBar()->setSingleStep(qMax(1, v.width() / 10));
}

void VistaPagine::segnalaPagina()
{
    const int n = pagina();
    if (n != m_paginaSegnalata) {
        m_paginaSegnalata = n;
        emit paginaCambiata(n);
    }
}

QPixmap VistaPagine::disegnata(int indice)
{
    const double scala = fattore() * carta();
    if (!qFuzzyCompare(scala, m_fattoreDisegnato)) {
        m_disegnate.clear();
        m_fattoreDisegnato = scala;
    }
    if (const QPixmap *tenuta = m_disegnate.object(indice))
        return *tenuta;
    auto *foglio = new QPixmap(QPixmap::fromImage(m_disegna(indice, scala, devicePixelRatioF())));
    const QPixmap risultato = *foglio;
    m_disegnate.insert(indice, foglio);
    return risultato;
}

void VistaPagine::paintEvent(QPaintEvent *evento)
{
    QPainter p(viewport());
    const QSizeF f = foglioInPixel();
    const QSize dimensione(qRound(f.width()), qRound(f.height()));
    const int passo = passoPagina();
    const int largo = dimensione.width() + 2 * kBordo;
    // Narrower than the view: the pages stand in the middle.
    const int x0 = (largo < viewport()->width() ? (viewport()->width() - largo) / 2
                                                 : -horizontalScrollBar()->value())
                   + kBordo;
    const int y0 = kBordo - verticalScrollBar()->value();
    const QRect area = evento->rect();
    const int prima = qMax(0, (area.top() - y0) / passo);
    const int ultima = qMin(pagine() - 1, (area.bottom() - y0) / passo);
    for (int i = prima; i <= ultima; ++i) {
        const QRect foglio(QPoint(x0, y0 + i * passo), dimensione);
        if (!foglio.intersects(area))
            continue;
        p.fillRect(foglio.translated(3, 3), QColor(0, 0, 0, 90));
        p.drawPixmap(foglio.topLeft(), disegnata(i));
        p.setPen(QColor(120, 120, 120));
        p.drawRect(foglio.adjusted(0, 0, -1, -1));
    }
}

void VistaPagine::resizeEvent(QResizeEvent *evento)
{
    QAbstractScrollArea::resizeEvent(evento);
    if (m_modo == ModoZoom::Fattore) {
        aggiornaBarre();
        return;
    }
    // A fit follows the window: the page in hand stays in sight.
    const int prima = m_paginaSegnalata > 0 ? m_paginaSegnalata : 1;
    aggiornaBarre();
    vaiAPagina(prima);
}

void VistaPagine::scrollContentsBy(int dx, int dy)
{
    QAbstractScrollArea::scrollContentsBy(dx, dy);
    segnalaPagina();
}

} // namespace sorvane
