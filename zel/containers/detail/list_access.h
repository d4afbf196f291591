#pragma once

/// @file
/// The list code's door into an array: readers set bound and available count as the file says.

namespace zel {

struct ListAccess {
  /// The slot store of `array`, to be rewritten. What is written through it changes the content
  /// behind the back of a search index, so an array that has one drops it here.
  template <class Array>
  static auto& slots(Array& array) {
    if constexpr (requires { array.index_; }) {
      array.index_.reset();
    }
    return array.slots_;
  }
};

}  // namespace zel
