// The tagged list reader of one array, whose header and name the build gives. The first byte
// chooses the kind of stream.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include ZEL_FUZZ_HEADER
#include "support/memory_file.h"
#include "zel/textfile/kw_iocl.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  static const zel::test::MemoryFile file;
  if (!file.store({reinterpret_cast<const char*>(data) + 1, size - 1})) {
    std::abort();
  }
  const bool isBinary = (data[0] & 1U) != 0;
  KwIOCL io;
  io.OpenM(file.name(), isBinary ? "rb" : "r");
  ZEL_FUZZ_ARRAY array;
  try {
    array.FmInputZelLstM(&io);
    array.FmInputZelLstM(&io);
  } catch (int code) {
    if (code != 107) {
      std::abort();
    }
  }
  // Slots beyond those that the file names come only from doubling.
  const bool isBounded = static_cast<std::size_t>(array.GetLengthM()) <= 3 * size + 16;
  if (!isBounded || array.GetBoundM() > array.GetLengthM()) {
    std::abort();
  }
  io.OpenM("/dev/null", isBinary ? "wb" : "w");
  array.FmOutputZelLstM(&io, "l");
  return 0;
}
