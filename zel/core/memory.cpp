#include "zel/core/memory.h"

#include <algorithm>
#include <cstdlib>

#include "zel/core/constants.h"

namespace {

void* reported(void* block) {
  if (block == nullptr) {
    kwErrorMessage(zel::kOutOfMemory);
  }
  return block;
}

// realloc(p, 0) may free p and return null, which would read as exhaustion.
std::size_t atLeastOne(std::uint32_t size) { return std::max<std::size_t>(size, 1); }

}  // namespace

void* slMalloc(std::uint32_t size) { return reported(std::malloc(atLeastOne(size))); }

void* slRealloc(void* block, std::uint32_t size) {
  return reported(std::realloc(block, atLeastOne(size)));
}

void slFree(void* block) { std::free(block); }
