#pragma once

class QWidget;

namespace sorvane {

// Hourglass on the active screen (remembered), then a yield to the window system.
void CursoreAttesa();
// Normal pointer on the remembered screen, the active one and the application.
void CursoreNormale();
// Caps larghezza and altezza (pixels) at the screen's size, then enlarges the
// window to them where it is smaller.
void LimitaDimensioni(QWidget *finestra, int &larghezza, int &altezza);

} // namespace sorvane
