#pragma once

/// @file
/// Slots as callers pass them: a scalar by value, a tuple through a pointer to its components.

#include <algorithm>

#include "zel/containers/detail/policies.h"
#include "zel/containers/slot_store.h"

namespace zel {

template <class Slot>
using ComponentOf = std::remove_cvref_t<decltype(keyOf(std::declval<Slot&>()))>;

template <class Slot>
inline constexpr int kWidthOf = static_cast<int>(sizeof(Slot) / sizeof(ComponentOf<Slot>));

/// A scalar or an element is its own slot.
template <class Slot>
requires(kWidthOf<Slot> == 1) const Slot& slotOf(const Slot& value) { return value; }

template <class Slot>
Slot slotOf(const ComponentOf<Slot>* components) {
  Slot slot;
  std::copy_n(components, kWidthOf<Slot>, slot.data());
  return slot;
}

template <class Slot>
void handOut(const Slot& slot, ComponentOf<Slot>* out) {
  if constexpr (kWidthOf<Slot> == 1) {
    *out = slot;
  } else {
    std::copy_n(slot.data(), kWidthOf<Slot>, out);
  }
}

/// Hands out what a slot never written holds, in the first `width` components.
template <class Store, class Slot = typename Store::SlotType>
void handOutFresh(ComponentOf<Slot>* out, int width) {
  using Policy = typename Store::PolicyType;
  if constexpr (requires { Policy::fresh(); }) {
    std::fill_n(out, std::min(kWidthOf<Slot>, width), Policy::fresh());
  } else {
    *out = Slot();
  }
}

/// `To`, const when `From` is.
template <class From, class To>
using ConstLike = std::conditional_t<std::is_const_v<From>, const To, To>;

/// The store as a plain array of scalars or of component rows.
template <class Slot>
auto* rowsOf(Slot* store) {
  return reinterpret_cast<ConstLike<Slot, RowOf<std::remove_const_t<Slot>>>*>(store);
}

/// The components of one slot; null stays null.
template <class Slot>
auto* componentsOf(Slot* slot) {
  return slot == nullptr ? nullptr : &keyOf(*slot);
}

/// Hands slot `index` out; without one, the mark in as many components as the policy says.
template <class Store, class Slot = typename Store::SlotType>
void readSlot(const Store& slots, int index, ComponentOf<Slot>* out) {
  if (const Slot* slot = slots.slotAt(index)) {
    handOut(*slot, out);
  } else {
    handOutFresh<Store>(out, Store::PolicyType::kWidthOfMiss);
  }
}

/// Hands out what a walk found at `found`; -1 hands out the mark and no index.
/// @return whether there was one.
template <class Store, class Slot = typename Store::SlotType>
bool handOutFound(const Store& slots, int found, ComponentOf<Slot>* out, int* index) {
  if (found < 0) {
    handOutFresh<Store>(out, kWidthOf<Slot>);
    *index = kNoIndex;
    return false;
  }
  handOut(slots[found], out);
  *index = found;
  return true;
}

/// Hands out the index of a search; -1 becomes the not-found index. @return 1 found, 0 not.
inline int handOutSearch(int found, int* index) {
  *index = found < 0 ? kNoIndex : found;
  return found < 0 ? 0 : 1;
}

/// @return occurrences of `value` below the bound minus one, at most 2.
template <class Slot, class Policy>
int occurrencesMinusOne(const SlotStore<Slot, Policy>& slots, Slot value) {
  int answer = -1;
  for (int i = 0; i < slots.bound() && answer < 2; ++i) {
    answer += slots[i] == value ? 1 : 0;
  }
  return answer;
}

}  // namespace zel
