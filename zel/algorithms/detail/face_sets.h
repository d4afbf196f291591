#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "zel/core/detail/prefetch.h"

namespace zel {

/// Tells faces with the same set of corners, in whatever winding, as they come one by one.
///
/// A search has two steps, so that several can wait for memory at once: lookAhead(), then
/// findOrAdd() in the order of the faces.
template <std::size_t kCorners>
class FaceSets {
 public:
  struct Search {
    std::array<int, kCorners> key;  ///< the corners in ascending order
    std::uint32_t hash;
  };

  /// @param expected how many different sets to make room for.
  explicit FaceSets(std::size_t expected)
      : table_(std::bit_ceil(std::max<std::size_t>(expected + expected / 2, 16))) {
    keys_.reserve(expected);
  }

  /// Begins a search; the table's entry is on its way.
  void lookAhead(const int* corners, Search& search) const {
    std::copy_n(corners, kCorners, search.key.begin());
    std::sort(search.key.begin(), search.key.end());
    std::uint64_t sum = 0;
    for (const int corner : search.key) {
      sum = (sum ^ static_cast<std::uint32_t>(corner)) * 0x9E3779B97F4A7C15U;
      sum ^= sum >> 32U;
    }
    search.hash = static_cast<std::uint32_t>(sum);
    prefetch(&table_[search.hash & (table_.size() - 1)]);
  }
  /// @return the number of the face that had these corners first, counted from 0 over all
  ///         different sets; this face becomes the next one when there was none.
  int findOrAdd(const Search& search) {
    if ((keys_.size() + 1) * 4 > table_.size() * 3) {
      grow();
    }
    Entry& entry = find(search.hash, search.key);
    if (entry.number < 0) {
      entry = {search.hash, count()};
      keys_.push_back(search.key);
    }
    return entry.number;
  }
  /// @return how many different sets there were.
  [[nodiscard]] int count() const { return static_cast<int>(keys_.size()); }

 private:
  struct Entry {
    std::uint32_t hash = 0;
    int number = -1;  // of the key; -1: empty
  };

  Entry& find(std::uint32_t hash, const std::array<int, kCorners>& key) {
    const std::size_t mask = table_.size() - 1;
    std::size_t at = hash & mask;
    while (table_[at].number >= 0 &&
           (table_[at].hash != hash || keys_[static_cast<std::size_t>(table_[at].number)] != key)) {
      at = (at + 1) & mask;
    }
    return table_[at];
  }
  void grow() {
    std::vector<Entry> old(table_.size() * 2);
    old.swap(table_);
    for (const Entry& entry : old) {
      if (entry.number >= 0) {
        std::size_t at = entry.hash & (table_.size() - 1);
        while (table_[at].number >= 0) {
          at = (at + 1) & (table_.size() - 1);
        }
        table_[at] = entry;
      }
    }
  }

  std::vector<Entry> table_;  // a power of two
  std::vector<std::array<int, kCorners>> keys_;
};

}  // namespace zel
