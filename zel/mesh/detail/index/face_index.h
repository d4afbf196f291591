#pragma once

/// @file
/// The index of a face list.

#include <algorithm>
#include <iterator>
#include <vector>

#include "zel/containers/detail/slot_index.h"
#include "zel/core/constants.h"
#include "zel/mesh/detail/index/candidates.h"
#include "zel/mesh/detail/index/corner_sets.h"
#include "zel/mesh/detail/index/incidence.h"
#include "zel/mesh/detail/index/slot_set.h"
#include "zel/mesh/triangle.h"

namespace zel {

/// Up to this many faces around one node the other node's are not asked for.
inline constexpr int kShortList = 16;

/// A face whose walk is half done, or a deleted one.
inline bool isOddTag(char tag) { return tag != kTagNotAvailable && tag != kTagAvailable; }

/// Names the faces that a search has to look at; see IndexedSlots. Three parts, each built when
/// first needed: faces around nodes, triangles by corner set, and slots with odd tags.
///
/// Answers may name faces that do not match, never leave one out; whoever asks looks at the faces.
/// Exposed slots are always named.
template <class Face>
class FaceIndex : public SlotIndex {
 public:
  void forget(const Face* faces, int slot);
  void learn(const Face* faces, int slot, bool isInList);
  void drop();
  [[nodiscard]] bool validate(const Face* faces, int bound) const;

  /// The slots that may have a node.
  [[nodiscard]] Candidates around(const Face* faces, int bound, int node) const;
  /// Asks `isEnough(slot)` about the triangles that may lie within three nodes, in no particular
  /// order, until it says yes. @return whether it did.
  template <class IsEnough>
  bool anyWithin(const Face* faces, int bound, const int* nodes, IsEnough isEnough) const;
  /// True: no triangle lies within three distinct nodes. False: that has to be looked for.
  [[nodiscard]] bool surelyLacks(const int* nodes) {
    CornerSets* sets = sets_.known();
    return sets != nullptr && exposed.slots().empty() && sets->surelyLacks(nodes);
  }
  /// The lowest slot with an odd tag, or kNoIndex.
  [[nodiscard]] int firstOddTag(const Face* faces, int bound) const;

 private:
  static constexpr int kCorners =
      std::remove_reference_t<decltype(std::declval<Face&>().record())>::kCorners;
  static constexpr int kWalks = 4;

  void learnCorners(const Face* faces, int slot, bool isKnown);
  [[nodiscard]] Candidates withExposed(Incidence::View view, int bound) const;

  LazyPart<Incidence> around_{kWalks};
  LazyPart<CornerSets> sets_{kWalks};
  LazyPart<SlotSet> oddTags_{kWalks};
  int forgotten_ = kNoIndex;  ///< slot whose corners before a change these are
  int oldCorners_[kCorners] = {};
};

template <class Face>
void FaceIndex<Face>::forget(const Face* faces, int slot) {
  if (!exposed.contains(slot)) {
    forgotten_ = slot;
    std::copy_n(faces[slot].record().corners, kCorners, oldCorners_);
  }
}

template <class Face>
void FaceIndex<Face>::learn(const Face* faces, int slot, bool isInList) {
  const bool isKnown = std::exchange(forgotten_, kNoIndex) == slot;
  CornerSets* const sets = sets_.known();
  if (SlotSet* tags = oddTags_.known()) {
    isInList&& isOddTag(faces[slot].IsAvailableM()) ? tags->insert(slot) : tags->erase(slot);
  }
  if (isInList) {
    learnCorners(faces, slot, isKnown);
  } else if (sets != nullptr) {
    sets->remove(slot);
  }
}

template <class Face>
void FaceIndex<Face>::learnCorners(const Face* faces, int slot, bool isKnown) {
  const auto& corners = faces[slot].record().corners;
  if (isKnown && std::equal(corners, corners + kCorners, oldCorners_)) {
    return;
  }
  if (CornerSets* sets = sets_.known()) {
    sets->put(slot, corners);
  }
  Incidence* const rows = around_.known();
  if (rows == nullptr) {
    return;
  }
  const int* old = oldCorners_;
  const int* oldEnd = old + (isKnown ? kCorners : 0);
  for (const int& corner : corners) {
    if (std::find(old, oldEnd, corner) == oldEnd &&
        std::find(&corners[0], &corner, corner) == &corner) {
      rows->add(corner, slot);
    }
  }
  for (; old != oldEnd; ++old) {
    if (std::find(corners, corners + kCorners, *old) == corners + kCorners) {
      rows->noteGone(*old);
    }
  }
  // Rows too few for the nodes, or more added than anybody searched for.
  if (rows->isOutgrown(slot + 1)) {
    around_.drop();
  }
}

template <class Face>
void FaceIndex<Face>::drop() {
  around_.drop();
  sets_.drop();
  oddTags_.drop();
}

template <class Face>
bool FaceIndex<Face>::validate(const Face* faces, int bound) const {
  const Incidence* rows = around_.known();
  const CornerSets* sets = sets_.known();
  const SlotSet* tags = oddTags_.known();
  for (int slot = 0; slot < bound; ++slot) {
    const auto& corners = faces[slot].record().corners;
    const bool isMissing =
        (rows != nullptr && !rows->isNamed(slot, corners, kCorners)) ||
        (sets != nullptr && !sets->isFiled(slot, corners)) ||
        (tags != nullptr && isOddTag(faces[slot].IsAvailableM()) && tags->nextFrom(slot) != slot);
    if (isMissing && !exposed.contains(slot)) {
      return false;
    }
  }
  return sets == nullptr || sets->validate();
}

template <class Face>
Candidates FaceIndex<Face>::around(const Face* faces, int bound, int node) const {
  const Incidence* rows =
      around_.ready(bound, [=](Incidence& content) { content.build(faces, bound); });
  if (rows == nullptr) {
    around_.budget.spend(bound);
    return Candidates::all(bound);
  }
  return withExposed(rows->around(faces, bound, node), bound);
}

template <class Face>
Candidates FaceIndex<Face>::withExposed(Incidence::View view, int bound) const {
  const std::vector<int>& loose = exposed.slots();
  if (loose.empty()) {
    return Candidates(view.slots, view.count);
  }
  try {
    std::vector<int> both;
    const auto end = std::lower_bound(loose.begin(), loose.end(), bound);
    std::set_union(view.slots, view.slots + view.count, loose.begin(), end,
                   std::back_inserter(both));
    return Candidates(std::move(both));
  } catch (const std::bad_alloc&) {
    return Candidates::all(bound);
  }
}

template <class Face>
template <class IsEnough>
bool FaceIndex<Face>::anyWithin(const Face* faces, int bound, const int* nodes,
                                IsEnough isEnough) const {
  const CornerSets* sets = sets_.ready(bound, [=](CornerSets& content) {
    content.reserve(bound);
    for (int slot = 0; slot < bound; ++slot) {
      content.put(slot, faces[slot].record().corners);
    }
  });
  if (sets != nullptr) {
    return sets->anyWithin(nodes, isEnough) || exposed.lowest(bound, isEnough) >= 0;
  }
  int slot = 0;
  while (slot < bound && !isEnough(slot)) {
    ++slot;
  }
  sets_.budget.spend(slot + 1);
  return slot < bound;
}

template <class Face>
int FaceIndex<Face>::firstOddTag(const Face* faces, int bound) const {
  const auto isOdd = [=](int slot) { return isOddTag(faces[slot].IsAvailableM()); };
  const SlotSet* tags = oddTags_.ready(bound, [=](SlotSet& content) {
    for (int slot = 0; slot < bound; ++slot) {
      if (isOdd(slot)) {
        content.insert(slot);
      }
    }
  });
  if (tags == nullptr) {
    int slot = 0;
    while (slot < bound && !isOdd(slot)) {
      ++slot;
    }
    oddTags_.budget.spend(slot + 1);
    return slot < bound ? slot : kNoIndex;
  }
  int first = tags->nextFrom(0);
  while (first >= 0 && first < bound && !isOdd(first)) {
    first = tags->nextFrom(first + 1);
  }
  first = first < 0 ? bound : std::min(first, bound);
  const int loose = exposed.lowest(first, isOdd);
  first = loose < 0 ? first : loose;
  return first < bound ? first : kNoIndex;
}

}  // namespace zel
