#include "frame/ui/Cursore.h"
