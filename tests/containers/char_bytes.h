#pragma once

#include <string>

#include "zel/containers/char_arr.h"

namespace zel::test {

inline CharArr bufferOf(const std::string& bytes) {
  CharArr buffer;
  buffer.SetValueM(static_cast<int>(bytes.size()), bytes.data());
  return buffer;
}

inline std::string contentOf(const CharArr& buffer) {
  return {buffer.GetContentConstPtrM(), static_cast<std::size_t>(buffer.GetBoundM())};
}

}  // namespace zel::test
