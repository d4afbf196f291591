// A version tag, known or not, and a notice with any code and name: what people are shown is UTF-8.

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "zel/core/platform.h"
#include "zel/textfile/file_version.h"

namespace {

void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

/// The tag of a number, as the numbers were given out: from two digits, but for the last.
std::string tagOf(int number) {
  std::array<char, 16> tag{};
  if (number == 4008) {
    return "zel4.008";
  }
  const bool isMac = number >= 100;
  std::snprintf(tag.data(), tag.size(), isMac ? "MAC%d.%02d" : "zel%d.%d",
                number / (isMac ? 100 : 10), number % (isMac ? 100 : 10));
  return tag.data();
}

/// The decoder of the Unicode standard, table 3-7, byte by byte.
bool isWellFormed(const std::string& text) {
  for (std::size_t i = 0; i < text.size();) {
    const auto at = [&](std::size_t k) -> unsigned {
      return i + k < text.size() ? static_cast<unsigned char>(text[i + k]) : 0U;
    };
    const unsigned lead = at(0);
    const std::size_t more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    const unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if ((lead >= 0x80 && lead < 0xC2) || lead > 0xF4 ||
        (more > 0 && (at(1) < low || at(1) > high))) {
      return false;
    }
    for (std::size_t k = 2; k <= more; ++k) {
      if (at(k) < 0x80 || at(k) > 0xBF) {
        return false;
      }
    }
    i += more + 1;
  }
  return true;
}

class Reader : public zel::Platform {
 public:
  Reader() { zel::setPlatform(this); }
  ~Reader() override { zel::setPlatform(nullptr); }
  void showMessage(const char* gbkText) override {
    require(gbkText != nullptr && isWellFormed(zel::noticeInUtf8(gbkText)));
    shown = gbkText;
  }
  std::string shown;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  try {
    require(tagOf(slGetFileVersion(text.c_str())) == text.c_str());
  } catch (int code) {
    require(code == 111);
  }
  if (size > 1) {
    Reader reader;
    const char* name = text.c_str() + 1;
    require(slFileMessage(100 + static_cast<signed char>(data[0]), name) == 1);
    const std::string tail = std::string(": ") + name;
    require(reader.shown.size() > tail.size() &&
            reader.shown.compare(reader.shown.size() - tail.size(), tail.size(), tail) == 0);
  }
  return 0;
}
