#pragma once

/// @file
/// Filling the lists where a refusal of memory, which they answer by staying as they are, must not
/// pass unnoticed.

#include "zel/core/error.h"

namespace zel {

/// Makes a list at least `length` slots long. @throws Error (kExhausted).
template <class List>
void reserve(List& list, int length) {
  list.InitialSizeM(length);
  if (list.GetLengthM() < length) {
    throw Error::outOfMemory();
  }
}

/// @return an empty list with room for `length` elements. @throws Error (kExhausted).
template <class List>
List listWithRoomFor(int length) {
  List list;
  reserve(list, length);
  return list;
}

/// Writes the slot at the bound. @return its index. @throws Error (kExhausted).
template <class List, class Element>
int append(List& list, const Element& element) {
  const int slot = list.GetBoundM();
  list.AddItemM(element);
  if (list.GetBoundM() != slot + 1) {
    throw Error::outOfMemory();
  }
  return slot;
}

/// @return a copy of a list. @throws Error (kExhausted).
template <class List>
List copyOf(const List& list) {
  List copy(list);
  if (copy.GetBoundM() != list.GetBoundM()) {
    throw Error::outOfMemory();
  }
  return copy;
}

}  // namespace zel
