#include "zel/core/element_base.h"

int KwBaseCL::InitialM() { return 1; }
