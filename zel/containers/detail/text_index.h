#pragma once

/// @file
/// The index of a string table.

#include <cstdint>
#include <map>
#include <string_view>
#include <utility>

#include "zel/containers/detail/indexed_slots_impl.h"
#include "zel/containers/detail/slot_index.h"
#include "zel/containers/detail/slot_table.h"
#include "zel/containers/kw_string.h"

namespace zel {

/// Finds the lowest slot whose text matches a zero-terminated one, byte for byte over the stored
/// length.
///
/// Texts are hashed up to their first zero. With one, and nothing but zeros behind it, they match a
/// text equal to them; without one they match every text that begins with them, and are looked for
/// under each of its prefixes whose length occurs. All others match nothing.
class TextTable {
 public:
  void clear();
  /// Prepares for `count` slots; to be called first.
  void reserve(int count) { table_.reserve(count); }
  /// Takes a slot in, under the text that it now has.
  void put(int slot, std::string_view text);
  /// @param text   what the slot was put under.
  void remove(int slot, std::string_view text);

  /// @param textOf   the stored text of a slot: textOf(int) to std::string_view.
  /// @return the lowest matching slot, -1 when there is none.
  template <class TextOf>
  [[nodiscard]] int lowestMatch(const char* text, TextOf textOf) const;
  [[nodiscard]] std::size_t length() const { return table_.length(); }
  [[nodiscard]] bool validate() const { return table_.validate(); }
  /// Whether the slot stands under this text.
  [[nodiscard]] bool isFiled(int slot, std::string_view text) const;

 private:
  static constexpr std::uint64_t kStart = 0xCBF29CE484222325U;
  static constexpr std::uint64_t kFactor = 0x100000001B3U;

  static std::uint64_t extend(std::uint64_t hash, char c) {
    return (hash ^ static_cast<unsigned char>(c)) * kFactor;
  }
  static std::uint32_t finish(std::uint64_t hash) {
    return SlotTable::hashFrom((hash ^ (hash >> 32)) * SlotTable::kMix);
  }
  /// What is hashed: with the zero, or all when there is none. Nothing can match `isDead`.
  struct Key {
    std::string_view text;
    bool isOpen;
    bool isDead;

    explicit Key(std::string_view stored);
    [[nodiscard]] std::uint32_t hash() const;
  };

  SlotTable table_;
  std::map<std::size_t, int> openOfLength_;  ///< number of texts without a zero
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
int TextTable::lowestMatch(const char* text, TextOf textOf) const {
  unsigned best = 0xFFFFFFFF;
  const auto lookUp = [&](std::uint64_t hash) {
    bool isFirst = true;  // and so the lowest; the others matter when hashes are equal by chance
    table_.any(finish(hash), [&](int slot) {
      const bool isMatch = matchesStored(textOf(slot), text);
      best = isMatch ? std::min(best, static_cast<unsigned>(slot)) : best;
      return std::exchange(isFirst, false) && isMatch;
    });
  };
  std::uint64_t hash = kStart;
  auto open = openOfLength_.begin();
  for (std::size_t length = 0;; ++length) {
    if (open != openOfLength_.end() && open->first == length) {
      lookUp(hash);
      ++open;
    }
    hash = extend(hash, text[length]);
    if (text[length] == 0) {
      break;
    }
  }
  lookUp(hash);
  return static_cast<int>(best);
}

using TextSlots = IndexedSlots<KwStringCL, ElementPolicy, class TextIndex>;

/// Follows a string table; see IndexedSlots.
class TextIndex : public SlotIndex {
 public:
  void forget(const KwStringCL* texts, int slot);
  void learn(const KwStringCL* texts, int slot, bool isInList);
  void drop() { table_.drop(); }
  [[nodiscard]] bool validate(const KwStringCL* texts, int bound) const;

  /// The table when it may be asked; null when a walk must do.
  [[nodiscard]] const TextTable* table(const KwStringCL* texts, int bound) const;
  void noteWalk(int slots) const { table_.budget.spend(slots); }

 private:
  LazyPart<TextTable> table_{4};
};

/// The lowest slot below the bound whose text matches `text` (KwStringCL::CompareStrM()), or -1.
[[nodiscard]] int firstMatch(const TextSlots& texts, const char* text);

}  // namespace zel
