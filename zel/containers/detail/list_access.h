#pragma once

/// @file
/// The list code's door into an array: readers set bound and available count as the file says.

namespace zel {

struct ListAccess {
  /// The slot store of `array`. What is written through it replaces content behind the array's
  /// back, so an array with a search index drops the index here.
  template <class Array>
  static auto& slots(Array& array) {
    return array.slots_;
  }
};

}  // namespace zel
