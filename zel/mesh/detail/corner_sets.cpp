#include "zel/mesh/detail/corner_sets.h"

#include <algorithm>
#include <utility>

namespace zel {

CornerSets::Key::Key(const int* corners) : nodes(sorted(corners)), count(3) {
  if (nodes[0] == nodes[1] || nodes[1] == nodes[2]) {
    const auto end = std::unique(nodes.begin(), nodes.end());
    count = static_cast<int>(end - nodes.begin());
    std::fill(end, nodes.end(), *(end - 1));
  }
}

CornerSets::Key::Key(const Key& all, unsigned members) : nodes{}, count(0) {
  std::size_t next = 0;
  for (unsigned k = 0; k < 3; ++k) {
    if ((members >> k & 1U) != 0) {
      nodes[next++] = all.nodes[k];
    }
  }
  count = static_cast<int>(next);
  std::fill(nodes.begin() + count, nodes.end(), nodes[next - 1]);
}

void CornerSets::clear() {
  tags_ = {};
  entries_ = {};
  hashes_ = {};
  twins_.clear();
  used_ = rings_ = 0;
  degenerate_ = 0;
}

void CornerSets::reserve(int count) {
  hashes_.reserve(static_cast<std::size_t>(count));
  refill(std::bit_ceil(static_cast<std::size_t>(count) / 4 + 16));
}

// Moves all entries to a table of the given size. Hashes keep their order, so both tables are
// passed through from front to back.
void CornerSets::refill(std::size_t bucketCount) {
  std::vector<Tags> oldTags(bucketCount);
  std::vector<Entries> oldEntries(bucketCount);
  oldTags.swap(tags_);
  oldEntries.swap(entries_);
  shift_ = 32 - std::countr_zero(bucketCount);
  used_ = rings_ = 0;
  for (std::size_t i = 0; i < oldTags.size(); ++i) {
    for (int lane = 0; lane < kLanes; ++lane) {
      if (oldTags[i].of[lane] > kErased) {
        const std::uint32_t hash = oldEntries[i].hash[lane];
        std::size_t bucket = homeOf(hash);
        while (tags_[bucket].isFull()) {
          bucket = nextOf(bucket);
        }
        fill(bucket, hash, oldEntries[i].head[lane]);
      }
    }
  }
}

// Puts an entry into the first empty lane of a bucket that is not full.
void CornerSets::fill(std::size_t bucket, std::uint32_t hash, int head) {
  const int lane = std::countr_zero(lanesEqual(tags_[bucket].of, kEmpty));
  tags_[bucket].of[lane] = tagOf(hash);
  entries_[bucket].hash[lane] = hash;
  entries_[bucket].head[lane] = head;
  ++used_;
  ++rings_;
}

void CornerSets::put(int slot, const int* corners) {
  const bool isAsked = askedHash_ != kNotFiled && std::equal(corners, corners + 3, asked_.begin());
  const std::uint32_t hash = isAsked ? askedHash_ : Key(corners).hash();
  const auto number = static_cast<std::size_t>(slot);
  if (number == hashes_.size()) {
    hashes_.push_back(hash);
  } else {
    hashes_.resize(std::max(number + 1, hashes_.size()), kNotFiled);
    remove(slot);
    hashes_[number] = hash;
  }
  degenerate_ += static_cast<int>(hash & 1U);
  const Place place = find(hash);
  if (place.lane != kNowhere) {
    twins_.addBeside(entries_[place.bucket].head[place.lane], slot);
    return;
  }
  fill(place.bucket, hash, slot);
  if (used_ > tags_.size() * 5) {
    refill(tags_.size() * (rings_ * 2 > used_ ? 2 : 1));
  }
}

void CornerSets::remove(int slot) {
  const auto number = static_cast<std::size_t>(slot);
  if (number >= hashes_.size() || hashes_[number] == kNotFiled) {
    return;
  }
  const std::uint32_t hash = std::exchange(hashes_[number], kNotFiled);
  degenerate_ -= static_cast<int>(hash & 1U);
  const Place place = find(hash);
  // A mark has to stay in a full bucket, for the entries that have moved on; and in the others,
  // because lanes fill in order.
  if (!twins_.remove(entries_[place.bucket].head[place.lane], slot)) {
    tags_[place.bucket].of[place.lane] = kErased;
    --rings_;
  }
}

}  // namespace zel
