#pragma once

/// @file
/// An index over the texts of a string table.

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "zel/containers/detail/heap.h"

namespace zel {

/// Finds the lowest slot whose text matches a zero-terminated one, byte for byte over the stored
/// length.
///
/// Two kinds of texts are hashed: those with one zero, at the end, which match a text equal to
/// them; and those without a zero, which match every text that begins with them and are looked for
/// under each of its prefixes whose length occurs. All others (inner zeros, very long ones without
/// a zero) are compared one by one.
///
/// Slots 0 to covered() - 1 are known to the index. It reads texts when it takes a slot in, and
/// keeps no copy: the table says `forget` before a text changes and `learn` after it.
class TextIndex : public HeapObject {
 public:
  /// Slots known: from 0 up to this one.
  [[nodiscard]] int covered() const { return static_cast<int>(hashes_.size()); }
  /// Takes in the slot covered(). @throws std::bad_alloc
  void cover(std::string_view text);
  /// Takes the text of a covered slot out of the searches.
  void forget(int slot, std::string_view text);
  /// Takes the new text of a forgotten slot in. @throws std::bad_alloc
  void learn(int slot, std::string_view text);
  /// Forgets the slot covered() - 1 for good.
  void uncoverLast(std::string_view text);

  /// Length of the hash table: it follows the number of different texts, not of changes.
  [[nodiscard]] std::size_t tableLength() const { return chains_.size(); }

  /// @param textOf   the stored text of a slot: textOf(int) to std::string_view.
  /// @return the lowest matching slot, -1 when there is none.
  template <class TextOf>
  [[nodiscard]] int lowestMatch(const char* text, TextOf textOf) const;

 private:
  template <class T>
  using Vector = std::vector<T, HeapAllocator<T>>;
  enum class Kind { kClosed, kOpen, kOther };

  /// Slots with one hash, linked in ascending order.
  struct Chain {
    std::uint64_t hash = 0;  ///< odd; 0: no chain here
    int head = -1;
    int tail = -1;
  };

  static constexpr std::uint64_t kStart = 0xCBF29CE484222325U;
  static constexpr std::uint64_t kFactor = 0x100000001B3U;
  static constexpr std::size_t kLongestOpen = 4096;

  static std::uint64_t extend(std::uint64_t hash, char c) {
    return (hash ^ static_cast<unsigned char>(c)) * kFactor;
  }
  static std::uint64_t finish(std::uint64_t hash) { return hash | 1; }
  static std::uint64_t hashOf(std::string_view text);
  static Kind kindOf(std::string_view text);

  [[nodiscard]] const Chain& chainOf(std::uint64_t hash) const;
  [[nodiscard]] Chain& chainOf(std::uint64_t hash);
  void renewTable();
  void link(int slot, std::uint64_t hash);
  void unlink(int slot);

  Vector<Chain> chains_;  ///< open addressing, a power of two long
  std::size_t usedChains_ = 0;
  Vector<std::uint64_t> hashes_;  ///< by slot
  Vector<int> next_;              ///< by slot
  Vector<int> previous_;          ///< by slot
  Vector<int> openOfLength_;      ///< number of open texts by length
  Vector<int> others_;            ///< slots compared one by one, ascending
};

/// Whether stored bytes match the beginning of `text`, continued by zeros.
inline bool matchesStored(std::string_view stored, const char* text) {
  for (const char c : stored) {
    if (c != *text) {
      return false;
    }
    text += *text != 0 ? 1 : 0;
  }
  return true;
}

template <class TextOf>
int TextIndex::lowestMatch(const char* text, TextOf textOf) const {
  unsigned best = 0xFFFFFFFF;
  const auto lookUp = [&](std::uint64_t hash) {
    for (int slot = chains_.empty() ? -1 : chainOf(finish(hash)).head; slot >= 0;
         slot = next_[static_cast<std::size_t>(slot)]) {
      if (matchesStored(textOf(slot), text)) {
        best = std::min(best, static_cast<unsigned>(slot));
        return;
      }
    }
  };
  std::uint64_t hash = kStart;
  for (std::size_t length = 0;; ++length) {
    if (length < openOfLength_.size() && openOfLength_[length] > 0) {
      lookUp(hash);
    }
    hash = extend(hash, text[length]);
    if (text[length] == 0) {
      break;
    }
  }
  lookUp(hash);
  for (const int slot : others_) {
    if (static_cast<unsigned>(slot) < best && matchesStored(textOf(slot), text)) {
      best = static_cast<unsigned>(slot);
      break;
    }
  }
  return static_cast<int>(best);
}

}  // namespace zel
