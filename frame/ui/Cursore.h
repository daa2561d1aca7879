#pragma once

class QWidget;

namespace sorvane {

// Hourglass over the program (an override cursor, one level however often it
// is called), remembering the active screen; then a yield to the window system.
void CursoreAttesa();
// Normal pointer: every override cursor goes, and the remembered and active
// screens lose any pointer of their own; then a yield.
void CursoreNormale();
// Caps larghezza and altezza (pixels) at the available size of the window's
// screen, then enlarges the window, frame included, to them where it is
// smaller; a larger window keeps its size. A null window only caps the numbers.
void LimitaDimensioni(QWidget *finestra, int &larghezza, int &altezza);

} // namespace sorvane
