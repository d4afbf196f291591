#pragma once

#include <functional>
#include <string>

#include "tools/view/pictures/picture.h"

namespace zel::view {

/// A picture as the bytes of a WebP file, without loss.
/// @throws std::runtime_error when libwebp refuses it.
[[nodiscard]] std::string webpBytes(const Picture& picture);

/// Pictures shown one after the other, for ever, as the bytes of an animated WebP file.
/// @param frame        gives the pictures, all of one size, from number 0 on.
/// @param milliseconds of one picture.
/// @throws std::runtime_error when libwebp refuses one; what `frame` throws.
[[nodiscard]] std::string animationBytes(const std::function<Picture(int number)>& frame, int count,
                                         int milliseconds);

}  // namespace zel::view
