#pragma once

#include <algorithm>
#include <vector>

namespace zel {

/// Rings of slots that share one key, ascending from a head that the caller keeps. A slot alone is
/// in no ring and costs nothing.
class TwinRings {
 public:
  /// Adds a slot beside `head`, which becomes the lower of the two.
  void add(int& head, int slot) {
    const auto size = static_cast<std::size_t>(std::max(head, slot)) + 1;
    if (links_.size() < size) {
      links_.resize(std::max(size, links_.size() * 2));
    }
    if (at(head).next == kAlone) {
      at(head) = {head, head};
    }
    int before = at(head).previous;
    while (slot > head && before > slot) {
      before = at(before).previous;
    }
    const int after = at(before).next;
    at(slot) = {before, after};
    at(before).next = slot;
    at(after).previous = slot;
    head = std::min(head, slot);
  }
  /// Takes a slot out of the ring of `head`. @return false when it was alone.
  bool remove(int& head, int slot) {
    if (static_cast<std::size_t>(slot) >= links_.size() || at(slot).next == kAlone) {
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
  void clear() { links_.clear(); }

 private:
  static constexpr int kAlone = -1;
  struct Link {
    int previous = kAlone;
    int next = kAlone;
  };
  Link& at(int slot) { return links_[static_cast<std::size_t>(slot)]; }

  std::vector<Link> links_;
};

}  // namespace zel
