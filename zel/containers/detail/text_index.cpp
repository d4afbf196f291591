#include "zel/containers/detail/text_index.h"

#include <algorithm>
#include <bit>

namespace zel {

namespace {

constexpr std::size_t kFirstChains = 256;

std::size_t at(int slot) { return static_cast<std::size_t>(slot); }

}  // namespace

std::uint64_t TextIndex::hashOf(std::string_view text) {
  std::uint64_t hash = kStart;
  for (const char c : text) {
    hash = extend(hash, c);
  }
  return finish(hash);
}

TextIndex::Kind TextIndex::kindOf(std::string_view text) {
  const std::size_t zero = text.find('\0');
  if (zero == std::string_view::npos) {
    return text.size() <= kLongestOpen ? Kind::kOpen : Kind::kOther;
  }
  return zero + 1 == text.size() ? Kind::kClosed : Kind::kOther;
}

void TextIndex::cover(std::string_view text) {
  // All room first, so that running out of memory leaves the lists equally long.
  for (auto* links : {&next_, &previous_}) {
    links->resize(hashes_.size() + 1, -1);
  }
  hashes_.push_back(0);
  learn(covered() - 1, text);
}

void TextIndex::uncoverLast(std::string_view text) {
  forget(covered() - 1, text);
  hashes_.pop_back();
  next_.pop_back();
  previous_.pop_back();
}

void TextIndex::learn(int slot, std::string_view text) {
  const Kind kind = kindOf(text);
  if (kind == Kind::kOther) {
    others_.insert(std::lower_bound(others_.begin(), others_.end(), slot), slot);
    return;
  }
  if (kind == Kind::kOpen) {
    if (openOfLength_.size() <= text.size()) {
      openOfLength_.resize(text.size() + 1, 0);
    }
    ++openOfLength_[text.size()];
  }
  if (2 * (usedChains_ + 1) > chains_.size()) {
    renewTable();
  }
  link(slot, hashOf(text));
}

void TextIndex::forget(int slot, std::string_view text) {
  const Kind kind = kindOf(text);
  if (kind == Kind::kOther) {
    others_.erase(std::lower_bound(others_.begin(), others_.end(), slot));
    return;
  }
  if (kind == Kind::kOpen) {
    --openOfLength_[text.size()];
  }
  unlink(slot);
}

// The chain of a hash, or the place where it would stand.
const TextIndex::Chain& TextIndex::chainOf(std::uint64_t hash) const {
  const std::size_t mask = chains_.size() - 1;
  std::size_t place = static_cast<std::size_t>(hash ^ (hash >> 32)) & mask;
  while (chains_[place].hash != hash && chains_[place].hash != 0) {
    place = (place + 1) & mask;
  }
  return chains_[place];
}

TextIndex::Chain& TextIndex::chainOf(std::uint64_t hash) {
  return const_cast<Chain&>(static_cast<const TextIndex*>(this)->chainOf(hash));
}

// Leaves out the chains that ran empty, and makes the table four times as long as the others.
void TextIndex::renewTable() {
  const auto holdsSlots = [](const Chain& chain) { return chain.head >= 0; };
  const auto kept =
      static_cast<std::size_t>(std::count_if(chains_.begin(), chains_.end(), holdsSlots));
  Vector<Chain> old(std::max(std::bit_ceil(4 * kept), kFirstChains));
  old.swap(chains_);
  usedChains_ = kept;
  for (const Chain& chain : old) {
    if (holdsSlots(chain)) {
      chainOf(chain.hash) = chain;
    }
  }
}

void TextIndex::link(int slot, std::uint64_t hash) {
  Chain& chain = chainOf(hash);
  usedChains_ += chain.hash == 0 ? 1 : 0;
  chain.hash = hash;
  hashes_[at(slot)] = hash;
  // Mostly the highest slot of all, so look from the end.
  int before = chain.tail;
  while (before > slot) {
    before = previous_[at(before)];
  }
  const int after = before < 0 ? chain.head : next_[at(before)];
  previous_[at(slot)] = before;
  next_[at(slot)] = after;
  (before < 0 ? chain.head : next_[at(before)]) = slot;
  (after < 0 ? chain.tail : previous_[at(after)]) = slot;
}

void TextIndex::unlink(int slot) {
  Chain& chain = chainOf(hashes_[at(slot)]);
  const int before = previous_[at(slot)];
  const int after = next_[at(slot)];
  (before < 0 ? chain.head : next_[at(before)]) = after;
  (after < 0 ? chain.tail : previous_[at(after)]) = before;
}

}  // namespace zel
