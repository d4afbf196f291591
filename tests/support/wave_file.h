#pragma once

#include <cstdint>
#include <string>

#include "support/bytes.h"

namespace zel::test {

/// A sound file of 8-bit samples of one channel; silence is 0x80.
inline std::string waveFile(std::uint32_t samplesPerSecond, const std::string& samples) {
  const auto size = static_cast<std::uint32_t>(samples.size());
  const std::uint16_t one = 1;
  std::string bytes = "RIFF";
  appendNumbers(bytes, 36 + size);
  bytes += "WAVEfmt ";
  const std::uint32_t rate = samplesPerSecond;  // and bytes a second
  appendNumbers(bytes, std::uint32_t{16}, one, one, rate, rate, one, std::uint16_t{8});
  bytes += "data";
  appendNumbers(bytes, size);
  return bytes + samples;
}

}  // namespace zel::test
