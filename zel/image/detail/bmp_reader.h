#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "zel/core/desktop_types.h"
#include "zel/image/detail/bmp_rows.h"

namespace zel {

struct HeapRelease {
  void operator()(void* block) const { std::free(block); }
};
struct FileRelease {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
/// A block of the runtime heap, which callers of the library release with std::free().
template <class T>
using HeapBlock = std::unique_ptr<T, HeapRelease>;

/// @param count bytes wanted; 0 yields a block of 1 byte.
/// @return null when the heap is exhausted.
HeapBlock<unsigned char> heapBytes(std::int64_t count);

/// No block that the loader hands out is larger.
inline constexpr std::int64_t kMaxPictureBytes = std::int64_t{512} << 20U;

/// A BMP file whose header has been checked against the bytes that are really there. After
/// open(), either readStored() once, or prepareRows() and then nextRow() for each row.
class BmpReader {
 public:
  /// @return false when the file is missing, no BMP file, cut short or beyond the limits.
  bool open(const char* path);

  [[nodiscard]] int width() const { return info_->bmiHeader.biWidth; }
  /// Height as stored; a picture has no rows below 1.
  [[nodiscard]] int height() const { return info_->bmiHeader.biHeight; }
  [[nodiscard]] std::int64_t rgbBytes() const { return rgbStride(width()) * rows(); }

  /// @return the pixels as stored; null when they cannot be had.
  HeapBlock<unsigned char> readStored();

  /// @return false when the stored pixels are too few for the picture, or memory is.
  bool prepareRows();
  /// Decodes the next row, bottom row first. To be called at most height() times.
  /// @param rgb 3 * width() bytes.
  /// @return false when the file ends early.
  bool nextRow(unsigned char* rgb);

  BITMAPINFO* releaseInfo() { return info_.release(); }

 private:
  bool readInfo(std::int64_t fileBytes);
  bool measureStored(std::int64_t bytesLeft);
  bool readChunk();
  [[nodiscard]] std::int64_t rows() const { return height() > 0 ? height() : 0; }
  [[nodiscard]] bool isBlack() const;

  std::unique_ptr<std::FILE, FileRelease> file_;
  HeapBlock<BITMAPINFO> info_;
  std::int64_t storedBytes_ = 0;

  BmpPalette palette_{};
  HeapBlock<unsigned char> chunk_;
  std::int64_t stride_ = 0;       ///< bytes from one stored row to the next
  std::int64_t bytesToRead_ = 0;  ///< of the rows not yet in a chunk
  std::int64_t chunkRows_ = 0;    ///< rows that fit into the chunk
  std::int64_t rowInChunk_ = 0;
};

}  // namespace zel
