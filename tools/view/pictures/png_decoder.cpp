#include <png.h>

#include <cstring>

#include "tools/view/pictures/image_decoders.h"
#include "tools/view/pictures/image_file.h"

namespace zel::view {
namespace {

// What libpng may take for one chunk that it keeps, such as a colour profile.
constexpr png_alloc_size_t kMostChunkBytes = 16U << 20;

[[noreturn]] void refuse(png_structp /*reader*/, png_const_charp message) {
  throw ImageError(message);
}

void ignore(png_structp /*reader*/, png_const_charp /*warning*/) {}

struct Source {
  const std::string& bytes;
  std::size_t place;
};

void feed(png_structp reader, png_bytep target, std::size_t count) {
  Source& source = *static_cast<Source*>(png_get_io_ptr(reader));
  if (count > source.bytes.size() - source.place) {
    png_error(reader, "the file ends too early");
  }
  std::memcpy(target, source.bytes.data() + source.place, count);
  source.place += count;
}

class PngReader {
 public:
  explicit PngReader(const std::string& bytes)
      : source_{bytes, 0},
        reader_(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, refuse, ignore)),
        info_(reader_ != nullptr ? png_create_info_struct(reader_) : nullptr) {
    if (info_ == nullptr) {
      png_destroy_read_struct(&reader_, nullptr, nullptr);
      throw ImageError("libpng cannot start");
    }
    png_set_read_fn(reader_, &source_, feed);
    png_set_chunk_malloc_max(reader_, kMostChunkBytes);
  }
  ~PngReader() { png_destroy_read_struct(&reader_, &info_, nullptr); }
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;

  TextureImage read() {
    png_read_info(reader_, info_);
    const png_uint_32 width = png_get_image_width(reader_, info_);
    const png_uint_32 height = png_get_image_height(reader_, info_);
    checkImageSize(width, height);
    // Whatever the file holds, eight bits of red, green, blue and alpha come out.
    png_set_expand(reader_);
    png_set_scale_16(reader_);
    png_set_gray_to_rgb(reader_);
    png_set_add_alpha(reader_, 0xFF, PNG_FILLER_AFTER);
    const int passes = png_set_interlace_handling(reader_);
    png_read_update_info(reader_, info_);
    TextureImage image{static_cast<int>(width), static_cast<int>(height), {}};
    const std::size_t rowBytes = std::size_t{width} * 4;
    if (png_get_rowbytes(reader_, info_) != rowBytes) {
      throw ImageError("libpng offers no colours");
    }
    image.rgba.resize(rowBytes * height);
    for (int pass = 0; pass < passes; ++pass) {
      for (std::size_t row = height; row-- > 0;) {
        png_read_row(reader_, &image.rgba[row * rowBytes], nullptr);
      }
    }
    return image;
  }

 private:
  Source source_;
  png_structp reader_;
  png_infop info_;
};

}  // namespace

bool isPng(const std::string& bytes) {
  return bytes.size() >= 8 &&
         png_sig_cmp(reinterpret_cast<png_const_bytep>(bytes.data()), 0, 8) == 0;
}

TextureImage decodePng(const std::string& bytes) { return PngReader(bytes).read(); }

}  // namespace zel::view
