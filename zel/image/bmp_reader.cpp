#include "zel/image/detail/bmp_reader.h"

#include <algorithm>

#include "zel/core/detail/file_name.h"
#include "zel/core/detail/platform_stream.h"
#include "zel/core/detail/refused_memory.h"

namespace zel {
namespace {

constexpr std::uint16_t kBmpType = 19778;  // the bytes "BM"
constexpr std::int64_t kInfoHeaderBytes = sizeof(BITMAPINFOHEADER);
constexpr std::int64_t kFullTableBytes = 256 * sizeof(RGBQUAD);
constexpr std::int64_t kMaxSide = 65535;
/// Rows are decoded in portions that stay in the processor's cache.
constexpr std::int64_t kChunkBytes = 131072;

bool readExactly(std::FILE* file, void* target, std::int64_t count) {
  const auto bytes = static_cast<std::size_t>(count);
  return std::fread(target, 1, bytes, file) == bytes;
}

/// @return the length of the file, whose position goes back to its start; -1 when it has none.
std::int64_t lengthOf(std::FILE* file) {
  if (seek(file, 0, SEEK_END) != 0) {
    return -1;
  }
  const std::int64_t length = tell(file);
  return seek(file, 0, SEEK_SET) == 0 ? length : -1;
}

/// Bytes of the pixels where the header leaves them out.
std::int64_t impliedBytes(int bitCount, std::int64_t width, std::int64_t rows) {
  const std::int64_t bytesPerPixel = (bitCount + 7) / 8;
  return rows * (bytesPerPixel == 3 ? rgbStride(width) : bytesPerPixel * width);
}

}  // namespace

HeapBlock<unsigned char> heapBytes(std::int64_t count) {
  const auto bytes = static_cast<std::size_t>(std::max<std::int64_t>(count, 1));
  return HeapBlock<unsigned char>(static_cast<unsigned char*>(std::malloc(bytes)));
}

bool BmpReader::open(const char* path) {
  const auto openFile = [path] { return std::fopen(presentFileName(path).c_str(), "rb"); };
  file_.reset(path == nullptr ? nullptr : answerOr<std::FILE*>(nullptr, openFile));
  if (file_ == nullptr) {
    return false;
  }
  std::setvbuf(file_.get(), nullptr, _IONBF, 0);  // all reads are large or few
  return readInfo(lengthOf(file_.get()));
}

bool BmpReader::readInfo(std::int64_t fileBytes) {
  BITMAPFILEHEADER start;
  if (!readExactly(file_.get(), &start, sizeof start) || start.bfType != kBmpType) {
    return false;
  }
  const std::int64_t infoBytes = std::int64_t{start.bfOffBits} - std::int64_t{sizeof start};
  if (infoBytes < kInfoHeaderBytes || start.bfOffBits > fileBytes) {
    return false;
  }
  // Room for every colour that eight bits can name, black where the file has none.
  const std::int64_t room = std::max(infoBytes, kInfoHeaderBytes + kFullTableBytes);
  info_.reset(static_cast<BITMAPINFO*>(std::calloc(1, static_cast<std::size_t>(room))));
  return info_ != nullptr && readExactly(file_.get(), info_.get(), infoBytes) &&
         measureStored(fileBytes - start.bfOffBits);
}

bool BmpReader::measureStored(std::int64_t bytesLeft) {
  const BITMAPINFOHEADER& header = info_->bmiHeader;
  const std::int64_t rows = std::abs(std::int64_t{header.biHeight});
  if (header.biWidth < 1 || header.biWidth > kMaxSide || rows > kMaxSide) {
    return false;
  }
  storedBytes_ = header.biSizeImage != 0 ? header.biSizeImage
                                         : impliedBytes(header.biBitCount, header.biWidth, rows);
  return storedBytes_ <= bytesLeft;
}

HeapBlock<unsigned char> BmpReader::readStored() {
  HeapBlock<unsigned char> stored =
      storedBytes_ <= kMaxPictureBytes ? heapBytes(storedBytes_) : nullptr;
  if (stored != nullptr && !readExactly(file_.get(), stored.get(), storedBytes_)) {
    stored.reset();
  }
  return stored;
}

bool BmpReader::isBlack() const {
  return info_->bmiHeader.biCompression != 0 || !isDecodedDepth(info_->bmiHeader.biBitCount);
}

bool BmpReader::prepareRows() {
  if (isBlack() || rows() == 0) {
    return true;
  }
  const int bitCount = info_->bmiHeader.biBitCount;
  const auto* bytes = reinterpret_cast<const unsigned char*>(info_.get());
  palette_ = packPalette(reinterpret_cast<const RGBQUAD*>(bytes + kInfoHeaderBytes));
  stride_ = storedStride(bitCount, width());
  const std::int64_t lastRowBytes = (std::int64_t{width()} * bitCount + 7) / 8;
  bytesToRead_ = stride_ * (rows() - 1) + lastRowBytes;
  if (bytesToRead_ > storedBytes_) {
    return false;
  }
  chunkRows_ = std::clamp<std::int64_t>(kChunkBytes / stride_, 1, rows());
  rowInChunk_ = chunkRows_;
  chunk_ = heapBytes(chunkRows_ * stride_);
  return chunk_ != nullptr;
}

bool BmpReader::readChunk() {
  const std::int64_t bytes = std::min(chunkRows_ * stride_, bytesToRead_);
  bytesToRead_ -= bytes;
  rowInChunk_ = 0;
  return readExactly(file_.get(), chunk_.get(), bytes);
}

bool BmpReader::nextRow(unsigned char* rgb) {
  const auto pixels = static_cast<std::size_t>(width());
  if (isBlack()) {
    std::fill_n(rgb, 3 * pixels, static_cast<unsigned char>(0));
    return true;
  }
  if (rowInChunk_ == chunkRows_ && !readChunk()) {
    return false;
  }
  decodeBmpRow(info_->bmiHeader.biBitCount, palette_, chunk_.get() + rowInChunk_ * stride_, pixels,
               rgb);
  ++rowInChunk_;
  return true;
}

}  // namespace zel
