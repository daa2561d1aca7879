#pragma once

// A screen under test as a user has it: shown, active, and with the events
// of its first show already run.

class QWidget;

namespace sorvane::prova {

// Runs the events that a show, a click or a focus change left pending.
void Attendi();
// Shows the window, makes it the active one and waits for it.
void MostraAttiva(QWidget *finestra);

} // namespace sorvane::prova
