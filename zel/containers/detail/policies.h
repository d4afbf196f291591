#pragma once

/// @file
/// What each kind of slot array does its own way. SlotStore asks its policy, always about a
/// slot's key: the first component of a tuple, otherwise the slot itself.
///   fresh()         every component of a slot never written (elements: default construction)
///   markDeleted(k)  turns a slot into a hole
///   countsWrite(old, written)  whether writing over `old` raises the available count
///   isLive(k)          for the forward walk and for appending
///   isLiveBackward(k)  for the backward walk
///   isDeletable(k)     whether deletion marks the slot and lowers the available count
///   isKept(k)          whether a purge keeps the slot
///   growth(length, increment, index)  slots to add so that `index` exists
///   kWidthOfMiss    components that reading outside the bound sets to the mark, at most
///   kInsertIsWrite  insertion counts like a write at the bound, else always by one
///   kPurgeZeroesSource, kPurgeReturnsInline  what a purge does beside compacting

#include <algorithm>
#include <array>
#include <cstdint>
#include <type_traits>

#include "zel/core/constants.h"

namespace zel {

template <class Slot>
struct SlotTraits {
  using Row = Slot;
  static Slot filled(Slot value) { return value; }
  static Slot& key(Slot& slot) { return slot; }
  static const Slot& key(const Slot& slot) { return slot; }
};

template <class Component, std::size_t kWidth>
struct SlotTraits<std::array<Component, kWidth>> {
  using Row = Component[kWidth];
  static std::array<Component, kWidth> filled(Component value) {
    std::array<Component, kWidth> slot;
    slot.fill(value);
    return slot;
  }
  static Component& key(std::array<Component, kWidth>& slot) { return slot[0]; }
  static const Component& key(const std::array<Component, kWidth>& slot) { return slot[0]; }
};

/// The slot as callers see it: a scalar, or a plain array of components.
template <class Slot>
using RowOf = typename SlotTraits<Slot>::Row;

template <class Slot>
decltype(auto) keyOf(Slot& slot) {
  return SlotTraits<std::remove_const_t<Slot>>::key(slot);
}

/// Growth, insertion and purge of most value arrays.
struct ValuePolicy {
  static constexpr int kWidthOfMiss = 4;
  static constexpr bool kInsertIsWrite = false;
  static constexpr bool kPurgeZeroesSource = false;
  static constexpr bool kPurgeReturnsInline = false;

  /// At least doubles the store and leaves room for the increment beyond the slot.
  static std::int64_t growth(std::int64_t length, std::int64_t increment, std::int64_t index) {
    return std::max(length, increment - length + index + 1);
  }
};

/// Integers and integer tuples.
struct IntPolicy : ValuePolicy {
  static int fresh() { return kNoIndex; }
  static void markDeleted(int& key) { key = kNoIndex; }
  // Exactly the mark: INT_MIN, though not live, does not count.
  static bool countsWrite(int old, int /*written*/) { return old == kNoIndex; }
  static bool isLive(int key) { return key > kNoIndex; }
  static bool isLiveBackward(int key) { return isLive(key); }
  static bool isDeletable(int key) { return isLive(key); }
  // INT_MIN survives a purge.
  static bool isKept(int key) { return key != kNoIndex; }
};

struct CharPolicy : ValuePolicy {
  static constexpr bool kPurgeZeroesSource = true;
  static constexpr bool kPurgeReturnsInline = true;

  static char fresh() { return 0; }
  static void markDeleted(char& key) { key = 0; }
  // To readers and writers every character, zero included, is content; only deletion and purge
  // take the zero and the bytes from 128 up for holes.
  static bool countsWrite(char /*old*/, char /*written*/) { return true; }
  static bool isLive(char /*key*/) { return true; }
  static bool isLiveBackward(char /*key*/) { return true; }
  static bool isDeletable(char key) { return static_cast<signed char>(key) > 0; }
  static bool isKept(char key) { return isDeletable(key); }
};

struct RealPolicy : ValuePolicy {
  static constexpr bool kPurgeReturnsInline = true;

  static float fresh() { return kFloatMark; }
  static void markDeleted(float& key) { key = kFloatMark; }
  // Coarser than isLive: overwriting a value between the two thresholds counts once more.
  static bool countsWrite(float old, float /*written*/) { return !(old > kLiveNearMark); }
  static bool isLive(float key) { return key > kFloatMark; }
  static bool isLiveBackward(float key) { return isLive(key); }
  static bool isDeletable(float key) { return isLive(key); }
  static bool isKept(float key) { return isLive(key); }
};

/// Plane points and pixels.
struct FloatTuplePolicy : ValuePolicy {
  static float fresh() { return kFloatMark; }
  static void markDeleted(float& key) { key = kFloatMark; }
  static bool countsWrite(float old, float /*written*/) { return !(old > kLiveNearMark); }
  static bool isLive(float key) { return key > kLiveNearMark; }
  static bool isLiveBackward(float key) { return isLive(key); }
  static bool isDeletable(float key) { return isLive(key); }
  static bool isKept(float key) { return isLive(key); }
};

/// Space points: forward and backward walks use different thresholds.
struct PointPolicy : FloatTuplePolicy {
  // z is left alone.
  static constexpr int kWidthOfMiss = 2;
  static constexpr bool kInsertIsWrite = true;

  static bool countsWrite(float old, float /*written*/) { return !(old >= kLiveHalfMark); }
  static bool isLive(float key) { return key > kLiveHalfMark; }
  static bool isLiveBackward(float key) { return key > kLiveNearMark; }
  static bool isDeletable(float key) { return isLive(key); }
  static bool isKept(float key) { return isLive(key); }
};

struct ElementPolicy {
  static constexpr int kWidthOfMiss = 1;
  static constexpr bool kInsertIsWrite = false;
  static constexpr bool kPurgeZeroesSource = false;
  static constexpr bool kPurgeReturnsInline = false;

  template <class Element>
  static void markDeleted(Element& element) {
    element.DelItemM();
  }
  template <class Element>
  static bool countsWrite(const Element& old, const Element& written) {
    return !isLive(old) && isLive(written);
  }
  template <class Element>
  static bool isLive(const Element& element) {
    return element.IsAvailableM() == kTagAvailable;
  }
  template <class Element>
  static bool isLiveBackward(const Element& element) {
    return isLive(element);
  }
  template <class Element>
  static bool isDeletable(const Element& element) {
    return isLive(element);
  }
  template <class Element>
  static bool isKept(const Element& element) {
    return isLive(element);
  }
  /// At least doubles the store; the increment plays no part.
  static std::int64_t growth(std::int64_t length, std::int64_t /*increment*/, std::int64_t index) {
    return std::max(length, index - length + 1);
  }
};

}  // namespace zel
