#pragma once

/// @file
/// Allocation through one door, so that exhaustion is reported in one place.

#include <cstdint>

#include "zel/core/api.h"

/// Takes a block from the runtime heap.
/// @param size bytes wanted; 0 yields a block of 1 byte.
/// @return the block, to be given back with slFree(); null when the heap is exhausted, after
///         kwErrorMessage(40).
[[nodiscard]] ZEL_API void* slMalloc(std::uint32_t size);

/// Resizes a block of slMalloc(), keeping its content up to the smaller size.
/// @param block the block; null makes this slMalloc().
/// @param size  bytes wanted; 0 yields a block of 1 byte.
/// @return the resized block; null when the heap is exhausted, after kwErrorMessage(40), and then
///         `block` is still valid and still the caller's.
[[nodiscard]] ZEL_API void* slRealloc(void* block, std::uint32_t size);

/// Gives back a block of slMalloc() or slRealloc(). Null is accepted.
ZEL_API void slFree(void* block);

/// The sink for error codes. Does nothing by contract.
/// @param code 40 when the heap is exhausted, the only code the library sends.
/// @return always 0.
ZEL_API int kwErrorMessage(int code);
