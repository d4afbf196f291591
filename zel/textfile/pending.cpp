// File operations that the list code still has to supply.
#include "zel/containers/int_arr.h"
#include "zel/core/element_base.h"

void KwBaseCL::FmInputZelFileM(KwIOCL* /*io*/) {}
void KwBaseCL::FmOutputZelFileM(KwIOCL* /*io*/) const {}
int KwBaseCL::FmReadZelFileM(FILE* /*file*/) { return 1; }
int KwBaseCL::FmWriteZelFileM(FILE* /*file*/) const { return 1; }

void IntArr::FmInputZelLstM(KwIOCL* /*io*/) {}
void IntArr::FmOutputZelLstM(KwIOCL* /*io*/, const char* /*name*/) const {}
