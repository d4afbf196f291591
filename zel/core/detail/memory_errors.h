#pragma once

#include <new>
#include <stdexcept>
#include <utility>

#include "zel/core/error.h"

namespace zel {

/// Runs `work`. Memory that is refused in it comes out as Error::outOfMemory().
template <class Work>
decltype(auto) tellingRefusedMemory(Work&& work) {
  try {
    return std::forward<Work>(work)();
  } catch (const std::bad_alloc&) {
    throw Error::outOfMemory();
  } catch (const std::length_error&) {
    throw Error::outOfMemory();
  }
}

}  // namespace zel
