#pragma once

#include <algorithm>
#include <vector>

namespace zel {

/// Rings of slots that share one key; the caller keeps one of them, the head. A slot alone is in
/// no ring and costs nothing. Adding may throw std::bad_alloc.
class TwinRings {
 public:
  /// Adds a slot in ascending order from the head, which becomes the lower of the two.
  void addInOrder(int& head, int slot) {
    makeRoom(std::max(head, slot));
    int before = at(head).previous == kAlone ? head : at(head).previous;
    while (slot > head && before > slot) {
      before = at(before).previous;
    }
    linkAfter(before, slot);
    head = std::min(head, slot);
  }
  /// Adds a slot anywhere.
  void addBeside(int head, int slot) {
    makeRoom(std::max(head, slot));
    linkAfter(head, slot);
  }
  /// Takes a slot out of the ring of `head`. @return false when it was alone.
  bool remove(int& head, int slot) {
    if (isAlone(slot)) {
      return false;
    }
    const Link link = at(slot);
    at(slot) = {};
    at(link.previous).next = link.next;
    at(link.next).previous = link.previous;
    if (head == slot) {
      head = link.next;
    }
    if (link.previous == link.next) {
      at(link.next) = {};
    }
    return true;
  }
  /// Asks `isEnough(slot)` about the head and its twins until it says yes. @return whether it did.
  template <class IsEnough>
  bool any(int head, IsEnough& isEnough) const {
    if (isEnough(head)) {
      return true;
    }
    if (isAlone(head)) {
      return false;
    }
    int slot = at(head).next;
    while (slot != head && !isEnough(slot)) {
      slot = at(slot).next;
    }
    return slot != head;
  }
  void clear() { links_ = {}; }

 private:
  static constexpr int kAlone = -1;
  struct Link {
    int previous = kAlone;
    int next = kAlone;
  };
  Link& at(int slot) { return links_[static_cast<std::size_t>(slot)]; }
  [[nodiscard]] const Link& at(int slot) const { return links_[static_cast<std::size_t>(slot)]; }
  [[nodiscard]] bool isAlone(int slot) const {
    return static_cast<std::size_t>(slot) >= links_.size() || at(slot).next == kAlone;
  }
  void makeRoom(int slot) {
    const auto size = static_cast<std::size_t>(slot) + 1;
    if (links_.size() < size) {
      links_.resize(std::max(size, links_.size() * 2));
    }
  }
  void linkAfter(int before, int slot) {
    if (at(before).next == kAlone) {
      at(before) = {before, before};
    }
    const int after = at(before).next;
    at(slot) = {before, after};
    at(before).next = slot;
    at(after).previous = slot;
  }

  std::vector<Link> links_;
};

}  // namespace zel
