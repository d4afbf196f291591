// The records of single elements, inside the tagged lists and on plain stdio streams.

#include "zel/core/element_base.h"
#include "zel/mesh/node.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"
#include "zel/textfile/detail/line_printer.h"
#include "zel/textfile/detail/plain_list.h"
#include "zel/textfile/detail/text_scanner.h"
#include "zel/textfile/kw_iocl.h"

namespace {

using zel::FaceRecord;
using zel::LinePrinter;
using zel::Scans;

constexpr int kCoordinates = 3;

// --- faces on a formatted stream: written and read in different orders -------------------------

template <int kCount>
void outputFace(KwIOCL* io, const FaceRecord<kCount>& face) {
  io->OutputCM(&face.normalType);
  io->OutputPoint3DM(face.normal);
  const int* corners = face.corners;
  io->OutputDM(corners, corners + 1, corners + 2, kCount > 3 ? corners + 3 : nullptr);
}

template <int kCount>
void inputFace(KwIOCL* io, FaceRecord<kCount>* face) {
  int* corners = face->corners;
  io->InputDM(corners, corners + 1, corners + 2, kCount > 3 ? corners + 3 : nullptr);
  io->InputPoint3DM(face->normal);
  io->InputCM(&face->normalType);
}

// --- plain records -----------------------------------------------------------------------------

LinePrinter& addTag(LinePrinter& line, const KwBaseCL& element) {
  return line.addInt(element.IsAvailableM(), zel::kByteColumns).add("\n");
}

LinePrinter& addVector(LinePrinter& line, const float* v, std::string_view comma) {
  return line.addReal(v[0]).add(comma).addReal(v[1]).add(comma).addReal(v[2]).add("\n");
}

template <int kCount>
void writeFace(FILE* file, const KwBaseCL& element, const FaceRecord<kCount>& face) {
  LinePrinter record(file);
  addTag(record, element);
  for (int i = 0; i < kCount; ++i) {
    record.addInt(face.corners[i], zel::kIntColumns).add(i + 1 < kCount ? ",  " : "\n");
  }
  addVector(record, face.normal, ",").addInt(face.normalType, 0).add("\n").finish();
}

template <int kCount>
void readFace(FILE* file, FaceRecord<kCount>* face) {
  zel::readPlainFields(file, face->corners, kCount, Scans::kOnePerField);
  zel::readPlainFields(file, face->normal, kCoordinates, Scans::kOne);
  int type = face->normalType;
  zel::readPlainFields(file, &type, 1, Scans::kOne);
  face->normalType = static_cast<char>(type);
}

}  // namespace

// --- base --------------------------------------------------------------------------------------

void KwBaseCL::FmInputZelFileM(KwIOCL* io) {
  char tag = 0;
  io->InputCM(&tag);
  SetDeleteTagM(tag);
}

void KwBaseCL::FmOutputZelFileM(KwIOCL* io) const {
  const char tag = IsAvailableM();
  io->OutputCM(&tag);
}

int KwBaseCL::FmReadZelFileM(FILE* file) {
  zel::TextScanner scanner(zel::soundOrNone(file), zel::LookAhead::kLine);
  int tag = 0;
  if (scanner.number(tag)) {
    SetDeleteTagM(static_cast<char>(tag));
  }
  scanner.skipLine();
  return 1;
}

int KwBaseCL::FmWriteZelFileM(FILE* file) const {
  LinePrinter line(file);
  addTag(line, *this).finish();
  return 1;
}

// --- nodes -------------------------------------------------------------------------------------

void NodeCL::FmInputZelFileM(KwIOCL* io) {
  KwBaseCL::FmInputZelFileM(io);
  io->InputPoint3DM(point_);
  io->InputPoint3DM(normal_);
}

void NodeCL::FmOutputZelFileM(KwIOCL* io) const {
  KwBaseCL::FmOutputZelFileM(io);
  io->OutputPoint3DM(point_);
  io->OutputPoint3DM(normal_);
}

int NodeCL::FmReadZelFileM(FILE* file) {
  KwBaseCL::FmReadZelFileM(file);
  zel::readPlainFields(file, point_, kCoordinates, Scans::kOne);
  zel::readPlainFields(file, normal_, kCoordinates, Scans::kOne);
  return 1;
}

int NodeCL::FmWriteZelFileM(FILE* file, zel::NotOverriding /*marker*/) const {
  LinePrinter record(file);
  addTag(record, *this);
  addVector(record, point_, ",  ");
  addVector(record, normal_, ",  ").finish();
  return 1;
}

// --- triangles ---------------------------------------------------------------------------------

void TriangleCL::FmInputZelFileM(KwIOCL* io) {
  KwBaseCL::FmInputZelFileM(io);
  inputFace(io, &record_);
}

void TriangleCL::FmOutputZelFileM(KwIOCL* io) const {
  KwBaseCL::FmOutputZelFileM(io);
  outputFace(io, record_);
}

int TriangleCL::FmReadZelFileM(FILE* file) {
  KwBaseCL::FmReadZelFileM(file);
  readFace(file, &record_);
  return 1;
}

int TriangleCL::FmWriteZelFileM(FILE* file, zel::NotOverriding /*marker*/) const {
  writeFace(file, *this, record_);
  return 1;
}

int TriangleCL::ExportTriangleDBFIleM(FILE* file, const float* /*matrix*/) const {
  return FmWriteZelFileM(file, zel::NotOverriding());
}

// --- quads -------------------------------------------------------------------------------------

void QuadCL::FmInputZelFileM(KwIOCL* io) {
  KwBaseCL::FmInputZelFileM(io);
  inputFace(io, &record_);
}

void QuadCL::FmOutputZelFileM(KwIOCL* io) const {
  KwBaseCL::FmOutputZelFileM(io);
  outputFace(io, record_);
}

int QuadCL::FmReadZelFileM(FILE* file) {
  KwBaseCL::FmReadZelFileM(file);
  readFace(file, &record_);
  return 1;
}

int QuadCL::FmWriteZelFileM(FILE* file, zel::NotOverriding /*marker*/) const {
  writeFace(file, *this, record_);
  return 1;
}

int QuadCL::ExportQuadDBFileM(FILE* file) const {
  return FmWriteZelFileM(file, zel::NotOverriding());
}
