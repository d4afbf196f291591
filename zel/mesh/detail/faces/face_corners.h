#pragma once

#include <algorithm>

namespace zel {

/// @return whether two of the corners are equal.
inline bool hasRepeatedCorner(const int* corners, int count) {
  for (int i = 0; i < count; ++i) {
    if (std::find(corners + i + 1, corners + count, corners[i]) != corners + count) {
      return true;
    }
  }
  return false;
}

}  // namespace zel
