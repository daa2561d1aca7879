#include "frame/ui/Finestra.h"

#include "frame/core/Campi.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"

#include <QGuiApplication>
#include <QLayout>
#include <QMdiSubWindow>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <cstdint>

namespace sorvane {

namespace {

QWidget *Cornice(QWidget *schermo)
{
    if (auto *sotto = qobject_cast<QMdiSubWindow *>(schermo->parentWidget()))
        return sotto;
    return schermo->window();
}

QScreen *SchermoDi(QWidget *w)
{
    QScreen *s = w ? w->screen() : nullptr;
    return s ? s : QGuiApplication::primaryScreen();
}

double Numero(const QString &sezione, const QString &chiave)
{
    return CDbl(DataDaCampo(LeggiIni(impostazioni().IniLocale, sezione, chiave)));
}

void Scrivi(const QString &sezione, const QString &chiave, int valore)
{
    ScriviIni(impostazioni().IniLocale, sezione, chiave, QString::number(valore));
}

bool Ridimensionabile(QWidget *w)
{
    return w->minimumSize() != w->maximumSize();
}

} // namespace

int LarghezzaUtile()
{
    if (sessione().LarghezzaSchermo > 0)
        return sessione().LarghezzaSchermo;
    QScreen *s = QGuiApplication::primaryScreen();
    return s ? InTwips(s->geometry().width()) : 0;
}

int AltezzaUtile()
{
    if (sessione().AltezzaSchermo > 0)
        return sessione().AltezzaSchermo;
    QScreen *s = QGuiApplication::primaryScreen();
    return s ? InTwips(s->geometry().height()) : 0;
}

void RipristinaFinestra(QWidget *schermo)
{
    int correggi = 0;
    RipristinaFinestra(schermo, correggi);
}

void RipristinaFinestra(QWidget *schermo, int &correggi)
{
    QWidget *w = Cornice(schermo);
    const QString sezione = schermo->objectName();
    const auto stato = static_cast<std::int16_t>(Numero(sezione, QStringLiteral("WSTATE")));
    if (stato == 2) {
        w->setWindowState((w->windowState() & ~Qt::WindowMinimized) | Qt::WindowMaximized);
        return;
    }
    const bool sizable = Ridimensionabile(w);
    const int schermoL = LarghezzaUtile();
    const int schermoA = AltezzaUtile();

    int larghezza = sizable ? int(Numero(sezione, QStringLiteral("DIMX"))) : 0;
    if (larghezza == 0)
        larghezza = InTwips(w->width());
    larghezza = std::min(larghezza, schermoL);
    int altezza = sizable ? int(Numero(sezione, QStringLiteral("DIMY"))) : 0;
    if (altezza == 0)
        altezza = InTwips(w->height());
    altezza = std::min(altezza, schermoA);

    int sinistra = int(Numero(sezione, QStringLiteral("POSX")));
    if (sinistra == 0)
        sinistra = (schermoL - larghezza) / 2;
    int alto = int(Numero(sezione, QStringLiteral("POSY")));
    if (alto == 0)
        alto = (schermoA - altezza) / 2;

    w->resize(InPixel(larghezza), InPixel(altezza));
    if (correggi == 0) {
        // The frame around the client area counts: the whole window must fit,
        // and it must stay clear of the taskbar.
        const int bordoL = InTwips(w->frameGeometry().width() - w->width());
        const int bordoA = InTwips(w->frameGeometry().height() - w->height());
        const QRect barra = LeggiBarraApplicazioni();
        int limiteL = schermoL;
        int limiteA = schermoA;
        int minimoX = 0;
        int minimoY = 0;
        if (barra.isValid() && barra.width() >= barra.height()) {
            if (barra.top() > 0)
                limiteA = std::min(limiteA, barra.top());
            else
                minimoY = barra.bottom() + 1;
        } else if (barra.isValid()) {
            if (barra.left() > 0)
                limiteL = std::min(limiteL, barra.left());
            else
                minimoX = barra.right() + 1;
        }
        sinistra = std::max(minimoX, std::min(sinistra, limiteL - larghezza - bordoL));
        alto = std::max(minimoY, std::min(alto, limiteA - altezza - bordoA));
    }
    w->move(InPixel(sinistra), InPixel(alto));
}

void SalvaFinestra(QWidget *schermo)
{
    QWidget *w = Cornice(schermo);
    const QString sezione = schermo->objectName();
    const int stato = w->isMaximized() ? 2 : 0;
    if (stato == 0) {
        const QRect g = w->isMinimized() ? w->normalGeometry() : w->geometry();
        const QRect r = g.isValid() ? g : w->geometry();
        if (Ridimensionabile(w)) {
            Scrivi(sezione, QStringLiteral("DIMX"), InTwips(r.width()));
            Scrivi(sezione, QStringLiteral("DIMY"), InTwips(r.height()));
        }
        Scrivi(sezione, QStringLiteral("POSX"), InTwips(w->x()));
        Scrivi(sezione, QStringLiteral("POSY"), InTwips(w->y()));
    }
    Scrivi(sezione, QStringLiteral("WSTATE"), stato);
}

void CentraFinestra(QWidget *finestra)
{
    const int larghezza = std::min(InTwips(finestra->width()), LarghezzaUtile());
    const int altezza = std::min(InTwips(finestra->height()), AltezzaUtile());
    int larghezzaMax = sessione().LarghezzaMax;
    int altezzaMax = sessione().AltezzaMax;
    if (larghezzaMax == 0 || altezzaMax == 0) {
        larghezzaMax = LarghezzaUtile() + 120;
        altezzaMax = AltezzaUtile() + 120;
    }
    finestra->resize(InPixel(larghezza), InPixel(altezza));
    finestra->move(InPixel((larghezzaMax - larghezza) / 2), InPixel((altezzaMax - altezza) / 2));
}

void TieniSulloSchermo(QWidget *finestra)
{
    if (finestra->layout())
        finestra->layout()->activate();
    QScreen *s = finestra->screen();
    if (!s || !finestra->isWindow())
        return;
    const QRect libero = s->availableGeometry();
    const QRect g = finestra->frameGeometry();
    QPoint p = g.topLeft();
    p.rx() -= std::max(0, g.right() - libero.right());
    p.ry() -= std::max(0, g.bottom() - libero.bottom());
    p.rx() = std::max(p.x(), libero.left());
    p.ry() = std::max(p.y(), libero.top());
    if (p != g.topLeft())
        finestra->move(p);
}

QRect LeggiBarraApplicazioni()
{
    QScreen *s = SchermoDi(nullptr);
    if (!s)
        return QRect();
    const QRect tutto = s->geometry();
    const QRect libero = s->availableGeometry();
    QRect barra;
    if (libero.top() > tutto.top())
        barra = QRect(tutto.left(), tutto.top(), tutto.width(), libero.top() - tutto.top());
    else if (libero.bottom() < tutto.bottom())
        barra = QRect(tutto.left(), libero.bottom() + 1, tutto.width(),
                      tutto.bottom() - libero.bottom());
    else if (libero.left() > tutto.left())
        barra = QRect(tutto.left(), tutto.top(), libero.left() - tutto.left(), tutto.height());
    else if (libero.right() < tutto.right())
        barra = QRect(libero.right() + 1, tutto.top(), tutto.right() - libero.right(),
                      tutto.height());
    if (barra.isEmpty())
        return QRect();
    return QRect(InTwips(barra.left()), InTwips(barra.top()), InTwips(barra.width()),
                 InTwips(barra.height()));
}

} // namespace sorvane
