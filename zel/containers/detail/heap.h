#pragma once

/// @file
/// Heap blocks for everything that the containers own, all taken through slMalloc().

#include <cstddef>
#include <cstdint>
#include <new>

#include "zel/core/constants.h"
#include "zel/core/memory.h"

namespace zel {

/// The largest block that a container may hold, in bytes.
inline constexpr std::int64_t kMaxBlockBytes = 0x7FFFFFFF;

/// A block of slMalloc(). @return null, reported, when the limit or the heap refuses it.
[[nodiscard]] inline void* takeBlock(std::int64_t bytes) {
  if (bytes > kMaxBlockBytes) {
    kwErrorMessage(kOutOfMemory);
    return nullptr;
  }
  return slMalloc(static_cast<std::uint32_t>(bytes));
}

/// Base of objects made by `new`, which gives null when refused, and never throws.
struct HeapObject {
  static void* operator new(std::size_t size) noexcept {
    return takeBlock(static_cast<std::int64_t>(size));
  }
  static void operator delete(void* block) { slFree(block); }
};

/// Allocator for standard containers. @throws std::bad_alloc when refused.
template <class T>
struct HeapAllocator {
  using value_type = T;

  HeapAllocator() = default;
  template <class U>
  HeapAllocator(const HeapAllocator<U>& /*other*/) {}  // NOLINT(google-explicit-constructor)

  [[nodiscard]] T* allocate(std::size_t count) {
    void* block = takeBlock(static_cast<std::int64_t>(count * sizeof(T)));
    if (block == nullptr) {
      throw std::bad_alloc();
    }
    return static_cast<T*>(block);
  }
  void deallocate(T* block, std::size_t /*count*/) { slFree(block); }

  template <class U>
  bool operator==(const HeapAllocator<U>& /*other*/) const {
    return true;
  }
};

}  // namespace zel
