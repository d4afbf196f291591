#pragma once

#include <algorithm>

#include "tools/view/pictures/picture.h"

namespace zel::test {

struct Blob {
  int count = 0;
  double x = 0;
  double y = 0;
};

/// The pixels of a kind and their mean position.
template <class Kind>
Blob blobOf(const view::Picture& picture, Kind isOfKind) {
  Blob blob;
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      if (isOfKind(picture.at(x, y))) {
        ++blob.count;
        blob.x += x;
        blob.y += y;
      }
    }
  }
  blob.x /= std::max(blob.count, 1);
  blob.y /= std::max(blob.count, 1);
  return blob;
}

}  // namespace zel::test
