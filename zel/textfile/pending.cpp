// File operations that the list code still has to supply.
#include "zel/containers/char_arr.h"
#include "zel/containers/int2d_arr.h"
#include "zel/containers/int4d_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/containers/point3d_arr.h"
#include "zel/containers/real_arr.h"
#include "zel/core/element_base.h"
#include "zel/mesh/node.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"

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
void NodeCL::FmInputZelFileM(KwIOCL* /*io*/) {}
void NodeCL::FmOutputZelFileM(KwIOCL* /*io*/) const {}
int NodeCL::FmReadZelFileM(FILE* /*file*/) { return 1; }
int NodeCL::FmWriteZelFileM(FILE* /*file*/, zel::NotOverriding) const { return 1; }
void NodeArr::FmInputZelLstM(KwIOCL* /*io*/) {}
void NodeArr::FmOutputZelLstM(KwIOCL* /*io*/, const char* /*name*/) const {}
int NodeArr::FmReadNodeLstM(FILE* /*file*/) { return 1; }
int NodeArr::fmReadOneNodeM(FILE* /*file*/, int /*index*/) { return 1; }

void TriangleCL::FmInputZelFileM(KwIOCL* /*io*/) {}
void TriangleCL::FmOutputZelFileM(KwIOCL* /*io*/) const {}
int TriangleCL::FmReadZelFileM(FILE* /*file*/) { return 1; }
int TriangleCL::FmWriteZelFileM(FILE* /*file*/, zel::NotOverriding) const { return 1; }
void TriangleArr::FmInputZelLstM(KwIOCL* /*io*/) {}
void TriangleArr::FmOutputZelLstM(KwIOCL* /*io*/, const char* /*name*/) const {}
int TriangleArr::FmReadTriangleLstM(FILE* /*file*/) { return 1; }
int TriangleArr::fmReadOneTriangleM(FILE* /*file*/, int /*index*/) { return 1; }

void QuadCL::FmInputZelFileM(KwIOCL* /*io*/) {}
void QuadCL::FmOutputZelFileM(KwIOCL* /*io*/) const {}
int QuadCL::FmReadZelFileM(FILE* /*file*/) { return 1; }
int QuadCL::FmWriteZelFileM(FILE* /*file*/, zel::NotOverriding) const { return 1; }
void QuadArr::FmInputZelLstM(KwIOCL* /*io*/) {}
void QuadArr::FmOutputZelLstM(KwIOCL* /*io*/, const char* /*name*/) const {}
int QuadArr::FmReadQuadLstM(FILE* /*file*/) { return 1; }
int QuadArr::fmReadOneQuadM(FILE* /*file*/, int /*index*/) { return 1; }

int TriangleCL::ExportTriangleDBFIleM(FILE* /*file*/, const float* /*matrix*/) const { return 1; }
int TriangleArr::FmWriteTriangleLstToFileM(FILE* /*file*/) const { return 1; }
int TriangleArr::ExportTriangleLstDBFileM(FILE* /*file*/, const float* /*matrix*/) const {
  return 1;
}
int QuadCL::ExportQuadDBFileM(FILE* /*file*/) const { return 1; }
int QuadArr::FmWriteQuadLstToFileM(FILE* /*file*/) const { return 1; }
int QuadArr::ExportQuadLstDBFileM(FILE* /*file*/) const { return 1; }

void CharArr::FmInputZelLstM(KwIOCL* /*io*/) {}
void CharArr::FmOutputZelLstM(KwIOCL* /*io*/, const char* /*name*/) const {}
