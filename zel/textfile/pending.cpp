// File operations that the list code still has to supply.
#include "zel/containers/int2d_arr.h"
#include "zel/containers/int4d_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/containers/point3d_arr.h"
#include "zel/containers/real_arr.h"
#include "zel/core/element_base.h"

void KwBaseCL::FmInputZelFileM(KwIOCL* /*io*/) {}
void KwBaseCL::FmOutputZelFileM(KwIOCL* /*io*/) const {}
int KwBaseCL::FmReadZelFileM(FILE* /*file*/) { return 1; }
int KwBaseCL::FmWriteZelFileM(FILE* /*file*/) const { return 1; }

void IntArr::FmInputZelLstM(KwIOCL* /*io*/) {}
void IntArr::FmOutputZelLstM(KwIOCL* /*io*/, const char* /*name*/) const {}

void Int2DArr::FmInputZelLstM(KwIOCL* /*io*/) {}
void Int2DArr::FmOutputZelLstM(KwIOCL* /*io*/, const char* /*name*/) const {}

void Int4DArr::FmInputZelLstM(KwIOCL* /*io*/) {}
void Int4DArr::FmOutputZelLstM(KwIOCL* /*io*/, const char* /*name*/) const {}

void RealArr::FmInputZelLstM(KwIOCL* /*io*/) {}
void RealArr::FmOutputZelLstM(KwIOCL* /*io*/, const char* /*name*/) const {}

void Point2DArr::FmInputZelLstM(KwIOCL* /*io*/) {}
void Point2DArr::FmOutputZelLstM(KwIOCL* /*io*/, const char* /*name*/) const {}

void Point3DArr::FmInputZelLstM(KwIOCL* /*io*/) {}
void Point3DArr::FmOutputZelLstM(KwIOCL* /*io*/, const char* /*name*/) const {}
int Point3DArr::FmInputLstM(FILE* /*file*/, int /*count*/) { return 1; }
int Point3DArr::FmOutputLstM(FILE* /*file*/) const { return 1; }
