#pragma once

#include <png.h>

#include <string>
#include <vector>

namespace zel::test {

/// A picture of `width` x `height` pixels of four bytes, without any where it could not be read.
struct ReadPng {
  unsigned width = 0;
  unsigned height = 0;
  std::vector<unsigned char> rgba;
};

inline ReadPng readPng(const std::string& bytes) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  ReadPng picture;
  if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) != 0) {
    image.format = PNG_FORMAT_RGBA;
    picture = {image.width, image.height, std::vector<unsigned char>(PNG_IMAGE_SIZE(image))};
    if (png_image_finish_read(&image, nullptr, picture.rgba.data(), 0, nullptr) == 0) {
      picture = {};
    }
  }
  return picture;
}

}  // namespace zel::test
