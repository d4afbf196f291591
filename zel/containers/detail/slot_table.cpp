#include "zel/containers/detail/slot_table.h"

#include <algorithm>
#include <utility>

namespace zel {

void SlotTable::clear() {
  tags_ = {};
  entries_ = {};
  hashes_ = {};
  twins_.clear();
  used_ = groups_ = 0;
}

void SlotTable::reserve(int count) {
  hashes_.reserve(static_cast<std::size_t>(count));
  refill(std::bit_ceil(static_cast<std::size_t>(count) / 4 + 16));
}

// Moves all entries to a table of the given size. Hashes keep their order, so both tables are
// passed through from front to back.
void SlotTable::refill(std::size_t bucketCount) {
  std::vector<Tags> oldTags(bucketCount);
  std::vector<Entries> oldEntries(bucketCount);
  oldTags.swap(tags_);
  oldEntries.swap(entries_);
  shift_ = 32 - std::countr_zero(bucketCount);
  used_ = groups_ = 0;
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
void SlotTable::fill(std::size_t bucket, std::uint32_t hash, int head) {
  const int lane = std::countr_zero(lanesEqual(tags_[bucket].of, kEmpty));
  tags_[bucket].of[lane] = tagOf(hash);
  entries_[bucket].hash[lane] = hash;
  entries_[bucket].head[lane] = head;
  ++used_;
  ++groups_;
}

std::uint32_t SlotTable::put(int slot, std::uint32_t hash) {
  const auto number = static_cast<std::size_t>(slot);
  std::uint32_t before = kNotFiled;
  if (number == hashes_.size()) {
    hashes_.push_back(hash);
  } else {
    hashes_.resize(std::max(number + 1, hashes_.size()), kNotFiled);
    before = remove(slot);
    hashes_[number] = hash;
  }
  const Place place = find(hash);
  if (place.lane != kNowhere) {
    twins_.add(entries_[place.bucket].head[place.lane], slot);
    return before;
  }
  fill(place.bucket, hash, slot);
  if (used_ > tags_.size() * 5) {
    refill(tags_.size() * (groups_ * 2 > used_ ? 2 : 1));
  }
  return before;
}

std::uint32_t SlotTable::remove(int slot) {
  const std::uint32_t hash = hashOf(slot);
  if (hash == kNotFiled) {
    return hash;
  }
  hashes_[static_cast<std::size_t>(slot)] = kNotFiled;
  const Place place = find(hash);
  // A mark has to stay in a full bucket, for the entries that have moved on; and in the others,
  // because lanes fill in order.
  if (!twins_.remove(entries_[place.bucket].head[place.lane], slot)) {
    tags_[place.bucket].of[place.lane] = kErased;
    --groups_;
  }
  return hash;
}

bool SlotTable::validate() const {
  std::size_t found = 0;
  for (std::size_t i = 0; i < tags_.size(); ++i) {
    for (int lane = 0; lane < kLanes; ++lane) {
      const std::uint32_t hash = entries_[i].hash[lane];
      const int head = entries_[i].head[lane];
      const auto isFalse = [&](int slot) {
        ++found;
        return slot < head || hashOf(slot) != hash;
      };
      if (tags_[i].of[lane] > kErased && (tags_[i].of[lane] != tagOf(hash) ||
                                          find(hash).bucket != i || twins_.any(head, isFalse))) {
        return false;
      }
    }
  }
  const auto filed = std::count_if(hashes_.begin(), hashes_.end(),
                                   [](std::uint32_t hash) { return hash != kNotFiled; });
  return found == static_cast<std::size_t>(filed);
}

}  // namespace zel
