#pragma once

#include <random>
#include <string>
#include <string_view>

#include "stream_fixture.h"
#include "support/memory_file.h"
#include "zel/textfile/kw_iocl.h"

namespace zel::test {

/// The bytes of `array` as the list "l".
template <class Array>
std::string listOf(StreamFile& file, const Array& array, const char* mode = "w") {
  return file.written([&](KwIOCL& io) { array.FmOutputZelLstM(&io, "l"); }, mode);
}

template <class Array>
void readList(StreamFile& file, Array* array, std::string_view content, const char* mode = "r") {
  KwIOCL io;
  file.feed(io, content, mode);
  array->FmInputZelLstM(&io);
}

/// What reading `content` throws; 0 for nothing.
template <class Array>
int codeOfReading(const MemoryFile& file, Array* array, std::string_view content,
                  const char* mode) {
  KwIOCL io;
  EXPECT_TRUE(file.store(content));
  io.OpenM(file.name(), mode);
  return thrownBy([&] { array->FmInputZelLstM(&io); });
}

/// A valid file cut off or altered in a few places.
inline std::string damaged(std::mt19937& random, std::string bytes) {
  if (random() % 2U == 0) {
    bytes.resize(random() % bytes.size());
  }
  for (auto i = random() % 4U; i > 0 && !bytes.empty(); --i) {
    bytes[random() % bytes.size()] = "0123456789-,.e \n\xFF"[random() % 17U];
  }
  return bytes;
}

}  // namespace zel::test
