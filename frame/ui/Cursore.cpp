#include "frame/ui/Cursore.h"

#include <QApplication>
#include <QCursor>
#include <QPointer>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace sorvane {

namespace {

QPointer<QWidget> &schermoRicordato()
{
    static QPointer<QWidget> schermo;
    return schermo;
}

} // namespace

void CursoreAttesa()
{
    schermoRicordato() = QApplication::activeWindow();
    // One level of our own at most: a long job calls this at every step, and
    // a stack of hourglasses would outlive the single CursoreNormale at its end.
    if (QApplication::overrideCursor())
        QApplication::changeOverrideCursor(QCursor(Qt::WaitCursor));
    else
        QApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    QApplication::processEvents();
}

void CursoreNormale()
{
    // Whoever left a pointer behind, the screens get the normal one back.
    while (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
    if (QWidget *ricordato = schermoRicordato())
        ricordato->unsetCursor();
    if (QWidget *attivo = QApplication::activeWindow())
        attivo->unsetCursor();
    schermoRicordato() = nullptr;
    QApplication::processEvents();
}

void LimitaDimensioni(QWidget *finestra, int &larghezza, int &altezza)
{
    QScreen *schermo = finestra ? finestra->screen() : QGuiApplication::primaryScreen();
    if (!schermo)
        return;
    const QSize disponibile = schermo->availableGeometry().size();
    larghezza = std::min(larghezza, disponibile.width());
    altezza = std::min(altezza, disponibile.height());
    if (!finestra)
        return;
    // The sizes are of the whole window, its frame included, as the screen sees it.
    const QSize esterno = finestra->frameGeometry().size();
    const QSize cornice = esterno - finestra->size();
    const int nuovaL = std::max(esterno.width(), larghezza) - cornice.width();
    const int nuovaA = std::max(esterno.height(), altezza) - cornice.height();
    if (nuovaL != finestra->width() || nuovaA != finestra->height())
        finestra->resize(nuovaL, nuovaA);
}

} // namespace sorvane
