#pragma once

// Modal pop-ups go through EseguiModale, so that tests can drive a dialog
// without blocking: they install a handler that works the dialog's widgets
// and returns its result code.

#include <functional>

#include <QPointer>
#include <QWidget>

class QDialog;

namespace sorvane {

// Around a modal box or dialog: once it is gone, the window that was active
// before is the active one again at once, with its focus field, so that a
// field the caller then leaves loses its focus and runs its check. A window
// manager gives the activation back only later, and until then the focus
// moves without telling the fields.
class RitornoAllaFinestra
{
public:
    RitornoAllaFinestra();
    ~RitornoAllaFinestra();
    RitornoAllaFinestra(const RitornoAllaFinestra &) = delete;
    RitornoAllaFinestra &operator=(const RitornoAllaFinestra &) = delete;

private:
    QPointer<QWidget> m_finestra;
};

using GestoreModale = std::function<int(QDialog &)>;

// Shows the dialog modally (QDialog::exec) or hands it to the installed handler.
int EseguiModale(QDialog &dialogo);
// Installs a handler; an empty one puts QDialog::exec back.
void installaGestoreModale(GestoreModale gestore);

} // namespace sorvane
