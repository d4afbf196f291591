#include "zel/mesh/detail/corner_sets.h"

#include <algorithm>
#include <bit>

namespace zel {

namespace {

constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;

std::uint64_t mixed(std::uint64_t value) {
  value *= kMix;
  return value ^ (value >> 32);
}

}  // namespace

CornerSets::Key::Key(const int* corners) : nodes{corners[0], corners[1], corners[2]} {
  if (nodes[0] > nodes[1]) {
    std::swap(nodes[0], nodes[1]);
  }
  if (nodes[1] > nodes[2]) {
    std::swap(nodes[1], nodes[2]);
  }
  if (nodes[0] > nodes[1]) {
    std::swap(nodes[0], nodes[1]);
  }
  count = static_cast<int>(std::unique(nodes, nodes + 3) - nodes);
  std::fill(nodes + count, nodes + 3, nodes[count - 1]);
}

CornerSets::Key::Key(const Key& all, unsigned members) : count(0) {
  for (int k = 0; k < all.count; ++k) {
    if ((members >> k & 1U) != 0) {
      nodes[count++] = all.nodes[k];
    }
  }
  std::fill(nodes + count, nodes + 3, nodes[count - 1]);
}

std::uint32_t CornerSets::Key::hash() const {
  const auto a = static_cast<std::uint32_t>(nodes[0]);
  const auto b = static_cast<std::uint32_t>(nodes[1]);
  const auto c = static_cast<std::uint32_t>(nodes[2]);
  const std::uint64_t sum = mixed(std::uint64_t{a} << 32 | b) + c;
  const auto top = static_cast<std::uint32_t>(mixed(sum) * kMix >> 32);
  return (top & ~1U) | (count < 3 ? 1U : 0U);
}

void CornerSets::clear() {
  heads_ = {};
  links_ = {};
  degenerate_ = 0;
}

void CornerSets::reserve(int count) {
  links_.reserve(static_cast<std::size_t>(count));
  grow(static_cast<std::size_t>(count));
}

// Half to three quarters as many slots as chains.
void CornerSets::grow(std::size_t count) {
  const std::size_t chains = std::bit_ceil(std::max<std::size_t>(count + count / 3, 64));
  heads_.assign(chains, kEnd);
  shift_ = 32 - std::countr_zero(chains);
  for (std::size_t slot = 0; slot < links_.size(); ++slot) {
    if (links_[slot].previous != kNotFiled) {
      link(static_cast<int>(slot));
    }
  }
}

void CornerSets::link(int slot) {
  const std::size_t chain = headOf(at(slot).hash);
  int& head = heads_[chain];
  at(slot).next = head;
  at(slot).previous = ~static_cast<int>(chain);
  if (head != kEnd) {
    at(head).previous = slot;
  }
  head = slot;
}

void CornerSets::put(int slot, const int* corners) {
  const Key key(corners);
  const std::uint32_t hash = key.hash();
  const auto size = static_cast<std::size_t>(slot) + 1;
  if (links_.size() < size) {
    links_.resize(size);
  }
  remove(slot);
  at(slot).hash = hash;
  degenerate_ += static_cast<int>(hash & 1U);
  if (links_.size() * 4 > heads_.size() * 3) {
    at(slot).previous = ~0;  // filed by grow()
    grow(links_.size() * 2);
  } else {
    link(slot);
  }
}

void CornerSets::remove(int slot) {
  if (static_cast<std::size_t>(slot) >= links_.size() || at(slot).previous == kNotFiled) {
    return;
  }
  const Link old = at(slot);
  degenerate_ -= static_cast<int>(old.hash & 1U);
  if (old.next != kEnd) {
    at(old.next).previous = old.previous;
  }
  (old.previous < 0 ? heads_[static_cast<std::size_t>(~old.previous)] : at(old.previous).next) =
      old.next;
  at(slot).previous = kNotFiled;
}

}  // namespace zel
