// A whole text file and the line and number operations on it.

#include <cstdint>
#include <cstdlib>

#include "support/memory_file.h"
#include "zel/containers/char_arr.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const zel::test::MemoryFile file;
  file.store({reinterpret_cast<const char*>(data), size});
  CharArr text;
  const int read = text.ReadFileM(file.name(), 0);
  if (read == 1 && text.GetBoundM() != static_cast<int>(size)) {
    std::abort();
  }
  return 0;
}
