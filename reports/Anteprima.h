#pragma once

// The preview window: the pages laid out once and drawn as they come into
// sight, with print, PDF, zoom and page buttons. Its place on the screen and
// its first zoom come from the print settings' position and zoom codes.

#include "reports/Lancio.h"
#include "reports/VistaPagine.h"

#include <QDialog>
#include <QRect>

#include <memory>

class QLabel;
class QSpinBox;

namespace sorvane {

class Impaginazione;
class ImpaginazioneRemota;

enum class LatoBarra { Basso = 0, Destra = 1, Alto = 2, Sinistra = 3 };

// The desktop's task bar: the edge it stands on and its size in pixels.
struct BarraApplicazioni
{
    LatoBarra lato = LatoBarra::Basso;
    int larghezza = 0;
    int altezza = 0;
};

// The bar is what a screen's available area leaves out of the whole screen.
BarraApplicazioni LeggiBarraApplicazioni(const QRect &schermo, const QRect &disponibile);

// The preview window by its position code 0 to 7, corrected for the bar;
// relative to the screen's corner. A width or height of 0 leaves the
// window its own size.
QRect GeometriaAnteprima(int codice, const QSize &schermo, const BarraApplicazioni &barra);

struct ZoomAnteprima
{
    ModoZoom modo = ModoZoom::Fattore;
    double fattore = 1.0; // with ModoZoom::Fattore
};

// 0 full size, 1 page width, 2 whole page; 3 is 50%, 4 75% and so on.
ZoomAnteprima ZoomDaCodice(int codice);

class FinestraAnteprima : public QDialog
{
    Q_OBJECT
public:
    // Lays the report out; the window is placed and zoomed by the settings.
    // Given the rows, a long report first shows the pages of its first rows
    // while the whole is laid out in a worker thread.
    FinestraAnteprima(const Modello &modello, const ModelloCompilato &compilato,
                      const QString &titolo, const DatiReport *dati = nullptr,
                      QWidget *padre = nullptr);
    ~FinestraAnteprima() override;

    VistaPagine *vista() const { return m_vista; }
    // True when every page is laid out.
    bool completa() const;
    // Waits for the whole layout and shows it.
    void attendiCompleta();

    // Rows that make the first pages; a report of more than twice as many
    // is shown from them first.
    static constexpr int RighePrimePagine = 200;

private:
    void stampa();
    void salvaPdf();
    void mostraPagina(int pagina);
    void mostraTotale();
    void applicaCompleta();
    VistaPagine::Foglio fogliDi(const Impaginazione *pagine) const;

    Modello m_modello;
    ModelloCompilato m_compilato;
    QString m_titolo;
    QSizeF m_foglio;
    QPointF m_margine;
    std::unique_ptr<Impaginazione> m_pagine;         // in this thread
    std::unique_ptr<ImpaginazioneRemota> m_remota;   // the whole, in its own
    bool m_completa = false;
    VistaPagine *m_vista = nullptr;
    QSpinBox *m_numero = nullptr;
    QLabel *m_totale = nullptr;
};

} // namespace sorvane
