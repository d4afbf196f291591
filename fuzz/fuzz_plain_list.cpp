// The plain list reader of one mesh array, whose header, name and method the build gives.

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include ZEL_FUZZ_HEADER
#include "support/memory_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const zel::test::MemoryFile memory;
  if (!memory.store({reinterpret_cast<const char*>(data), size})) {
    std::abort();
  }
  FILE* file = std::fopen(memory.name(), "r");
  ZEL_FUZZ_ARRAY array;
  array.ZEL_FUZZ_METHOD(file);
  array.ZEL_FUZZ_METHOD(file);
  std::fclose(file);
  const bool isBounded = static_cast<std::size_t>(array.GetLengthM()) <= size + 16;
  if (!isBounded || array.GetBoundM() > array.GetLengthM()) {
    std::abort();
  }
  return 0;
}
