#include "zel/containers/detail/point_grid.h"

#include <limits>
#include <utility>

namespace zel {

namespace {

// The reach on both sides of a point must never span three cells.
constexpr double kSmallestCellInReaches = 2.5;
// Where the reach is nothing, cells still need some size.
constexpr double kSmallestCell = 1e-30;
// Entries per bucket at which the table grows.
constexpr double kFill = 2.4;

// No two finite points lie as far apart.
constexpr double kFarthestApart = 1e40;

constexpr std::size_t kSampleSize = 64;
constexpr PointGrid::Point kNotANumber{std::numeric_limits<float>::quiet_NaN(),
                                       std::numeric_limits<float>::quiet_NaN(),
                                       std::numeric_limits<float>::quiet_NaN()};

bool isFinite(const float* p) {
  return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

}  // namespace

PointGrid::PointGrid(double reach)
    : reach_(std::min(reach, kFarthestApart)),
      smallestCell_(std::max(kSmallestCellInReaches * reach_, kSmallestCell)),
      farthest_(reach_ * 0x1p24) {}  // floats beyond lie farther apart than the reach

PointGrid::Bucket::Bucket() {
  for (int lane = 0; lane < kLanes; ++lane) {
    marks[lane] = 0;
    put(lane, kEmpty, kNotANumber);
  }
}

void PointGrid::Bucket::put(int lane, std::uint32_t slot, const Point& p) {
  x[lane] = p[0];
  y[lane] = p[1];
  z[lane] = p[2];
  setSlot(lane, slot);
}

// In a full bucket a mark has to stay: entries that moved on must still be found.
void PointGrid::Bucket::take(int lane) {
  if (isFull()) {
    put(lane, kErased, kNotANumber);
    return;
  }
  int last = lane;
  while (last + 1 < kLanes && slotOf(last + 1) != kEmpty) {
    ++last;
  }
  put(lane, slotOf(last), pointOf(last));
  put(last, kEmpty, kNotANumber);
}

// --- cells -------------------------------------------------------------------------------------

void PointGrid::setCell(double cell) {
  cell_ = cell;
  perCell_ = 1.0 / cell;
  inner_ = 0.5 - reach_ * perCell_ - 1e-6;
}

// About one point per cell, for points spread over a surface.
double PointGrid::idealCell(std::vector<Point> sample, std::size_t count) const {
  if (sample.empty() || count == 0) {
    return std::max(64 * smallestCell_, 1e-6);
  }
  // A tenth at either end is left out: strays must not set the scale.
  std::array<double, 3> extent;
  const std::size_t low = sample.size() / 10;
  const std::size_t high = sample.size() - 1 - low;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    std::sort(sample.begin(), sample.end(),
              [=](const Point& a, const Point& b) { return a[axis] < b[axis]; });
    extent[axis] = double{sample[high][axis]} - sample[low][axis];
  }
  std::sort(extent.begin(), extent.end());
  const double n = static_cast<double>(count);
  const double spacing = std::max(std::sqrt(extent[2] * extent[1] / n), extent[2] / n);
  return std::max(2 * spacing, smallestCell_);
}

std::vector<PointGrid::Point> PointGrid::sampleEntries() const {
  std::vector<Point> sample;
  const std::size_t stride = std::max<std::size_t>(buckets_.size() / kSampleSize, 1);
  for (std::size_t i = 0; i < buckets_.size(); i += stride) {
    const Bucket& bucket = buckets_[i];
    if (bucket.isTaken(0)) {
      sample.push_back(bucket.pointOf(0));
    }
  }
  return sample;
}

PointGrid::Homes PointGrid::homesAround(const float* p) const {
  std::uint64_t ends[3][2];
  for (int axis = 0; axis < 3; ++axis) {
    const double reach = std::fabs(p[axis]) > farthest_ ? 0.0 : reach_;
    ends[axis][0] = cellOf(p[axis] - reach);
    ends[axis][1] = cellOf(p[axis] + reach);
  }
  Homes homes{{}, 0};
  for (int corner = 0; corner < 8; ++corner) {
    std::uint64_t cell[3];
    bool isNew = true;
    for (int axis = 0; axis < 3; ++axis) {
      const bool isHigh = (corner >> axis & 1) != 0;
      isNew = isNew && !(isHigh && ends[axis][1] == ends[axis][0]);
      cell[axis] = ends[axis][isHigh ? 1 : 0];
    }
    if (isNew) {
      const std::size_t home = homeOf(cell[0], cell[1], cell[2]);
      zel::prefetch(&buckets_[home]);
      homes.buckets[static_cast<std::size_t>(homes.count++)] = home;
    }
  }
  return homes;
}

// --- the table ---------------------------------------------------------------------------------

void PointGrid::clear() {
  buckets_ = {};
  crowds_ = {};
  twins_.clear();
  used_ = entries_ = size_ = overflowed_ = 0;
}

void PointGrid::start(std::size_t count, std::vector<Point> sample) {
  clear();
  std::erase_if(sample, [](const Point& p) { return !isFinite(p.data()); });
  const auto wanted = static_cast<std::size_t>(static_cast<double>(count) / kFill) + 16;
  refill(std::bit_ceil(wanted), idealCell(std::move(sample), count));
}

bool PointGrid::isTooFull() const { return cell_ > smallestCell_ && overflowed_ > entries_ + 256; }

// Moves all entries to a table of the given size; into smaller cells where they crowd.
void PointGrid::refill(std::size_t bucketCount, double cell) {
  const std::vector<Bucket> buckets = std::exchange(buckets_, {});
  const std::unordered_map<std::size_t, Crowd> crowds = std::exchange(crowds_, {});
  for (double shrink = 4;; shrink *= 2) {
    buckets_.assign(bucketCount, Bucket());
    crowds_.clear();
    shift_ = 64 - std::countr_zero(bucketCount);
    setCell(cell);
    used_ = entries_ = overflowed_ = 0;
    if (placeAll(buckets, crowds)) {
      return;
    }
    cell = std::max(cell / shrink, smallestCell_);
  }
}

// False when the cells turn out too large.
bool PointGrid::placeAll(const std::vector<Bucket>& buckets,
                         const std::unordered_map<std::size_t, Crowd>& crowds) {
  for (const Bucket& bucket : buckets) {
    for (int lane = 0; lane < kLanes; ++lane) {
      if (bucket.isTaken(lane)) {
        const Point p = bucket.pointOf(lane);
        place(homeOf(p.data()), static_cast<int>(bucket.slotOf(lane)), p);
      }
    }
    if (isTooFull()) {
      return false;
    }
  }
  for (const auto& [home, crowd] : crowds) {
    for (const Entry& entry : crowd) {
      placeOrJoin(entry.slot, entry.point);
    }
  }
  return true;
}

void PointGrid::makeRoom() {
  const double limit = kFill * static_cast<double>(buckets_.size());
  if (isTooFull()) {
    refill(buckets_.size(), std::max(cell_ / 4, smallestCell_));
  } else if (static_cast<double>(used_) >= limit) {
    const bool isGrowing = static_cast<double>(entries_) > limit / 2;
    const double ideal = idealCell(sampleEntries(), entries_ * 2);
    const bool isFit = cell_ > ideal / 4 && cell_ < ideal * 3;
    refill(buckets_.size() * (isGrowing ? 2 : 1), isFit ? cell_ : ideal);
  }
}

PointGrid::Place PointGrid::find(std::size_t home, const float* p) const {
  std::size_t i = home;
  for (int run = 0; run < kLongestRun; ++run, i = nextOf(i)) {
    const Bucket& bucket = buckets_[i];
    if (const unsigned same = lanesAt(bucket.x, bucket.y, bucket.z, p); same != 0) {
      return {i, std::countr_zero(same)};
    }
    if (!bucket.hasOverflowed()) {
      break;
    }
  }
  return {i, kNowhere};
}

PointGrid::Crowd::const_iterator PointGrid::placeIn(const Crowd& crowd, int slot) {
  return std::lower_bound(crowd.begin(), crowd.end(), slot,
                          [](const Entry& entry, int number) { return entry.slot < number; });
}

// Whether one point may be near both p and an entry. Larger differences overflow a float.
bool PointGrid::hasRival(const Bucket& bucket, const Point& p) const {
  constexpr double kMeasurable = 1e37;
  return reach_ > kMeasurable ||
         lanesInBox(bucket.x, bucket.y, bucket.z, p.data(),
                    static_cast<float>(2.02 * reach_) + std::numeric_limits<float>::min()) != 0;
}

// Puts an entry for a new position into the first free lane, or into the crowd.
void PointGrid::place(std::size_t home, int slot, const Point& p) {
  std::size_t i = home;
  for (int run = 0; run < kLongestRun; ++run, i = nextOf(i)) {
    Bucket& bucket = buckets_[i];
    for (int lane = 0; lane < kLanes; ++lane) {
      if (!bucket.isTaken(lane)) {
        used_ += bucket.slotOf(lane) == kEmpty ? 1U : 0U;
        ++entries_;
        bucket.put(lane, static_cast<std::uint32_t>(slot), p);
        if (bucket.hasOverflowed()) {
          bucket.setRivalled();
        }
        return;
      }
    }
    bucket.setOverflowed();
    if (!bucket.isRivalled() && hasRival(bucket, p)) {
      bucket.setRivalled();
    }
    ++overflowed_;
  }
  Crowd& crowd = crowds_[home];
  crowd.insert(placeIn(crowd, slot), {slot, p});
  buckets_[home].setCrowded();
  buckets_[home].setRivalled();
}

// @return whether the position is a new one.
bool PointGrid::placeOrJoin(int slot, const Point& p) {
  const std::size_t home = homeOf(p.data());
  const Place twin = find(home, p.data());
  if (twin.lane == kNowhere) {
    place(home, slot, p);
    return true;
  }
  Bucket& bucket = buckets_[twin.bucket];
  auto head = static_cast<int>(bucket.slotOf(twin.lane));
  twins_.add(head, slot);
  bucket.setSlot(twin.lane, static_cast<std::uint32_t>(head));
  return false;
}

void PointGrid::insert(int slot, const float* p) {
  if (!isFinite(p)) {
    return;
  }
  ++size_;
  if (placeOrJoin(slot, {p[0], p[1], p[2]})) {
    makeRoom();
  }
}

void PointGrid::erase(int slot, const float* p) {
  if (!isFinite(p)) {
    return;
  }
  --size_;
  const std::size_t home = homeOf(p);
  const Place place = find(home, p);
  auto head = place.lane == kNowhere ? kNowhere
                                     : static_cast<int>(buckets_[place.bucket].slotOf(place.lane));
  if (head != slot && !twins_.isBelowHead(slot)) {
    Crowd& crowd = crowds_.find(home)->second;
    crowd.erase(placeIn(crowd, slot));
    return;
  }
  Bucket& bucket = buckets_[place.bucket];
  if (twins_.remove(head, slot)) {
    bucket.setSlot(place.lane, static_cast<std::uint32_t>(head));
    return;
  }
  used_ -= bucket.isFull() ? 0U : 1U;
  --entries_;
  bucket.take(place.lane);
}

// --- checks ------------------------------------------------------------------------------------

bool PointGrid::holds(int slot, const float* p) const {
  const std::size_t home = homeOf(p);
  const auto isSlot = [slot](int other) { return other == slot; };
  if (const Place place = find(home, p);
      place.lane != kNowhere &&
      twins_.any(static_cast<int>(buckets_[place.bucket].slotOf(place.lane)), isSlot)) {
    return true;
  }
  const auto found = crowds_.find(home);
  if (found == crowds_.end() || !buckets_[home].isCrowded()) {
    return false;
  }
  const auto entry = placeIn(found->second, slot);
  return entry != found->second.end() && entry->slot == slot &&
         std::equal(p, p + 3, entry->point.begin());
}

bool PointGrid::isReachable(std::size_t bucket, int lane) const {
  std::size_t i = homeOf(buckets_[bucket].pointOf(lane).data());
  for (int run = 1; run < kLongestRun && i != bucket && buckets_[i].hasOverflowed(); ++run) {
    i = nextOf(i);
  }
  return i == bucket;
}

bool PointGrid::validate() const {
  std::size_t used = 0;
  std::size_t entries = 0;
  std::size_t slots = 0;
  for (std::size_t i = 0; i < buckets_.size(); ++i) {
    const Bucket& bucket = buckets_[i];
    for (int lane = 0; lane < kLanes; ++lane) {
      const bool isInOrder = lane == 0 || bucket.slotOf(lane - 1) != kEmpty;
      used += bucket.slotOf(lane) != kEmpty ? 1U : 0U;
      if (!bucket.isTaken(lane)) {
        continue;
      }
      ++entries;
      const auto head = static_cast<int>(bucket.slotOf(lane));
      const auto isBelow = [&](int slot) {
        ++slots;
        return slot < head;
      };
      if (!isInOrder || !isReachable(i, lane) || twins_.any(head, isBelow)) {
        return false;
      }
    }
  }
  for (const auto& [home, crowd] : crowds_) {
    slots += crowd.size();
    const bool isAscending = std::is_sorted(
        crowd.begin(), crowd.end(), [](const Entry& a, const Entry& b) { return a.slot < b.slot; });
    if (!isAscending || !buckets_[home].isCrowded()) {
      return false;
    }
  }
  return used == used_ && entries == entries_ && slots == size_;
}

}  // namespace zel
