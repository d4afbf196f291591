#pragma once

#include <cstdint>
#include <cstring>
#include <string>

namespace zel::test {

/// Appends numbers, each in its own width, lowest byte first.
template <class... Number>
void appendNumbers(std::string& bytes, Number... numbers) {
  (bytes.append(reinterpret_cast<const char*>(&numbers), sizeof numbers), ...);
}

template <class Number>
Number readAt(const std::string& bytes, std::size_t offset) {
  Number value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

template <class Number>
void writeAt(std::string& bytes, std::size_t offset, Number value) {
  std::memcpy(bytes.data() + offset, &value, sizeof value);
}

}  // namespace zel::test
