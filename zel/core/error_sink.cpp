// Apart from its callers, so that a program of object files may put its own in place.

#include "zel/core/memory.h"

int kwErrorMessage(int /*code*/) { return 0; }
