#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <utility>
#include <vector>

namespace zel {

/// A set of slots that finds its next member without walking: words of bits, and above them words
/// that tell which words below are not empty. Growing may throw std::bad_alloc.
class SlotSet {
 public:
  void clear() { levels_.clear(); }

  void insert(int slot) {
    auto bit = static_cast<std::size_t>(slot);
    if (levels_.empty() || bit / kWordBits >= levels_[0].size()) {
      grow(bit);
    }
    for (std::vector<std::uint64_t>& level : levels_) {
      level[bit / kWordBits] |= std::uint64_t{1} << (bit % kWordBits);
      bit /= kWordBits;
    }
  }
  void erase(int slot) {
    auto bit = static_cast<std::size_t>(slot);
    for (std::vector<std::uint64_t>& level : levels_) {
      if (bit / kWordBits >= level.size()) {
        return;
      }
      std::uint64_t& word = level[bit / kWordBits];
      word &= ~(std::uint64_t{1} << (bit % kWordBits));
      if (word != 0) {
        return;
      }
      bit /= kWordBits;
    }
  }
  /// The lowest member that is `slot` or more, or -1.
  [[nodiscard]] int nextFrom(int slot) const {
    auto bit = static_cast<std::size_t>(slot);
    for (std::size_t k = 0; k < levels_.size(); ++k) {
      if (bit / kWordBits >= levels_[k].size()) {
        return -1;
      }
      const std::uint64_t rest = levels_[k][bit / kWordBits] >> (bit % kWordBits);
      if (rest != 0) {
        bit += static_cast<std::size_t>(std::countr_zero(rest));
        while (k-- > 0) {
          bit = bit * kWordBits + static_cast<std::size_t>(std::countr_zero(levels_[k][bit]));
        }
        return static_cast<int>(bit);
      }
      bit = bit / kWordBits + 1;
    }
    return -1;
  }

 private:
  static constexpr std::size_t kWordBits = 64;

  void grow(std::size_t bit) {
    std::vector<std::vector<std::uint64_t>> grown;
    grown.emplace_back(std::bit_ceil(bit / kWordBits + 1) * 2);
    if (!levels_.empty()) {
      std::copy(levels_[0].begin(), levels_[0].end(), grown[0].begin());
    }
    while (grown.back().size() > 1) {
      const std::vector<std::uint64_t>& below = grown.back();
      std::vector<std::uint64_t> level((below.size() + kWordBits - 1) / kWordBits);
      for (std::size_t i = 0; i < below.size(); ++i) {
        level[i / kWordBits] |= std::uint64_t{below[i] != 0 ? 1U : 0U} << (i % kWordBits);
      }
      grown.push_back(std::move(level));
    }
    levels_ = std::move(grown);
  }

  std::vector<std::vector<std::uint64_t>> levels_;
};

}  // namespace zel
