#include "zel/textfile/keyword_lists.h"

#include <array>
#include <optional>

#include "zel/containers/int2d_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/core/constants.h"
#include "zel/textfile/detail/line_printer.h"
#include "zel/textfile/detail/list_sinks.h"
#include "zel/textfile/detail/plain_list.h"
#include "zel/textfile/detail/platform_stdio.h"
#include "zel/textfile/detail/text_view.h"

namespace {

/// Characters of a number that the readers look at: the writers' columns.
constexpr int kReadColumns = 10;
constexpr int kLeastEntryBytes = 4;

void writeItem(FILE* file, const IntArr& array, int index) {
  int value = 0;
  array.GetItemM(&value, index);
  zel::LinePrinter(file).addInt(value, zel::kIntColumns).add("\n").finish();
}

void writeItem(FILE* file, const Int2DArr& array, int index) {
  int pair[2] = {};
  array.GetItemM(pair, index);
  zel::LinePrinter(file).addInt(pair[0], 0).add(",  ").addInt(pair[1], 0).add("\n").finish();
}

void writeItem(FILE* file, const Point2DArr& array, int index) {
  float point[2] = {};
  array.GetItemM(point, index);
  std::fprintf(file, "%f,  %f\n", static_cast<double>(point[0]), static_cast<double>(point[1]));
}

template <class Array>
int writeList(FILE* file, const Array& array, const char* name) {
  if (file == nullptr) {
    return 1;
  }
  const zel::CLocaleScope neutral;
  zel::PlainListWriter list(file, zel::viewOf(name));
  const int count = array.GetBoundM();
  list.begin(count);
  for (int i = 0; i < count; ++i) {
    list.index(i);
    writeItem(file, array, i);
  }
  list.end();
  return 1;
}

bool isHole(const int (&value)[1]) { return value[0] == zel::kNoIndex; }
bool isHole(const int (&pair)[2]) { return pair[0] == zel::kNoIndex && pair[1] == zel::kNoIndex; }
bool isHole(const float (&point)[2]) {
  return point[0] == zel::kFloatMark && point[1] == zel::kFloatMark;
}

template <class Value, int kCount>
std::optional<std::array<Value, kCount>> readItem(FILE* file) {
  Value fields[kCount] = {};
  if (!zel::readPlainFields(file, fields, kCount, zel::Scans::kOnePerField) || isHole(fields)) {
    return std::nullopt;
  }
  return std::to_array(fields);
}

void setItem(IntArr* array, const std::array<int, 1>& item, int index) {
  array->SetItemM(item[0], index);
}
template <class Array, class Value>
void setItem(Array* array, const std::array<Value, 2>& item, int index) {
  array->SetItemM(item.data(), index);
}

template <class Value, int kCount, class Array>
int readList(FILE* file, Array* array) {
  array->DelAllM();
  const zel::ListSource source(file, kLeastEntryBytes);
  int count = 0;
  if (!zel::readPlainTagLine(file, &count, kReadColumns)) {
    count = 0;
  }
  using Item = std::array<Value, kCount>;
  const auto store = [array](int at, const Item& item) {
    setItem(array, item, at);
    return true;
  };
  zel::EntrySink<Item, decltype(store)> sink(source, zel::AtFault::kSkip, store);
  for (int entry = 0; entry < count; ++entry) {
    int index = 0;
    if (!zel::readPlainTagLine(file, &index, kReadColumns)) {
      return 1;
    }
    if (const auto item = readItem<Value, kCount>(file)) {
      static_cast<void>(sink.put(index, *item));
    }
  }
  static_cast<void>(sink.finish());
  zel::skipPlainEnd(file);
  return 1;
}

}  // namespace

int slFprintfIntArr(FILE* file, const IntArr& array, const char* name) {
  return writeList(file, array, name);
}

int slFprintfInt2dArr(FILE* file, const Int2DArr& array, const char* name) {
  return writeList(file, array, name);
}

int slFprintfPoint2DArr(FILE* file, const Point2DArr& array, const char* name) {
  return writeList(file, array, name);
}

int slFscanfIntArr(FILE* file, IntArr* array) { return readList<int, 1>(file, array); }

int slFscanfInt2dArr(FILE* file, Int2DArr* array) { return readList<int, 2>(file, array); }

int slFscanfPoint2DArr(FILE* file, Point2DArr* array) { return readList<float, 2>(file, array); }
