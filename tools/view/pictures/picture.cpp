#include "tools/view/pictures/picture.h"

#include <png.h>

#include <algorithm>
#include <stdexcept>

namespace zel::view {
namespace {

constexpr int kChannels = 4;

[[noreturn]] void refuse(png_structp /*writer*/, png_const_charp message) {
  throw std::runtime_error(message);
}

void ignore(png_structp /*writer*/, png_const_charp /*warning*/) {}

void append(png_structp writer, png_bytep bytes, std::size_t count) {
  auto* const target = static_cast<std::string*>(png_get_io_ptr(writer));
  target->append(reinterpret_cast<const char*>(bytes), count);
}

void flushNothing(png_structp /*writer*/) {}

// libpng's pair of writer and header, released together.
class PngWriter {
 public:
  explicit PngWriter(std::string& target)
      : writer_(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, refuse, ignore)),
        info_(writer_ != nullptr ? png_create_info_struct(writer_) : nullptr) {
    if (info_ == nullptr) {
      png_destroy_write_struct(&writer_, nullptr);
      throw std::runtime_error("libpng cannot start");
    }
    png_set_write_fn(writer_, &target, append, flushNothing);
  }
  ~PngWriter() { png_destroy_write_struct(&writer_, &info_); }
  PngWriter(const PngWriter&) = delete;
  PngWriter& operator=(const PngWriter&) = delete;

  void write(const Picture& picture) {
    png_set_IHDR(writer_, info_, static_cast<png_uint_32>(picture.width),
                 static_cast<png_uint_32>(picture.height), 8, PNG_COLOR_TYPE_RGBA,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(writer_, info_);
    const std::size_t rowBytes = static_cast<std::size_t>(picture.width) * kChannels;
    for (std::size_t row = 0; row < static_cast<std::size_t>(picture.height); ++row) {
      png_write_row(writer_, &picture.rgba[row * rowBytes]);
    }
    png_write_end(writer_, info_);
  }

 private:
  png_structp writer_;
  png_infop info_;
};

std::uint8_t quotient(unsigned sum, unsigned count) {
  return static_cast<std::uint8_t>(count == 0 ? 0 : (sum + count / 2) / count);
}

// Colours count by their alpha, so that a transparent ground does not tint the edges before it.
Colour meanOfBlock(const Picture& picture, int left, int top, int side) {
  unsigned red = 0;
  unsigned green = 0;
  unsigned blue = 0;
  unsigned alpha = 0;
  for (int y = top; y < top + side; ++y) {
    for (int x = left; x < left + side; ++x) {
      const Colour sample = picture.at(x, y);
      red += unsigned{sample.red} * sample.alpha;
      green += unsigned{sample.green} * sample.alpha;
      blue += unsigned{sample.blue} * sample.alpha;
      alpha += sample.alpha;
    }
  }
  const auto samples = static_cast<unsigned>(side * side);
  return {quotient(red, alpha), quotient(green, alpha), quotient(blue, alpha),
          quotient(alpha, samples)};
}

}  // namespace

Colour Picture::at(int x, int y) const {
  const std::uint8_t* pixel = &rgba[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                                     static_cast<std::size_t>(x)) *
                                    kChannels];
  return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

Picture shrunk(const Picture& picture, int factor) {
  Picture small{picture.width / factor, picture.height / factor, {}};
  small.rgba.reserve(static_cast<std::size_t>(small.width) *
                     static_cast<std::size_t>(small.height) * kChannels);
  for (int y = 0; y < small.height; ++y) {
    for (int x = 0; x < small.width; ++x) {
      const Colour mean = meanOfBlock(picture, x * factor, y * factor, factor);
      small.rgba.insert(small.rgba.end(), {mean.red, mean.green, mean.blue, mean.alpha});
    }
  }
  return small;
}

void paste(Picture& target, const Picture& source, int left, int top) {
  const auto mixed = [](unsigned below, unsigned above, unsigned alpha) {
    return static_cast<std::uint8_t>((above * alpha + below * (255 - alpha) + 127) / 255);
  };
  for (int y = std::max(0, -top); y < std::min(source.height, target.height - top); ++y) {
    for (int x = std::max(0, -left); x < std::min(source.width, target.width - left); ++x) {
      const Colour above = source.at(x, y);
      const Colour below = target.at(x + left, y + top);
      std::uint8_t* const pixel =
          &target.rgba[(static_cast<std::size_t>(y + top) * static_cast<std::size_t>(target.width) +
                        static_cast<std::size_t>(x + left)) *
                       kChannels];
      // Over a transparent ground the colours stay clean.
      const unsigned cover = below.alpha == 0 ? 255U : above.alpha;
      pixel[0] = mixed(below.red, above.red, cover);
      pixel[1] = mixed(below.green, above.green, cover);
      pixel[2] = mixed(below.blue, above.blue, cover);
      pixel[3] = mixed(below.alpha, 255, above.alpha);
    }
  }
}

std::string pngBytes(const Picture& picture) {
  std::string bytes;
  PngWriter(bytes).write(picture);
  return bytes;
}

}  // namespace zel::view
