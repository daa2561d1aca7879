#pragma once

// The responder the program installs at start: each request becomes a
// QMessageBox with the request's title, icon, buttons (Italian captions) and
// default button, parented to the active window.

#include "frame/core/Messaggi.h"

namespace sorvane {

class MessaggiQt : public Messaggi
{
public:
    Risposta chiedi(const Richiesta &richiesta) override;
};

} // namespace sorvane
