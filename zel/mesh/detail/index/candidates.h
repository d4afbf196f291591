#pragma once

#include <new>
#include <utility>
#include <vector>

namespace zel {

/// The slots that a search has to test, in ascending order: all of them, or those an index names.
/// Valid until the list changes.
class Candidates {
 public:
  /// Every slot below the bound.
  static Candidates all(int bound) { return Candidates(nullptr, bound); }
  Candidates(const int* slots, int count) : slots_(slots), count_(count) {}
  explicit Candidates(std::vector<int> slots)
      : own_(std::move(slots)), slots_(own_.data()), count_(static_cast<int>(own_.size())) {}
  Candidates(Candidates&&) = default;
  Candidates& operator=(Candidates&&) = default;

  /// The same slots in a store of their own; every slot below `bound` when memory is refused.
  [[nodiscard]] Candidates detached(int bound) && {
    if (slots_ == nullptr || slots_ == own_.data()) {
      return std::move(*this);
    }
    try {
      return Candidates(std::vector<int>(slots_, slots_ + count_));
    } catch (const std::bad_alloc&) {
      return all(bound);
    }
  }

  [[nodiscard]] int size() const { return count_; }
  [[nodiscard]] int operator[](int k) const { return slots_ == nullptr ? k : slots_[k]; }

 private:
  std::vector<int> own_;
  const int* slots_;
  int count_;
};

}  // namespace zel
