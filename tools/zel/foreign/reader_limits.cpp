#include "tools/zel/foreign/reader_limits.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <string_view>

namespace zel::program {

namespace {

constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20;
/// Text of numbers packs to a fifth; a file that packs to less than a tenth mostly wants to do
/// harm.
constexpr std::uint64_t kUnpacking = 10;

bool isPacked(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  char start[4] = {};
  file.read(start, sizeof(start));
  const std::string_view mark(start, static_cast<std::size_t>(file.gcount()));
  return mark.starts_with("PK\3\4") || mark.starts_with("\x1f\x8b");
}

std::uint64_t machineMemory() {
  const long pages = sysconf(_SC_PHYS_PAGES);
  const long size = sysconf(_SC_PAGESIZE);
  return pages > 0 && size > 0
             ? static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(size)
             : ~std::uint64_t{0};
}

}  // namespace

ReaderLimits limitsFor(const std::string& path, std::uint64_t size) {
  constexpr std::uint64_t kLeast = 512 * kMebibyte;
  constexpr std::uint64_t kPerByte = 64;
  constexpr std::uint64_t kLargest = std::uint64_t{1} << 50;
  const std::uint64_t unpacked = std::min(size, kLargest) * (isPacked(path) ? kUnpacking : 1);
  return {std::max(kLeast, std::min(kLeast + kPerByte * unpacked, machineMemory())),
          10 + 5 * unpacked / kMebibyte};
}

}  // namespace zel::program
