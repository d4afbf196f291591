#pragma once

/// @file
/// Argument types of the desktop helpers and the records of a bitmap, with the member names that
/// Windows programs know.
/// On Windows the plain structures are the system's own.

#if defined(_WIN32)
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

#include <cstdint>

#if !defined(_WIN32)
/// A position in pixels, y growing downward.
struct POINT {
  std::int32_t x;
  std::int32_t y;
};

/// A rectangle in pixels; `right` and `bottom` lie just outside it.
struct RECT {
  std::int32_t left;
  std::int32_t top;
  std::int32_t right;
  std::int32_t bottom;
};

#pragma pack(push, 2)
/// The first 14 bytes of a BMP file.
struct BITMAPFILEHEADER {
  std::uint16_t bfType;  ///< 19778, the bytes "BM"
  std::uint32_t bfSize;
  std::uint16_t bfReserved1;
  std::uint16_t bfReserved2;
  std::uint32_t bfOffBits;  ///< offset of the pixels from the start of the file, in bytes
};
#pragma pack(pop)

/// Size and layout of a bitmap.
struct BITMAPINFOHEADER {
  std::uint32_t biSize;  ///< bytes of this record, 40
  std::int32_t biWidth;
  std::int32_t biHeight;  ///< positive: the bottom row is stored first
  std::uint16_t biPlanes;
  std::uint16_t biBitCount;     ///< bits per pixel
  std::uint32_t biCompression;  ///< 0: none
  std::uint32_t biSizeImage;    ///< bytes of the pixels; may be 0 when uncompressed
  std::int32_t biXPelsPerMeter;
  std::int32_t biYPelsPerMeter;
  std::uint32_t biClrUsed;
  std::uint32_t biClrImportant;
};

/// One entry of a bitmap's colour table.
struct RGBQUAD {
  std::uint8_t rgbBlue;
  std::uint8_t rgbGreen;
  std::uint8_t rgbRed;
  std::uint8_t rgbReserved;
};

/// A bitmap's header with the colour table behind it; the table runs on past this record.
struct BITMAPINFO {
  BITMAPINFOHEADER bmiHeader;
  RGBQUAD bmiColors[1];
};
#endif

/// A POINT that can be built in place.
class CPoint : public POINT {
 public:
  CPoint() : POINT{0, 0} {}
  CPoint(int xPixel, int yPixel) : POINT{xPixel, yPixel} {}
  CPoint(const POINT& point) : POINT(point) {}  // NOLINT(google-explicit-constructor)
};

static_assert(sizeof(POINT) == 8 && sizeof(CPoint) == 8 && sizeof(RECT) == 16);
static_assert(sizeof(BITMAPFILEHEADER) == 14 && sizeof(BITMAPINFO) == 44);
