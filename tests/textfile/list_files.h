#pragma once

#include <string>
#include <string_view>

#include "stream_fixture.h"

namespace zel::test {

/// A test that writes and reads tagged lists.
class ListTest : public StreamTest {
 protected:
  /// The bytes of `array` as the list "l".
  template <class Array>
  std::string listOf(const Array& array, const char* mode = "w") {
    return written([&](KwIOCL& io) { array.FmOutputZelLstM(&io, "l"); }, mode);
  }
  /// Reads a list on top of `array`. @return what that throws; 0 for nothing.
  template <class Array>
  int read(Array* array, std::string_view content, const char* mode = "r") {
    feed(content, mode);
    return thrownBy([&] { array->FmInputZelLstM(&io_); });
  }
};

}  // namespace zel::test
