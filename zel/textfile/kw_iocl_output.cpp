// Values to the stream.

#include <cstring>
#include <span>
#include <string_view>

#include "zel/core/constants.h"
#include "zel/textfile/detail/line_printer.h"
#include "zel/textfile/detail/platform_stdio.h"
#include "zel/textfile/detail/text_view.h"
#include "zel/textfile/kw_iocl.h"

namespace {

enum Slot {
  kChar,
  kInt,
  kReal,
  kString,
  kInt2,
  kReal2,
  kReal3,
  kReal4,
  kPixel,
  kTexPixel,
  kInt4,
  kInt3
};

constexpr std::string_view kTupleSeparator = ", ";

void addDefault(zel::LinePrinter& line, char value) { line.addInt(value, zel::kByteColumns); }
void addDefault(zel::LinePrinter& line, unsigned char value) {
  line.addInt(value, zel::kByteColumns);
}
void addDefault(zel::LinePrinter& line, int value) { line.addInt(value, zel::kIntColumns); }
void addDefault(zel::LinePrinter& line, float value) { line.addReal(value); }

void require(bool done) {
  if (!done) {
    throw zel::kWriteFailure;
  }
}

// The variadic promotion of a value: what the caller's format describes.
int promoted(char value) { return value; }
unsigned promoted(unsigned char value) { return value; }
int promoted(int value) { return value; }
double promoted(float value) { return static_cast<double>(value); }

template <class T>
bool printTuple(FILE* file, const char* format, const T* v, int count) {
  switch (count) {
    case 1:
      return zel::print(file, format, promoted(v[0]));
    case 2:
      return zel::print(file, format, promoted(v[0]), promoted(v[1]));
    case 3:
      return zel::print(file, format, promoted(v[0]), promoted(v[1]), promoted(v[2]));
    default:
      return zel::print(file, format, promoted(v[0]), promoted(v[1]), promoted(v[2]),
                        promoted(v[3]));
  }
}

}  // namespace

FILE* KwIOCL::writable() const {
  FILE* file = stream_.get();
  require(file != nullptr);
  stream_.noteWrite();
  return file;
}

std::string_view KwIOCL::lineEnd() const { return autoNewLine_ == 1 ? "\n" : ""; }

void KwIOCL::endLine(FILE* file) const { require(std::fputs(lineEnd().data(), file) != EOF); }

template <class T, std::size_t N>
int KwIOCL::outputNine(int slot, const T* const (&values)[N]) {
  FILE* file = writable();
  if (!isText()) {
    writeBytes(values[0], sizeof(T));
    return 1;
  }
  if (!isDefaultFmt_[slot]) {
    const zel::CLocaleScope neutral;
    char format[3 * kFormatSize];
    zel::copyText(format + zel::copyEscaped(format, separator_), fmts_[slot]);
    require(printTuple(file, fmts_[slot], values[0], 1));
    for (const T* value : std::span(values).subspan(1)) {
      require(value == nullptr || printTuple(file, format, value, 1));
    }
    endLine(file);
    return 1;
  }
  zel::LinePrinter line(file);
  addDefault(line, *values[0]);
  for (const T* value : std::span(values).subspan(1)) {
    if (value != nullptr) {
      line.add(separator_);
      addDefault(line, *value);
    }
  }
  line.add(lineEnd());
  require(line.finish());
  return 1;
}

template <class T>
int KwIOCL::outputTuple(int slot, const T* values, int count) {
  FILE* file = writable();
  if (!isText()) {
    writeBytes(values, sizeof(T) * static_cast<std::size_t>(count));
    return 1;
  }
  if (!isDefaultFmt_[slot]) {
    const zel::CLocaleScope neutral;
    require(printTuple(file, fmts_[slot], values, count));
    endLine(file);
    return 1;
  }
  zel::LinePrinter line(file);
  for (int i = 0; i < count; ++i) {
    line.add(i == 0 ? "" : kTupleSeparator);
    addDefault(line, values[i]);
  }
  line.add(lineEnd());
  require(line.finish());
  return 1;
}

int KwIOCL::OutputCM(const char* v1, const char* v2, const char* v3, const char* v4, const char* v5,
                     const char* v6, const char* v7, const char* v8, const char* v9) {
  return outputNine(kChar, {v1, v2, v3, v4, v5, v6, v7, v8, v9});
}

int KwIOCL::OutputDM(const int* v1, const int* v2, const int* v3, const int* v4, const int* v5,
                     const int* v6, const int* v7, const int* v8, const int* v9) {
  return outputNine(kInt, {v1, v2, v3, v4, v5, v6, v7, v8, v9});
}

int KwIOCL::OutputRM(const float* v1, const float* v2, const float* v3, const float* v4,
                     const float* v5, const float* v6, const float* v7, const float* v8,
                     const float* v9) {
  return outputNine(kReal, {v1, v2, v3, v4, v5, v6, v7, v8, v9});
}

int KwIOCL::outputText(const char* format, std::string_view text) {
  FILE* file = writable();
  if (format != nullptr) {
    const zel::CLocaleScope neutral;
    require(zel::print(file, format, text.data()));
    endLine(file);
    return 1;
  }
  zel::LinePrinter line(file);
  require(line.add(text).add(lineEnd()).finish());
  return 1;
}

int KwIOCL::OutputSM(const char* text, int length, int withLength) {
  const std::string_view whole = zel::viewOf(text);
  if (isText()) {
    return outputText(isDefaultFmt_[kString] ? nullptr : fmts_[kString], whole);
  }
  const bool isCut = length >= 1 && text != nullptr;
  const std::size_t size = isCut ? static_cast<std::size_t>(length) : whole.size();
  if (length < 1 || withLength != 0) {
    writeString(whole.data(), size);
  } else {
    writeBytes(whole.data(), size);
  }
  return 1;
}

int KwIOCL::OutputsM(const char* text) {
  const std::string_view whole = zel::viewOf(text);
  if (isText()) {
    return outputText(nullptr, whole);
  }
  writeString(whole.data(), whole.size());
  return 1;
}

int KwIOCL::OutputInt2DM(const int* values) { return outputTuple(kInt2, values, 2); }
int KwIOCL::OutputInt3DM(const int* values) { return outputTuple(kInt3, values, 3); }
int KwIOCL::OutputInt4DM(const int* values) { return outputTuple(kInt4, values, 4); }
int KwIOCL::OutputPoint2DM(const float* values) { return outputTuple(kReal2, values, 2); }
int KwIOCL::OutputPoint3DM(const float* values) { return outputTuple(kReal3, values, 3); }
int KwIOCL::OutputPoint4DM(const float* values) { return outputTuple(kReal4, values, 4); }
int KwIOCL::OutputPixel4DM(const float* values) { return outputTuple(kPixel, values, 4); }
int KwIOCL::OutputTexPixel4DM(const unsigned char* values) {
  return outputTuple(kTexPixel, values, 4);
}
