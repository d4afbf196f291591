#pragma once

/// @file
/// Uncompressed BMP pictures of 1, 4, 8 or 24 bits per pixel, loaded into RGB or RGBA bytes.
///
/// Rows come in the order of the file: the first row is the bottom of the picture. Any file gives
/// a result or 0; what a broken file declares is checked against the bytes it really has before
/// memory is taken. Refused are pictures with a side above 65535, a width below 1, or a result of
/// more than 512 MiB, and files that end before their colour table or their pixels do.
///
/// What the loader does differently from other readers of this format, by contract:
/// - rows of 1, 4 and 8 bits are read without the padding to four bytes that files carry, so such
///   pictures are right when the width fills whole groups of four bytes;
/// - of a 1-bit row only the first pixel of each byte is looked up by its own bit; pixel k of a
///   byte has the colour index (byte & 0xF0) >> (7 - k);
/// - the colour table is taken to follow the first 40 bytes of the info header, whatever size
///   that header gives itself; colours that the table lacks are black;
/// - a header that leaves biSizeImage 0 implies whole bytes for every pixel, so a picture of 1 or
///   4 bits must state its size or is refused as cut short;
/// - compressed pictures and other depths come out black;
/// - a height below 1 (rows from the top down) gives a picture without rows.

#include "zel/core/api.h"
#include "zel/core/desktop_types.h"

/// Loads a BMP file as one block of pixels together with its header and colour table.
/// @param path   file name; null is refused.
/// @param[out] pixels `toRgb` 1: biHeight rows of red, green, blue bytes, each row
///               (3 biWidth + 3) / 4 * 4 bytes long and zero behind its last pixel. Otherwise the
///               bytes as stored: biSizeImage of them, or when that is 0 the bytes of |biHeight|
///               rows, padded to four bytes at 17 to 24 bits and unpadded elsewhere. Null when
///               the result is 0.
/// @param[out] info header and colour table, all bytes between file header and pixels, at least
///               room for 256 colours. Null when the result is 0.
/// @param toRgb  1 converts; anything else leaves the bytes alone.
/// @return 1, or 0 when the file cannot be opened, is no BMP file, is cut short or is refused.
///         When there is no memory for the converted picture, a line on standard output says so.
/// Both blocks are the caller's, to be released with std::free().
ZEL_API int slLoadBMP(const char* path, unsigned char** pixels, BITMAPINFO** info, char toRgb);

/// Loads a BMP file as RGBA pixels with alpha 255.
/// @param[out] w, h  size in pixels as the file states it; untouched when the file is refused.
/// @param[out] rgba  w x h pixels without row padding, the caller's, to be released with
///                   slFree(); null when the result is 0.
/// @return 1 (also for a height below 1, with nothing in the block), else 0 as slLoadBMP().
ZEL_API int slLoadBmpPicture(const char* path, int* w, int* h, unsigned char (**rgba)[4]);

/// Loads a BMP file as RGB pixels; otherwise as slLoadBmpPicture().
ZEL_API int slLoadBmpPicture3D(const char* path, int* w, int* h, unsigned char (**rgb)[3]);

/// Loads a BMP file as an RGBA texture whose sides are powers of two: the picture is cropped, not
/// resampled, to the lower left part of the size that slNormalizeTextureSize() gives.
/// @param[out] w, h  size of the texture; otherwise as slLoadBmpPicture().
ZEL_API int slLoadBmpTexture(const char* path, int* w, int* h, unsigned char (**rgba)[4]);

/// The largest powers of two not above a size; 0 for a side below 1.
ZEL_API void slNormalizeTextureSize(int w, int h, int* tw, int* th);
