#include "zel/textfile/keyword_values.h"

#include <string_view>

#include "zel/textfile/detail/plain_list.h"
#include "zel/textfile/detail/platform_stdio.h"
#include "zel/textfile/detail/text_scanner.h"
#include "zel/textfile/detail/text_view.h"

namespace {

template <class... Value>
int scanFields(FILE* file, const char* format, Value*... values) {
  if (zel::soundOrNone(file) == nullptr || format == nullptr) {
    return 0;
  }
  const zel::CLocaleScope neutral;
  const bool isDone = std::fscanf(file, format, values...) == static_cast<int>(sizeof...(values));
  // The scanner takes what a failure cut off for a whole number.
  return isDone && std::ferror(file) == 0 ? 1 : 0;
}

template <class... Value>
int printFields(FILE* file, const char* format, Value... values) {
  if (file == nullptr || format == nullptr) {
    return 0;
  }
  const zel::CLocaleScope neutral;
  return zel::print(file, format, values...) ? 1 : 0;
}

double wide(float value) { return static_cast<double>(value); }

}  // namespace

int slFscanfC(FILE* file, const char* format, char* value) {
  int scanned = 0;
  const int done = scanFields(file, format, &scanned);
  if (done == 1) {
    *value = static_cast<char>(scanned);
  }
  return done;
}

int slFscanfD(FILE* file, const char* format, int* value) {
  return scanFields(file, format, value);
}

int slFscanfR(FILE* file, const char* format, float* value) {
  return scanFields(file, format, value);
}

int slFscanfS(FILE* file, const char* format, char* text) { return scanFields(file, format, text); }

int slFscanfInt2D(FILE* file, const char* format, int* values) {
  return scanFields(file, format, values, values + 1);
}

int slFscanfPoint2D(FILE* file, const char* format, float* values) {
  return scanFields(file, format, values, values + 1);
}

int slFscanfPoint3D(FILE* file, const char* format, float* values) {
  return scanFields(file, format, values, values + 1, values + 2);
}

int slFscanfPoint4D(FILE* file, const char* format, float* values) {
  return scanFields(file, format, values, values + 1, values + 2, values + 3);
}

int slFscanfPixel4D(FILE* file, const char* format, float* values) {
  return slFscanfPoint4D(file, format, values);
}

int slFscanfTexPixel4D(FILE* file, const char* format, unsigned char* values) {
  int scanned[3] = {};
  if (scanFields(file, format, scanned, scanned + 1, scanned + 2) != 1) {
    return 0;
  }
  for (int i = 0; i < 3; ++i) {
    values[i] = static_cast<unsigned char>(scanned[i]);
  }
  values[3] = 255;
  return 1;
}

int slFprintfC(FILE* file, const char* format, char value) {
  return printFields(file, format, static_cast<int>(value));
}

int slFprintfD(FILE* file, const char* format, int value) {
  return printFields(file, format, value);
}

int slFprintfR(FILE* file, const char* format, float value) {
  return printFields(file, format, wide(value));
}

int slFprintfS(FILE* file, const char* format, const char* text) {
  return printFields(file, format, zel::viewOf(text).data());
}

int slFprintfInt2D(FILE* file, const char* format, const int* v) {
  return printFields(file, format, v[0], v[1]);
}

int slFprintfPoint2D(FILE* file, const char* format, const float* v) {
  return printFields(file, format, wide(v[0]), wide(v[1]));
}

int slFprintfPoint3D(FILE* file, const char* format, const float* v) {
  return printFields(file, format, wide(v[0]), wide(v[1]), wide(v[2]));
}

int slFprintfPoint4D(FILE* file, const char* format, const float* v) {
  return printFields(file, format, wide(v[0]), wide(v[1]), wide(v[2]), wide(v[3]));
}

int slFprintfPixel4D(FILE* file, const char* format, const float* v) {
  return slFprintfPoint4D(file, format, v);
}

int slFprintfTexPixel4D(FILE* file, const char* format, const unsigned char* v) {
  return printFields(file, format, unsigned{v[0]}, unsigned{v[1]}, unsigned{v[2]}, unsigned{v[3]});
}

int slFgets(FILE* file, char* buffer, int size) {
  zel::TextScanner(zel::soundOrNone(file), zel::LookAhead::kLine).line(buffer, size);
  return 1;
}

int slSkipLine(FILE* file) {
  return zel::TextScanner(zel::soundOrNone(file), zel::LookAhead::kLine).skipLine() ? 1 : 0;
}

int slSearchStrM(FILE* file, const char* word) {
  if (zel::soundOrNone(file) == nullptr || std::feof(file) != 0) {
    return 0;
  }
  const std::string_view wanted = zel::viewOf(word);
  zel::TextScanner scanner(file, zel::LookAhead::kLine);
  bool equals = false;
  while (!equals && scanner.wordIs(wanted, &equals)) {
  }
  scanner.skipTrailingSpace();
  return equals ? 1 : 0;
}
