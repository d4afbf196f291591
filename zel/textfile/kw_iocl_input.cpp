// Values from a text stream.

#include <algorithm>
#include <cstring>
#include <span>

#include "zel/core/constants.h"
#include "zel/textfile/detail/platform_stdio.h"
#include "zel/textfile/detail/text_scanner.h"
#include "zel/textfile/kw_iocl.h"

namespace {

void require(bool done) {
  if (!done) {
    throw zel::kReadFailure;
  }
}

bool scanValue(zel::TextScanner& scanner, int& value) { return scanner.number(value); }
bool scanValue(zel::TextScanner& scanner, float& value) { return scanner.number(value); }
bool scanValue(zel::TextScanner& scanner, char& value) {
  int wide = 0;
  const bool found = scanner.number(wide);
  value = found ? static_cast<char>(wide) : value;
  return found;
}

}  // namespace

FILE* KwIOCL::readable() const {
  FILE* file = stream_.get();
  require(file != nullptr);
  return file;
}

// A read that skips the rest of its line may look at all of it.
zel::LookAhead KwIOCL::lookAhead() const {
  return autoNewLine_ == 1 ? zel::LookAhead::kLine : zel::LookAhead::kChar;
}

void KwIOCL::finishRead(zel::TextScanner& scanner) const {
  if (autoNewLine_ == 1) {
    require(scanner.skipLine() || !scanner.failed());
  }
}

template <class T, std::size_t N>
int KwIOCL::inputNine(T* const (&values)[N]) {
  FILE* file = readable();
  if (!isText()) {
    readBytes(values[0], sizeof(T));
    return 1;
  }
  zel::TextScanner scanner(file, lookAhead());
  require(scanValue(scanner, *values[0]));
  for (T* value : std::span(values).subspan(1)) {
    require(value == nullptr || (scanner.skipSeparator(separator_) && scanValue(scanner, *value)));
  }
  finishRead(scanner);
  return 1;
}

template <class T>
int KwIOCL::inputTuple(T* values, int count) {
  FILE* file = readable();
  if (!isText()) {
    readBytes(values, sizeof(T) * static_cast<std::size_t>(count));
    return 1;
  }
  zel::TextScanner scanner(file, lookAhead());
  for (int i = 0; i < count; ++i) {
    require((i == 0 || scanner.skipSeparator(separator_)) && scanValue(scanner, values[i]));
  }
  finishRead(scanner);
  return 1;
}

int KwIOCL::InputCM(char* v1, char* v2, char* v3, char* v4, char* v5, char* v6, char* v7, char* v8,
                    char* v9) {
  return inputNine({v1, v2, v3, v4, v5, v6, v7, v8, v9});
}

int KwIOCL::InputDM(int* v1, int* v2, int* v3, int* v4, int* v5, int* v6, int* v7, int* v8,
                    int* v9) {
  return inputNine({v1, v2, v3, v4, v5, v6, v7, v8, v9});
}

int KwIOCL::InputDM(int* value, std::nullptr_t) { return InputDM(value); }

int KwIOCL::InputDM(int* value, const char* format) {
  FILE* file = readable();
  if (format == nullptr || !isText()) {
    return InputDM(value);
  }
  stream_.noteFailure();
  {
    const zel::CLocaleScope neutral;
    require(std::fscanf(file, format, value) == 1 && std::ferror(file) == 0);
  }
  zel::TextScanner scanner(file, lookAhead());
  finishRead(scanner);
  return 1;
}

int KwIOCL::InputRM(float* v1, float* v2, float* v3, float* v4, float* v5, float* v6, float* v7,
                    float* v8, float* v9) {
  return inputNine({v1, v2, v3, v4, v5, v6, v7, v8, v9});
}

int KwIOCL::InputSM(char* text, int length, int withLength) {
  FILE* file = readable();
  if (isText()) {
    zel::TextScanner scanner(file, lookAhead());
    require(scanner.word(text));
    finishRead(scanner);
  } else if (length < 1 || withLength != 0) {
    readString(text);
  } else {
    readBytes(text, static_cast<std::size_t>(length));
  }
  return 1;
}

int KwIOCL::InputInt2DM(int* values) { return inputTuple(values, 2); }
int KwIOCL::InputInt3DM(int* values) { return inputTuple(values, 3); }
int KwIOCL::InputInt4DM(int* values) { return inputTuple(values, 4); }
int KwIOCL::InputPoint2DM(float* values) { return inputTuple(values, 2); }
int KwIOCL::InputPoint3DM(float* values) { return inputTuple(values, 3); }
int KwIOCL::InputPoint4DM(float* values) { return inputTuple(values, 4); }
int KwIOCL::InputPixel4DM(float* values) { return InputPoint4DM(values); }

int KwIOCL::InputTexPixel4DM(unsigned char* values) {
  constexpr int kBytes = 4;
  if (!isText()) {
    readBytes(values, kBytes);
    return 1;
  }
  float fields[kBytes];
  inputTuple(fields, kBytes);
  std::memcpy(values, fields, kBytes);
  return 1;
}

int KwIOCL::InputSeparatorM() {
  zel::TextScanner scanner(readable(), zel::LookAhead::kChar);
  require(scanner.take() != EOF);
  return 1;
}

int KwIOCL::InputGetsM(char* text, int size) {
  FILE* file = readable();
  if (!isText()) {
    readString(text);
    return 1;
  }
  zel::TextScanner scanner(file, zel::LookAhead::kLine);
  scanner.line(text, size);
  require(!scanner.failed());
  return 1;
}
