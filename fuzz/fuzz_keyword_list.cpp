// The plain container list readers: the first byte chooses one.

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "support/memory_file.h"
#include "zel/containers/int2d_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/textfile/keyword_lists.h"

namespace {

template <class Array>
void readTwice(FILE* file, std::size_t size, int (*read)(FILE*, Array*)) {
  Array array;
  read(file, &array);
  read(file, &array);
  const bool isBounded = static_cast<std::size_t>(array.GetLengthM()) <= 3 * size + 16;
  if (!isBounded || array.GetBoundM() > array.GetLengthM()) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  static const zel::test::MemoryFile memory;
  if (!memory.store({reinterpret_cast<const char*>(data) + 1, size - 1})) {
    std::abort();
  }
  FILE* file = std::fopen(memory.name(), "r");
  switch (data[0] % 3) {
    case 0:
      readTwice(file, size, slFscanfIntArr);
      break;
    case 1:
      readTwice(file, size, slFscanfInt2dArr);
      break;
    default:
      readTwice(file, size, slFscanfPoint2DArr);
  }
  std::fclose(file);
  return 0;
}
