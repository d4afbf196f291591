// A real number: the stream must read what the C library's scanner reads. Left aside are two
// habits of glibc's: it makes a zero of a lone "0x.", and takes the character that breaks off an
// "inf" or a "nan".

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "support/memory_file.h"
#include "zel/textfile/kw_iocl.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (text.find("x.") != std::string_view::npos || text.find("X.") != std::string_view::npos) {
    return 0;
  }
  static const zel::test::MemoryFile memory;
  if (!memory.store(text)) {
    std::abort();
  }
  FILE* file = std::fopen(memory.name(), "r");
  float expected = 77;
  const bool isNumber = std::fscanf(file, "%f", &expected) == 1;
  const long end = std::ftell(file);
  std::fclose(file);

  float value = 77;
  bool isRead = true;
  KwIOCL io;
  io.SetAutoNewLineM(0);
  io.OpenM(memory.name(), "r");
  try {
    io.InputRM(&value);
  } catch (int) {
    isRead = false;
  }
  const bool isSame = std::memcmp(&value, &expected, sizeof value) == 0 ||
                      (std::isnan(value) && std::isnan(expected));
  const bool standsWhereItShould = !isNumber || std::ftell(io.GetFileDescriptM()) == end;
  if (isRead != isNumber || !isSame || !standsWhereItShould) {
    std::abort();
  }
  return 0;
}
