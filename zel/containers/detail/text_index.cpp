#include "zel/containers/detail/text_index.h"

namespace zel {

namespace {

std::string_view textOf(const KwStringCL& element) {
  const char* const bytes = element;
  return bytes == nullptr ? std::string_view()
                          : std::string_view(bytes, static_cast<std::size_t>(element.GetLengthM()));
}

}  // namespace

// --- the table ---------------------------------------------------------------------------------

TextTable::Key::Key(std::string_view stored) : text(stored), isOpen(false), isDead(false) {
  const std::size_t zero = stored.find('\0');
  isOpen = zero == std::string_view::npos;
  if (!isOpen) {
    isDead = stored.find_first_not_of('\0', zero) != std::string_view::npos;
    text = stored.substr(0, zero + 1);
  }
}

std::uint32_t TextTable::Key::hash() const {
  std::uint64_t hash = kStart;
  for (const char c : text) {
    hash = extend(hash, c);
  }
  return finish(hash);
}

void TextTable::clear() {
  table_.clear();
  openOfLength_.clear();
}

void TextTable::put(int slot, std::string_view text) {
  const Key key(text);
  if (key.isDead) {
    return;
  }
  table_.put(slot, key.hash());
  if (key.isOpen) {
    ++openOfLength_[text.size()];
  }
}

void TextTable::remove(int slot, std::string_view text) {
  table_.remove(slot);
  if (const Key key(text); key.isOpen && --openOfLength_[text.size()] == 0) {
    openOfLength_.erase(text.size());
  }
}

bool TextTable::isFiled(int slot, std::string_view text) const {
  const Key key(text);
  return table_.hashOf(slot) == (key.isDead ? SlotTable::kNotFiled : key.hash()) &&
         (!key.isOpen || openOfLength_.count(text.size()) == 1);
}

// --- the index ---------------------------------------------------------------------------------

void TextIndex::forget(const KwStringCL* texts, int slot) {
  if (TextTable* table = table_.known()) {
    table->remove(slot, textOf(texts[slot]));
  }
}

void TextIndex::learn(const KwStringCL* texts, int slot, bool isInList) {
  if (TextTable* table = table_.known(); table != nullptr && isInList) {
    table->put(slot, textOf(texts[slot]));
  }
}

const TextTable* TextIndex::table(const KwStringCL* texts, int bound) const {
  return table_.ready(bound, [=](TextTable& table) {
    table.reserve(bound);
    for (int slot = 0; slot < bound; ++slot) {
      table.put(slot, textOf(texts[slot]));
    }
  });
}

bool TextIndex::validate(const KwStringCL* texts, int bound) const {
  const TextTable* table = table_.known();
  for (int slot = 0; table != nullptr && slot < bound; ++slot) {
    if (!table->isFiled(slot, textOf(texts[slot]))) {
      return false;
    }
  }
  return table == nullptr || table->validate();
}

int firstMatch(const TextSlots& texts, const char* text) {
  const TextIndex* index = texts.index();
  if (const TextTable* table =
          index == nullptr ? nullptr : index->table(texts.data(), texts.bound())) {
    return table->lowestMatch(text, [&](int slot) { return textOf(texts[slot]); });
  }
  const int found = texts.firstWhere(
      [text](const KwStringCL& element) { return element.CompareStrM(0, text) == 0; });
  if (index != nullptr) {
    index->noteWalk(found < 0 ? texts.bound() : found + 1);
  }
  return found;
}

}  // namespace zel
