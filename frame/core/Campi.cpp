#include "frame/core/Campi.h"
