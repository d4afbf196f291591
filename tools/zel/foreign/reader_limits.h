#pragma once

#include <cstdint>
#include <string>

namespace zel::program {

/// What a reading process may use.
struct ReaderLimits {
  std::uint64_t memory = 0;         ///< bytes of address space
  std::uint64_t processorTime = 0;  ///< seconds
};

/// The limits for a file: 512 MiB and 64 times its unpacked size, though no more than the machine
/// has; 10 s and 5 s per MiB. The content of a packed file (zip, gzip) counts as ten times the
/// file.
[[nodiscard]] ReaderLimits limitsFor(const std::string& path, std::uint64_t size);

}  // namespace zel::program
