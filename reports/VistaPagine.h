#pragma once

// The pages of a laid-out report, one under the other on a grey desk, as the
// preview shows them. Only the pages in sight are drawn, when they come into
// sight, from the layout made once: a long report opens at once however many
// pages it has. The last few pages drawn are kept at the zoom in hand.
//
// The view asks for a sheet through a function, so that the layout may live
// in another thread: text laid out in a thread is drawn in that thread.

#include <QAbstractScrollArea>
#include <QCache>
#include <QPixmap>
#include <QPointF>
#include <QSizeF>

#include <functional>

namespace sorvane {

class Impaginazione;

// A sheet of paper, white, with page `indice` drawn on its printable area,
// `scala` pixels to a unit of the layout.
QImage DisegnaFoglio(const Impaginazione &pagine, int indice, const QSizeF &foglio,
                     const QPointF &margine, double scala, qreal dpr);

enum class ModoZoom { Fattore, Larghezza, PaginaIntera };

class VistaPagine : public QAbstractScrollArea
{
    Q_OBJECT
public:
    // A sheet drawn at a scale and device pixel ratio.
    using Foglio = std::function<QImage(int indice, double scala, qreal dpr)>;

    // foglio: the sheet's size in the layout's units (96 to the inch).
    VistaPagine(int pagine, const Foglio &disegna, const QSizeF &foglio,
                QWidget *padre = nullptr);
    // Another layout of the same report (the whole after the first pages):
    // the view stays on the page it shows.
    void setPagine(int pagine, const Foglio &disegna);

    ModoZoom modoZoom() const { return m_modo; }
    void setModoZoom(ModoZoom modo);
    // 1.0 is the paper's own size on the screen.
    double fattore() const;
    void setFattore(double fattore);
    void ingrandisci();
    void riduci();

    int pagine() const;
    int pagina() const; // 1 is the first: the page at the top of the view
    void vaiAPagina(int pagina);

signals:
    void paginaCambiata(int pagina);

protected:
    void paintEvent(QPaintEvent *evento) override;
    void resizeEvent(QResizeEvent *evento) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    // Pixels of the screen to a unit of the layout, at the paper's own size.
    double carta() const;
    QSizeF foglioInPixel() const;
    int passoPagina() const; // a page and the gap under it, in pixels
    void aggiornaBarre();
    void segnalaPagina();
    QPixmap disegnata(int indice);

    int m_pagine = 1;
    Foglio m_disegna;
    QSizeF m_foglio;
    ModoZoom m_modo = ModoZoom::Fattore;
    double m_fattore = 1.0;
    double m_fattoreDisegnato = 0;
    int m_paginaSegnalata = 0;
    QCache<int, QPixmap> m_disegnate;
};

} // namespace sorvane
