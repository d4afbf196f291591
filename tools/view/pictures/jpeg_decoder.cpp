#include <algorithm>
#include <array>
#include <cstdio>
// libjpeg's header needs what <cstdio> declares.
#include <jpeglib.h>

#include "tools/view/pictures/image_decoders.h"
#include "tools/view/pictures/image_file.h"

namespace zel::view {
namespace {

// A progressive file may bring the picture in many scans, each as costly as a whole picture.
constexpr int kMostScans = 200;
constexpr long kMostBytes = 512L << 20;

[[noreturn]] void refuse(j_common_ptr decoder) {
  std::array<char, JMSG_LENGTH_MAX> text{};
  decoder->err->format_message(decoder, text.data());
  throw ImageError(text.data());
}

// Zero and a warning: data that ends early or is broken would become grey or garbage.
void noteMessage(j_common_ptr decoder, int level) {
  if (level < 0) {
    refuse(decoder);
  }
}

void watchScans(j_common_ptr decoder) {
  if (reinterpret_cast<j_decompress_ptr>(decoder)->input_scan_number > kMostScans) {
    throw ImageError("too many scans");
  }
}

class JpegReader {
 public:
  explicit JpegReader(const std::string& bytes) {
    decoder_.err = jpeg_std_error(&errors_);
    errors_.error_exit = refuse;
    errors_.emit_message = noteMessage;
    jpeg_create_decompress(&decoder_);
    progress_.progress_monitor = watchScans;
    decoder_.progress = &progress_;
    decoder_.mem->max_memory_to_use = kMostBytes;
    jpeg_mem_src(&decoder_, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  }
  ~JpegReader() { jpeg_destroy_decompress(&decoder_); }
  JpegReader(const JpegReader&) = delete;
  JpegReader& operator=(const JpegReader&) = delete;

  TextureImage read() {
    jpeg_read_header(&decoder_, TRUE);
    checkImageSize(decoder_.image_width, decoder_.image_height);
    decoder_.out_color_space = JCS_EXT_RGBA;
    jpeg_start_decompress(&decoder_);
    TextureImage image{
        static_cast<int>(decoder_.output_width), static_cast<int>(decoder_.output_height), {}};
    const std::size_t rowBytes = std::size_t{decoder_.output_width} * 4;
    image.rgba.resize(rowBytes * decoder_.output_height);
    while (decoder_.output_scanline < decoder_.output_height) {
      const std::size_t fromBelow = decoder_.output_height - 1 - decoder_.output_scanline;
      JSAMPROW row = &image.rgba[fromBelow * rowBytes];
      jpeg_read_scanlines(&decoder_, &row, 1);
    }
    jpeg_finish_decompress(&decoder_);
    return image;
  }

 private:
  jpeg_error_mgr errors_{};
  jpeg_progress_mgr progress_{};
  jpeg_decompress_struct decoder_{};
};

}  // namespace

bool isJpeg(const std::string& bytes) { return bytes.rfind("\xFF\xD8\xFF", 0) == 0; }

TextureImage decodeJpeg(const std::string& bytes) { return JpegReader(bytes).read(); }

}  // namespace zel::view
