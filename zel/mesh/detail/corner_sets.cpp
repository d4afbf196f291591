#include "zel/mesh/detail/corner_sets.h"

#include <algorithm>
#include <utility>

namespace zel {

namespace {

constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;

std::uint64_t mixed(std::uint64_t value) {
  value *= kMix;
  return value ^ (value >> 32);
}

}  // namespace

// Sorted without branches: the order of corners is as good as random.
CornerSets::Key::Key(const int* corners) {
  const int low = std::min(corners[0], corners[1]);
  const int high = std::max(corners[0], corners[1]);
  const int rest = std::max(low, corners[2]);
  nodes[0] = std::min(low, corners[2]);
  nodes[1] = std::min(high, rest);
  nodes[2] = std::max(high, rest);
  count = 3;
  if (nodes[0] == nodes[1] || nodes[1] == nodes[2]) {
    count = static_cast<int>(std::unique(nodes, nodes + 3) - nodes);
    std::fill(nodes + count, nodes + 3, nodes[count - 1]);
  }
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
  return (top & ~3U) | 2U | (count < 3 ? 1U : 0U);
}

void CornerSets::clear() {
  buckets_ = {};
  hashes_ = {};
  twins_.clear();
  used_ = entries_ = 0;
  degenerate_ = 0;
}

void CornerSets::reserve(int count) {
  hashes_.reserve(static_cast<std::size_t>(count));
  refill(std::bit_ceil(static_cast<std::size_t>(count) / 4 + 16));
}

// Moves all entries to a table of the given size. Hashes keep their order, so both tables are
// passed through from front to back.
void CornerSets::refill(std::size_t bucketCount) {
  std::vector<Bucket> old(bucketCount);
  old.swap(buckets_);
  shift_ = 32 - std::countr_zero(bucketCount);
  used_ = entries_ = 0;
  for (const Bucket& bucket : old) {
    for (int lane = 0; lane < kLanes; ++lane) {
      if (bucket.hash[lane] > kErased) {
        place(bucket.hash[lane], bucket.head[lane]);
      }
    }
  }
}

CornerSets::Place CornerSets::find(std::uint32_t hash) {
  for (std::size_t i = homeOf(hash);; i = nextOf(i)) {
    if (const unsigned lanes = lanesEqual(buckets_[i].hash, hash); lanes != 0) {
      return {&buckets_[i], std::countr_zero(lanes)};
    }
    if (!buckets_[i].isFull()) {
      return {nullptr, 0};
    }
  }
}

// Puts an entry for a new hash into the first free lane.
void CornerSets::place(std::uint32_t hash, int head) {
  for (std::size_t i = homeOf(hash);; i = nextOf(i)) {
    Bucket& bucket = buckets_[i];
    for (int lane = 0; lane < kLanes; ++lane) {
      if (bucket.hash[lane] <= kErased) {
        used_ += bucket.hash[lane] == kEmpty ? 1U : 0U;
        ++entries_;
        bucket.hash[lane] = hash;
        bucket.head[lane] = head;
        return;
      }
    }
  }
}

void CornerSets::put(int slot, const int* corners) {
  const std::uint32_t hash = Key(corners).hash();
  const auto number = static_cast<std::size_t>(slot);
  if (hashes_.size() <= number) {
    hashes_.resize(number + 1, kEmpty);
  }
  remove(slot);
  hashes_[number] = hash;
  degenerate_ += static_cast<int>(hash & 1U);
  if (const Place twin = find(hash); twin.bucket != nullptr) {
    twins_.addBeside(twin.bucket->head[twin.lane], slot);
    return;
  }
  place(hash, slot);
  if (used_ > buckets_.size() * 5) {
    refill(buckets_.size() * (entries_ * 2 > used_ ? 2 : 1));
  }
}

void CornerSets::remove(int slot) {
  const auto number = static_cast<std::size_t>(slot);
  if (number >= hashes_.size() || hashes_[number] == kEmpty) {
    return;
  }
  const std::uint32_t hash = std::exchange(hashes_[number], kEmpty);
  degenerate_ -= static_cast<int>(hash & 1U);
  const Place place = find(hash);
  // A mark has to stay in a full bucket, for the entries that have moved on; and in the others,
  // because lanes fill in order.
  if (!twins_.remove(place.bucket->head[place.lane], slot)) {
    place.bucket->hash[place.lane] = kErased;
    --entries_;
  }
}

}  // namespace zel
