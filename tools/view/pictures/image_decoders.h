#pragma once

#include <string>

#include "tools/view/pictures/texture.h"

// What image_file.h puts into a process of its own.
namespace zel::view {

/// @throws ImageError when a picture of these sides is empty or has more than kMostPixels.
void checkImageSize(unsigned long width, unsigned long height);

[[nodiscard]] bool isPng(const std::string& bytes);
[[nodiscard]] bool isJpeg(const std::string& bytes);

/// @return the picture, the bottom row first. @throws ImageError.
[[nodiscard]] TextureImage decodePng(const std::string& bytes);
[[nodiscard]] TextureImage decodeJpeg(const std::string& bytes);

}  // namespace zel::view
