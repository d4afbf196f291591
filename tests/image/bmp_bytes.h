#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace zel::test {

/// The parts of a BMP file, to be put together rightly or wrongly.
struct BmpParts {
  std::int32_t width = 1;
  std::int32_t height = 1;
  std::uint16_t bitCount = 24;
  std::string pixels{};
  std::vector<std::uint32_t> table{};  ///< 0x00RRGGBB, stored as blue, green, red, 0
  std::uint32_t sizeImage = 0;
  std::uint32_t compression = 0;
  std::uint32_t infoSize = 40;
  std::string extraHeader{};  ///< between the colour table and the pixels

  [[nodiscard]] std::string bytes() const {
    std::string file = "BM";
    const std::uint32_t offset =
        static_cast<std::uint32_t>(54 + 4 * table.size() + extraHeader.size());
    put(file, offset + static_cast<std::uint32_t>(pixels.size()));
    put(file, std::uint32_t{0});
    put(file, offset);
    put(file, infoSize);
    put(file, width);
    put(file, height);
    put(file, std::uint16_t{1});
    put(file, bitCount);
    put(file, compression);
    put(file, sizeImage);
    file.append(16, '\0');
    for (const std::uint32_t colour : table) {
      put(file, colour);
    }
    return file + extraHeader + pixels;
  }

 private:
  template <class T>
  static void put(std::string& file, T value) {
    file.append(reinterpret_cast<const char*>(&value), sizeof value);
  }
};

template <class T>
T readAt(const std::string& file, std::size_t offset) {
  T value;
  std::memcpy(&value, file.data() + offset, sizeof value);
  return value;
}

template <class T>
void writeAt(std::string& file, std::size_t offset, T value) {
  std::memcpy(file.data() + offset, &value, sizeof value);
}

/// Small valid pictures, one of every decoded depth, and a compressed one.
inline std::vector<BmpParts> sampleBmps() {
  const auto ramp = [](std::size_t count) {
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i) {
      bytes += static_cast<char>(37 * i + 11);
    }
    return bytes;
  };
  const auto table = [](std::uint32_t count) {
    std::vector<std::uint32_t> colours;
    for (std::uint32_t i = 0; i < count; ++i) {
      colours.push_back(0x010203U * i + 0x100U * (255U - i));
    }
    return colours;
  };
  std::vector<BmpParts> samples;
  samples.push_back({.width = 5, .height = 3, .bitCount = 24, .pixels = ramp(48)});
  samples.push_back(
      {.width = 7, .height = 4, .bitCount = 8, .pixels = ramp(28), .table = table(256)});
  samples.push_back({.width = 9,
                     .height = 2,
                     .bitCount = 4,
                     .pixels = ramp(16),
                     .table = table(16),
                     .sizeImage = 16});
  samples.push_back({.width = 19,
                     .height = 3,
                     .bitCount = 1,
                     .pixels = ramp(12),
                     .table = table(2),
                     .sizeImage = 12});
  samples.push_back({.width = 6,
                     .height = 6,
                     .bitCount = 8,
                     .pixels = ramp(20),
                     .table = table(256),
                     .sizeImage = 20,
                     .compression = 1});
  return samples;
}

}  // namespace zel::test
