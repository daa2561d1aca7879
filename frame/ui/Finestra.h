#pragma once

// A screen's window remembered in the local INI, in a section named after
// the screen (its objectName): WSTATE (0 normal, 2 maximised), DIMX, DIMY,
// POSX, POSY. Sizes and positions are twips, 15 to a logical pixel. The
// window handled is the screen's frame: its QMdiSubWindow inside the main
// window, else the top-level window itself.

#include <QRect>

class QWidget;

namespace sorvane {

constexpr int TwipsPerPixel = 15;
constexpr int InTwips(int pixel) { return pixel * TwipsPerPixel; }
constexpr int InPixel(int twips) { return twips / TwipsPerPixel; }

// The screen's size in twips for the size rules: the capped size measured at
// start, or the primary screen's when nothing was measured.
int LarghezzaUtile();
int AltezzaUtile();

// Reads the screen's section and applies it. With correggi 0 a window that
// would stand beyond the screen is pulled back onto it, clear of the taskbar.
// No section: the design size, centred.
void RipristinaFinestra(QWidget *schermo, int &correggi);
void RipristinaFinestra(QWidget *schermo);
// Writes the screen's section; a minimised window is kept as normal.
void SalvaFinestra(QWidget *schermo);
// For the modal pop-ups: centred on the whole screen, capped at its size.
void CentraFinestra(QWidget *finestra);
// Moves a window that has grown past the edge of its screen's free area
// (a dialog showing a larger face) back inside it.
void TieniSulloSchermo(QWidget *finestra);
// The taskbar's rectangle in twips: what the screen's geometry has beyond its
// available geometry. Empty when there is no bar.
QRect LeggiBarraApplicazioni();

} // namespace sorvane
