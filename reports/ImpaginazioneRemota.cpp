#include "reports/ImpaginazioneRemota.h"

#include "reports/Renderer.h"
#include "reports/VistaPagine.h"

#include <QThread>

namespace sorvane {

ImpaginazioneRemota::ImpaginazioneRemota(const Modello &modello,
                                         const ModelloCompilato &compilato, const QSizeF &area,
                                         QObject *destinatario, std::function<void()> pronta)
    : m_thread(std::make_unique<QThread>()), m_contesto(new QObject)
{
    m_contesto->moveToThread(m_thread.get());
    QObject::connect(m_thread.get(), &QThread::finished, m_contesto, &QObject::deleteLater);
    m_thread->start();
    // The destinatario outlives the work: whoever destroys it destroys this
    // first, which waits for the work. Copies of the template go into the
    // thread.
    QMetaObject::invokeMethod(
        m_contesto,
        [this, modello, compilato, area, destinatario, pronta = std::move(pronta)] {
            m_impaginazione = std::make_unique<Impaginazione>(modello, compilato, area);
            m_pagine = m_impaginazione->pagine();
            if (destinatario && pronta)
                QMetaObject::invokeMethod(destinatario, pronta, Qt::QueuedConnection);
        },
        Qt::QueuedConnection);
}

ImpaginazioneRemota::~ImpaginazioneRemota()
{
    QMetaObject::invokeMethod(m_contesto, [this] { m_impaginazione.reset(); },
                              Qt::BlockingQueuedConnection);
    m_thread->quit();
    m_thread->wait();
}

int ImpaginazioneRemota::attendi()
{
    // The thread does one thing at a time: once this has run, the layout,
    // asked for first, is done.
    QMetaObject::invokeMethod(m_contesto, [] {}, Qt::BlockingQueuedConnection);
    return m_pagine;
}

QImage ImpaginazioneRemota::foglio(int indice, const QSizeF &foglio, const QPointF &margine,
                                   double scala, qreal dpr)
{
    QImage risultato;
    QMetaObject::invokeMethod(
        m_contesto,
        [&] {
            if (m_impaginazione)
                risultato = DisegnaFoglio(*m_impaginazione, indice, foglio, margine, scala, dpr);
        },
        Qt::BlockingQueuedConnection);
    return risultato;
}

bool ImpaginazioneRemota::salvaPdf(const QString &file, const Modello &modello,
                                   const QString &titolo, QString *errore)
{
    bool scritto = false;
    QMetaObject::invokeMethod(
        m_contesto,
        [&] {
            if (m_impaginazione)
                scritto = SalvaPdf(file, modello, *m_impaginazione, titolo, errore);
        },
        Qt::BlockingQueuedConnection);
    return scritto;
}

} // namespace sorvane
