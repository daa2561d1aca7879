#include "frame/core/Ini.h"
