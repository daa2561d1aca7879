#pragma once

// A layout made, drawn and freed in a thread of its own, so that a long
// report's pages are laid out while the preview already shows its first
// ones. Text laid out in a thread must be drawn in it (its fonts belong to
// that thread), so the pages are drawn there too, and the caller waits for
// each: a page draws in a few milliseconds.

#include "reports/Modello.h"

#include <QImage>
#include <QPointF>
#include <QSizeF>

#include <atomic>
#include <functional>
#include <memory>

class QObject;
class QThread;

namespace sorvane {

class Impaginazione;

class ImpaginazioneRemota
{
public:
    // Starts the layout. `pronta` is called in the destinatario's thread
    // when it is done, unless attendi() came first.
    ImpaginazioneRemota(const Modello &modello, const ModelloCompilato &compilato,
                        const QSizeF &area, QObject *destinatario,
                        std::function<void()> pronta);
    // Waits for a layout under way, frees it in its thread and ends the thread.
    ~ImpaginazioneRemota();
    ImpaginazioneRemota(const ImpaginazioneRemota &) = delete;
    ImpaginazioneRemota &operator=(const ImpaginazioneRemota &) = delete;

    bool pronta() const { return m_pagine >= 0; }
    // Waits for the layout; the number of pages.
    int attendi();
    // A sheet, as DisegnaFoglio draws it; waits for the layout first.
    QImage foglio(int indice, const QSizeF &foglio, const QPointF &margine, double scala,
                  qreal dpr);
    // SalvaPdf of the layout, in the thread; waits for the layout first.
    bool salvaPdf(const QString &file, const Modello &modello, const QString &titolo,
                  QString *errore = nullptr);

private:
    std::unique_ptr<QThread> m_thread;
    QObject *m_contesto = nullptr;  // lives in the thread
    std::unique_ptr<Impaginazione> m_impaginazione; // touched only in the thread
    std::atomic<int> m_pagine{-1};
};

} // namespace sorvane
