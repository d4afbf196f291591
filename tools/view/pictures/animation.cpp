#include "tools/view/pictures/animation.h"

#include <webp/encode.h>
#include <webp/mux.h>

#include <memory>
#include <stdexcept>

namespace zel::view {
namespace {

// Of 100: at this quality a smooth shade shows no blocks.
constexpr float kQuality = 88;

// libwebp's picture, released with the object.
class WebpPicture {
 public:
  explicit WebpPicture(const Picture& picture) {
    if (WebPPictureInit(&picture_) == 0) {
      throw std::runtime_error("libwebp cannot start");
    }
    picture_.width = picture.width;
    picture_.height = picture.height;
    picture_.use_argb = 1;
    if (WebPPictureImportRGBA(&picture_, picture.rgba.data(), picture.width * 4) == 0) {
      throw std::runtime_error("libwebp takes no picture of that size");
    }
  }
  ~WebpPicture() { WebPPictureFree(&picture_); }
  WebpPicture(const WebpPicture&) = delete;
  WebpPicture& operator=(const WebpPicture&) = delete;

  WebPPicture* get() { return &picture_; }

 private:
  WebPPicture picture_{};
};

struct EncoderDeleter {
  void operator()(WebPAnimEncoder* encoder) const { WebPAnimEncoderDelete(encoder); }
};
using Encoder = std::unique_ptr<WebPAnimEncoder, EncoderDeleter>;

void require(int succeeded, const WebPAnimEncoder* encoder) {
  if (succeeded == 0) {
    throw std::runtime_error(WebPAnimEncoderGetError(const_cast<WebPAnimEncoder*>(encoder)));
  }
}

Encoder makeEncoder(const Picture& first) {
  WebPAnimEncoderOptions options;
  if (WebPAnimEncoderOptionsInit(&options) == 0) {
    throw std::runtime_error("libwebp cannot start");
  }
  options.anim_params.loop_count = 0;  // for ever
  Encoder encoder(WebPAnimEncoderNew(first.width, first.height, &options));
  if (encoder == nullptr) {
    throw std::runtime_error("libwebp takes no picture of that size");
  }
  return encoder;
}

}  // namespace

std::string webpBytes(const Picture& picture) {
  std::uint8_t* bytes = nullptr;
  const std::size_t size = WebPEncodeLosslessRGBA(picture.rgba.data(), picture.width,
                                                  picture.height, picture.width * 4, &bytes);
  const std::unique_ptr<std::uint8_t, void (*)(void*)> owner(bytes, WebPFree);
  if (size == 0) {
    throw std::runtime_error("libwebp takes no picture of that size");
  }
  return {reinterpret_cast<const char*>(bytes), size};
}

std::string animationBytes(const std::function<Picture(int)>& frame, int count, int milliseconds) {
  WebPConfig config;
  if (WebPConfigInit(&config) == 0) {
    throw std::runtime_error("libwebp cannot start");
  }
  config.quality = kQuality;
  Encoder encoder;
  for (int number = 0; number < count; ++number) {
    const Picture picture = frame(number);
    if (encoder == nullptr) {
      encoder = makeEncoder(picture);
    }
    WebpPicture converted(picture);
    require(WebPAnimEncoderAdd(encoder.get(), converted.get(), number * milliseconds, &config),
            encoder.get());
  }
  require(WebPAnimEncoderAdd(encoder.get(), nullptr, count * milliseconds, nullptr), encoder.get());
  WebPData data;
  WebPDataInit(&data);
  const std::unique_ptr<WebPData, void (*)(WebPData*)> owner(&data, WebPDataClear);
  require(WebPAnimEncoderAssemble(encoder.get(), &data), encoder.get());
  return {reinterpret_cast<const char*>(data.bytes), data.size};
}

}  // namespace zel::view
