#pragma once

#include <algorithm>
#include <vector>

namespace zel {

/// Groups of slots that share one key; the caller keeps the lowest of each, the head. A slot alone
/// is in no group and costs nothing. Adding may throw std::bad_alloc.
///
/// Each group is a heap, so that slots may come and go in any order at a cost that grows with the
/// logarithm of their number; see M. Fredman et al., The Pairing Heap, 1986.
class Twins {
 public:
  /// Adds a slot that is in no group; the head becomes the lower of the two.
  void add(int& head, int slot) {
    const auto size = static_cast<std::size_t>(std::max(head, slot)) + 1;
    if (links_.size() < size) {
      links_.resize(std::max(size, links_.size() * 2));
    }
    head = meld(head, slot);
  }
  /// Takes a slot out of the group of `head`. @return false when it was alone.
  bool remove(int& head, int slot) {
    if (isAlone(slot)) {
      return false;
    }
    const Link link = at(slot);
    at(slot) = {};
    const int rest = meldAll(link.child);
    if (slot == head) {
      head = rest;
      return true;
    }
    (at(link.previous).child == slot ? at(link.previous).child : at(link.previous).next) =
        link.next;
    if (link.next != kNone) {
      at(link.next).previous = link.previous;
    }
    head = rest == kNone ? head : meld(head, rest);
    return true;
  }
  /// Whether the slot is in a group below its head.
  [[nodiscard]] bool isBelowHead(int slot) const {
    return !isAlone(slot) && at(slot).previous != kNone;
  }
  /// Asks `isEnough(slot)` about the head, then about its twins until it says yes.
  /// @return whether it did.
  template <class IsEnough>
  bool any(int head, IsEnough& isEnough) const {
    if (isEnough(head)) {
      return true;
    }
    for (int slot = isAlone(head) ? kNone : at(head).child; slot != kNone; slot = after(slot)) {
      if (isEnough(slot)) {
        return true;
      }
    }
    return false;
  }
  void clear() { links_ = {}; }

 private:
  static constexpr int kNone = -1;
  /// The first child leads the row of children; its previous is the parent.
  struct Link {
    int child = kNone;
    int next = kNone;
    int previous = kNone;
  };
  Link& at(int slot) { return links_[static_cast<std::size_t>(slot)]; }
  [[nodiscard]] const Link& at(int slot) const { return links_[static_cast<std::size_t>(slot)]; }
  [[nodiscard]] bool isAlone(int slot) const {
    return static_cast<std::size_t>(slot) >= links_.size() ||
           (at(slot).child == kNone && at(slot).previous == kNone);
  }
  /// Joins two groups. @return the head of both.
  int meld(int a, int b) {
    const int head = std::min(a, b);
    const int child = std::max(a, b);
    at(child).next = at(head).child;
    at(child).previous = head;
    if (at(head).child != kNone) {
      at(at(head).child).previous = child;
    }
    at(head).child = child;
    return head;
  }
  /// Joins a row of children: by pairs forwards, then the pairs backwards.
  int meldAll(int first) {
    int pairs = kNone;
    while (first != kNone) {
      const int a = first;
      const int b = at(a).next;
      first = b == kNone ? kNone : at(b).next;
      const int pair = b == kNone ? a : meld(a, b);
      at(pair).next = pairs;
      pairs = pair;
    }
    int head = kNone;
    while (pairs != kNone) {
      const int rest = at(pairs).next;
      at(pairs).next = kNone;
      at(pairs).previous = kNone;
      head = head == kNone ? pairs : meld(head, pairs);
      pairs = rest;
    }
    return head;
  }
  /// The slot that follows in a walk from parents to children; kNone behind the last.
  [[nodiscard]] int after(int slot) const {
    if (at(slot).child != kNone) {
      return at(slot).child;
    }
    while (at(slot).next == kNone) {
      while (at(at(slot).previous).child != slot) {
        slot = at(slot).previous;
      }
      slot = at(slot).previous;
      if (at(slot).previous == kNone) {
        return kNone;
      }
    }
    return at(slot).next;
  }

  std::vector<Link> links_;
};

}  // namespace zel
