#include "tools/view/pictures/image_file.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <memory>
#include <new>
#include <sstream>

#include "tools/view/pictures/image_decoders.h"
#include "zel/core/memory.h"
#include "zel/image/bmp.h"

namespace zel::view {
namespace {

constexpr rlim_t kMostSeconds = 20;
// Beside what the process has when it starts the child: picture, rows, tables.
constexpr rlim_t kMostBytes = rlim_t{1} << 30;
constexpr std::uintmax_t kMostFileBytes = std::uintmax_t{256} << 20;
constexpr unsigned long kLongestSide = 65535;

// One end of a pipe.
class PipeEnd {
 public:
  explicit PipeEnd(int descriptor) : descriptor_(descriptor) {}
  ~PipeEnd() { close(); }
  PipeEnd(const PipeEnd&) = delete;
  PipeEnd& operator=(const PipeEnd&) = delete;

  void close() {
    if (descriptor_ >= 0) {
      ::close(descriptor_);
    }
    descriptor_ = -1;
  }
  // @return false at the end or on an error.
  bool readAll(void* target, std::size_t count) const {
    auto* place = static_cast<char*>(target);
    while (count > 0) {
      const ssize_t got = ::read(descriptor_, place, count);
      if (got <= 0 && !(got < 0 && errno == EINTR)) {
        return false;
      }
      place += std::max<ssize_t>(got, 0);
      count -= static_cast<std::size_t>(std::max<ssize_t>(got, 0));
    }
    return true;
  }
  bool writeAll(const void* source, std::size_t count) const {
    const auto* place = static_cast<const char*>(source);
    while (count > 0) {
      const ssize_t put = ::write(descriptor_, place, count);
      if (put < 0 && errno != EINTR) {
        return false;
      }
      place += std::max<ssize_t>(put, 0);
      count -= static_cast<std::size_t>(std::max<ssize_t>(put, 0));
    }
    return true;
  }

 private:
  int descriptor_;
};

// What the child sends first: then follow the pixels, or the text of an error.
struct Reply {
  int width;
  int height;
  std::size_t bytes;
};

void limitSelf() {
  const auto limit = [](auto resource, rlim_t most) {
    const rlimit both{most, most};
    setrlimit(resource, &both);
  };
  limit(RLIMIT_CPU, kMostSeconds);
  limit(RLIMIT_FSIZE, 0);
  limit(RLIMIT_CORE, 0);
#ifndef __SANITIZE_ADDRESS__  // whose shadow memory is beyond any limit
  std::ifstream sizes("/proc/self/statm");
  rlim_t pages = 0;
  if (sizes >> pages) {
    limit(RLIMIT_AS, pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + kMostBytes);
  }
#endif
}

[[noreturn]] void serveAsChild(const std::function<TextureImage()>& decode, const PipeEnd& out) {
  Reply reply{0, 0, 0};
  std::string problem = "out of memory";
  try {
    limitSelf();
    const TextureImage image = decode();
    reply = {image.width, image.height, image.rgba.size()};
    const bool isSent =
        out.writeAll(&reply, sizeof reply) && out.writeAll(image.rgba.data(), image.rgba.size());
    _exit(isSent ? 0 : 1);
  } catch (const ImageError& error) {
    problem = error.what();
  } catch (const std::bad_alloc&) {
    // Said already.
  }
  reply.bytes = std::min<std::size_t>(problem.size(), 500);
  out.writeAll(&reply, sizeof reply);
  out.writeAll(problem.data(), reply.bytes);
  _exit(1);
}

TextureImage takeReply(const PipeEnd& in) {
  Reply reply{};
  if (!in.readAll(&reply, sizeof reply)) {
    throw ImageError("its decoder came to no end");
  }
  if (reply.width <= 0) {
    std::string problem(std::min<std::size_t>(reply.bytes, 500), ' ');
    in.readAll(problem.data(), problem.size());
    throw ImageError(problem);
  }
  checkImageSize(static_cast<unsigned long>(reply.width), static_cast<unsigned long>(reply.height));
  TextureImage image{reply.width, reply.height, {}};
  image.rgba.resize(static_cast<std::size_t>(reply.width) * static_cast<std::size_t>(reply.height) *
                    4);
  if (!in.readAll(image.rgba.data(), image.rgba.size())) {
    throw ImageError("its decoder came to no end");
  }
  return image;
}

// Runs a decoder in a child process.
TextureImage decodeApart(const std::function<TextureImage()>& decode) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw ImageError(std::string("no pipe to a decoder: ") + std::strerror(errno));
  }
  PipeEnd in(ends[0]);
  PipeEnd out(ends[1]);
  const pid_t child = fork();
  if (child < 0) {
    throw ImageError(std::string("no process for a decoder: ") + std::strerror(errno));
  }
  if (child == 0) {
    in.close();
    serveAsChild(decode, out);
  }
  out.close();
  // Waited for in every case, after the pipe is closed, so that it cannot go on writing.
  const auto wait = [&in](const pid_t* process) {
    in.close();
    while (waitpid(*process, nullptr, 0) < 0 && errno == EINTR) {
    }
  };
  const std::unique_ptr<const pid_t, decltype(wait)> waiting(&child, wait);
  return takeReply(in);
}

TextureImage decodeBmp(const std::string& file) {
  TextureImage image;
  unsigned char(*texels)[4] = nullptr;
  const int loaded = slLoadBmpPicture(file.c_str(), &image.width, &image.height, &texels);
  const std::unique_ptr<void, void (*)(void*)> owner(texels, slFree);
  if (loaded != 1) {
    throw ImageError("not a PNG, JPEG or uncompressed BMP picture");
  }
  checkImageSize(static_cast<unsigned long>(std::max(image.width, 0)),
                 static_cast<unsigned long>(std::max(image.height, 0)));
  const std::size_t bytes =
      static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height) * 4;
  image.rgba.assign(&texels[0][0], &texels[0][0] + bytes);
  return image;
}

}  // namespace

void checkImageSize(unsigned long width, unsigned long height) {
  if (width < 1 || height < 1) {
    throw ImageError("the picture is empty");
  }
  if (width > kLongestSide || height > kLongestSide ||
      width * height > static_cast<unsigned long>(kMostPixels)) {
    throw ImageError("the picture of " + std::to_string(width) + " x " + std::to_string(height) +
                     " pixels is too large");
  }
}

TextureImage decodeImage(const std::string& bytes) {
  if (isPng(bytes)) {
    return decodeApart([&bytes] { return decodePng(bytes); });
  }
  if (isJpeg(bytes)) {
    return decodeApart([&bytes] { return decodeJpeg(bytes); });
  }
  throw ImageError("not a PNG or JPEG picture");
}

TextureImage readImage(const std::string& file) {
  std::ifstream in(file, std::ios::binary | std::ios::ate);
  const std::streamoff size = in ? static_cast<std::streamoff>(in.tellg()) : -1;
  if (size < 0) {
    throw ImageError(std::strerror(errno != 0 ? errno : EIO));
  }
  if (static_cast<std::uintmax_t>(size) > kMostFileBytes) {
    throw ImageError("the file is too large for a picture");
  }
  std::string bytes(static_cast<std::size_t>(size), '\0');
  in.seekg(0);
  in.read(bytes.data(), size);
  if (in.gcount() != size) {
    throw ImageError("the file cannot be read to its end");
  }
  return isPng(bytes) || isJpeg(bytes) ? decodeImage(bytes) : decodeBmp(file);
}

}  // namespace zel::view
