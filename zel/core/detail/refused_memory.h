#pragma once

/// @file
/// What calls do that let no std::bad_alloc out.

#include <new>

#include "zel/core/constants.h"
#include "zel/core/memory.h"

namespace zel {

/// @return the answer of `work`; `refused` when the heap refuses, reported through
///         kwErrorMessage(40). Other exceptions pass.
template <class Answer, class Work>
[[nodiscard]] Answer answerOr(Answer refused, Work work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    kwErrorMessage(kOutOfMemory);
    return refused;
  }
}

}  // namespace zel
