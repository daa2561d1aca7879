#include "frame/core/Impostazioni.h"
