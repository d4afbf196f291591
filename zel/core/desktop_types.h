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

#include "zel/core/api.h"

#if !defined(_WIN32)
/// A position in pixels, y growing downward.
struct POINT {
  std::int32_t x;  ///< from the left edge, in pixels
  std::int32_t y;  ///< from the upper edge, in pixels
};

/// A rectangle in pixels; `right` and `bottom` lie just outside it.
struct RECT {
  std::int32_t left;    ///< first column inside
  std::int32_t top;     ///< first row inside
  std::int32_t right;   ///< first column beyond
  std::int32_t bottom;  ///< first row beyond
};

#pragma pack(push, 2)
/// The first 14 bytes of a BMP file.
struct BITMAPFILEHEADER {
  std::uint16_t bfType;       ///< 19778, the bytes "BM"
  std::uint32_t bfSize;       ///< bytes of the whole file; the loader does not look at it
  std::uint16_t bfReserved1;  ///< not used, 0
  std::uint16_t bfReserved2;  ///< not used, 0
  std::uint32_t bfOffBits;    ///< offset of the pixels from the start of the file, in bytes
};
#pragma pack(pop)

/// Size and layout of a bitmap.
struct BITMAPINFOHEADER {
  std::uint32_t biSize;          ///< bytes of this record, 40
  std::int32_t biWidth;          ///< pixels in a row
  std::int32_t biHeight;         ///< positive: the bottom row is stored first
  std::uint16_t biPlanes;        ///< colour planes, 1
  std::uint16_t biBitCount;      ///< bits per pixel
  std::uint32_t biCompression;   ///< 0: none
  std::uint32_t biSizeImage;     ///< bytes of the pixels; may be 0 when uncompressed
  std::int32_t biXPelsPerMeter;  ///< pixels in a metre along a row; not used here
  std::int32_t biYPelsPerMeter;  ///< pixels in a metre along a column; not used here
  std::uint32_t biClrUsed;       ///< entries of the colour table, 0 for all; not used here
  std::uint32_t biClrImportant;  ///< entries that matter, 0 for all; not used here
};

/// One entry of a bitmap's colour table.
struct RGBQUAD {
  std::uint8_t rgbBlue;      ///< 0 to 255
  std::uint8_t rgbGreen;     ///< 0 to 255
  std::uint8_t rgbRed;       ///< 0 to 255
  std::uint8_t rgbReserved;  ///< not used, 0
};

/// A bitmap's header with the colour table behind it; the table runs on past this record.
struct BITMAPINFO {
  BITMAPINFOHEADER bmiHeader;  ///< size and layout
  RGBQUAD bmiColors[1];        ///< the first entry of the colour table; the others follow in memory
};
#endif

/// A POINT that can be built in place.
class CPoint : public POINT {
 public:
  CPoint() : POINT{0, 0} {}
  /// The position at column `xPixel`, row `yPixel`.
  CPoint(int xPixel, int yPixel) : POINT{xPixel, yPixel} {}
  /// The same position; an implicit conversion.
  CPoint(const POINT& point) : POINT(point) {}  // NOLINT(google-explicit-constructor)
};

static_assert(sizeof(POINT) == 8 && sizeof(CPoint) == 8 && sizeof(RECT) == 16);
static_assert(sizeof(BITMAPFILEHEADER) == 14 && sizeof(BITMAPINFO) == 44);

/// A window or control as the helpers see it. The application derives from this class and
/// answers for its own windows.
class ZEL_API CWnd {
 public:
  virtual ~CWnd();
  /// Writes the client rectangle; its `left` and `top` are 0.
  virtual void GetClientRect(RECT* rect) const = 0;
  /// Copies the text, zero-terminated and cut to `capacity` - 1 characters.
  /// @return number of characters copied.
  virtual int GetWindowText(char* text, int capacity) const = 0;
  /// Replaces the text. @param text zero-terminated.
  virtual void SetWindowText(const char* text) = 0;
};

/// One transfer between the fields of a dialog and the application's variables.
class ZEL_API CDataExchange {
 public:
  /// @param saving true: from the fields to the variables; false: the other way.
  explicit CDataExchange(bool saving) : m_bSaveAndValidate(saving) {}
  virtual ~CDataExchange();
  /// Makes an edit control ready for the transfer.
  /// @return the control, owned by the dialog; null when there is none of that identifier.
  virtual CWnd* PrepareEditCtrl(int control) = 0;
  /// Ends the transfer because the last prepared field holds no valid value. May throw; when it
  /// returns, the helper leaves the variable as it was.
  virtual void Fail() = 0;

  bool m_bSaveAndValidate;  ///< true: from the fields to the variables; false: the other way
};
