#include "frame/core/Sessione.h"

namespace sorvane {

Sessione &sessione()
{
    static Sessione s;
    return s;
}

} // namespace sorvane
