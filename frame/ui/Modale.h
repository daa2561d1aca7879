#pragma once

// Modal pop-ups go through EseguiModale, so that tests can drive a dialog
// without blocking: they install a handler that works the dialog's widgets
// and returns its result code.

#include <functional>

class QDialog;

namespace sorvane {

using GestoreModale = std::function<int(QDialog &)>;

// Shows the dialog modally (QDialog::exec) or hands it to the installed handler.
int EseguiModale(QDialog &dialogo);
// Installs a handler; an empty one puts QDialog::exec back.
void installaGestoreModale(GestoreModale gestore);

} // namespace sorvane
