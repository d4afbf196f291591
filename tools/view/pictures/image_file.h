#pragma once

#include <stdexcept>
#include <string>

#include "tools/view/pictures/texture.h"

namespace zel::view {

/// A picture file that is none, is broken or is too large. what() says why.
class ImageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Pictures of more pixels are refused: they would fill 256 MB.
inline constexpr long long kMostPixels = 64LL << 20;

/// Decodes a PNG, JPEG or uncompressed BMP picture; the content tells which it is.
///
/// PNG and JPEG pictures are decoded in a child process with limits on memory and time, so that no
/// file can do harm to this one.
/// @param bytes  the whole file.
/// @return the picture, the bottom row first. @throws ImageError.
[[nodiscard]] TextureImage decodeImage(const std::string& bytes);

/// Reads a picture file. @throws ImageError.
[[nodiscard]] TextureImage readImage(const std::string& file);

}  // namespace zel::view
