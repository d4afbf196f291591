#pragma once

/// @file
/// The index of a face list.

#include <algorithm>
#include <iterator>
#include <vector>

#include "zel/core/constants.h"
#include "zel/mesh/detail/candidates.h"
#include "zel/mesh/detail/corner_sets.h"
#include "zel/mesh/detail/exposed_slots.h"
#include "zel/mesh/detail/incidence.h"
#include "zel/mesh/detail/slot_set.h"
#include "zel/mesh/triangle.h"

namespace zel {

/// Up to this many faces around one node the other node's are not asked for.
inline constexpr int kShortList = 16;

/// A face whose walk is half done, or a deleted one.
inline bool isOddTag(char tag) { return tag != kTagNotAvailable && tag != kTagAvailable; }

/// Names the faces that a search has to look at. Three parts, each built when first needed: faces
/// around nodes, triangles by corner set, and slots with odd tags.
///
/// Answers may name faces that do not match, never leave one out; whoever asks looks at the faces.
/// Slots of which callers hold references are always named.
template <class Face>
class FaceIndex {
 public:
  // What IndexedSlots tells; see there.
  [[nodiscard]] bool expose(const Face* /*faces*/, int slot, int bound) {
    return exposed_.add(slot, bound);
  }
  void forget(const Face* faces, int slot);
  void learn(const Face* faces, int slot, bool isInList);
  void drop();
  void storeMoved(const Face* faces, int bound);

  /// The slots that may have a node.
  [[nodiscard]] Candidates around(const Face* faces, int bound, int node);
  /// Asks `isEnough(slot)` about the triangles that may lie within three nodes, in no particular
  /// order, until it says yes. @return whether it did.
  template <class IsEnough>
  bool anyWithin(const Face* faces, int bound, const int* nodes, IsEnough isEnough);
  /// True: no triangle lies within three distinct nodes. False: that has to be looked for.
  [[nodiscard]] bool surelyLacks(const int* nodes) {
    return sets_.isBuilt && exposed_.slots().empty() && sets_.content.surelyLacks(nodes);
  }
  /// The lowest slot with an odd tag, or kNoIndex.
  [[nodiscard]] int firstOddTag(const Face* faces, int bound);

 private:
  static constexpr bool kIsTriangle = std::is_same_v<Face, TriangleCL>;
  static constexpr int kCorners =
      std::remove_reference_t<decltype(std::declval<Face&>().record())>::kCorners;

  /// One part of the index and what it has cost to do without it.
  template <class Content>
  struct Part {
    Content content;
    bool isBuilt = false;
    WalkBudget budget{4};

    void drop() {
      content.clear();
      isBuilt = false;
      budget.restart();
    }
    /// Builds when it pays. @return whether the content may be used.
    template <class Build>
    bool isReady(int bound, Build build) {
      if (!isBuilt && budget.spend(bound, bound)) {
        try {
          build(content);
          isBuilt = true;
        } catch (const std::bad_alloc&) {
          drop();
        }
      }
      return isBuilt;
    }
  };

  void learnCorners(const Face* faces, int slot, bool isKnown);
  [[nodiscard]] Candidates withExposed(Incidence::View view, int bound) const;

  ExposedSlots exposed_;
  Part<Incidence> around_;
  Part<CornerSets> sets_;
  Part<SlotSet> oddTags_;
  int forgotten_ = kNoIndex;  ///< slot whose corners before a change these are
  int oldCorners_[kCorners] = {};
};

template <class Face>
void FaceIndex<Face>::forget(const Face* faces, int slot) {
  if (!exposed_.contains(slot)) {
    forgotten_ = slot;
    std::copy_n(faces[slot].record().corners, kCorners, oldCorners_);
  }
}

template <class Face>
void FaceIndex<Face>::learn(const Face* faces, int slot, bool isInList) {
  const bool isKnown = std::exchange(forgotten_, kNoIndex) == slot;
  if (exposed_.contains(slot)) {
    return;
  }
  if (!isInList) {
    sets_.content.remove(slot);
    oddTags_.content.erase(slot);
    return;
  }
  try {
    if (oddTags_.isBuilt && isOddTag(faces[slot].IsAvailableM())) {
      oddTags_.content.insert(slot);
    } else {
      oddTags_.content.erase(slot);
    }
    learnCorners(faces, slot, isKnown);
  } catch (const std::bad_alloc&) {
    drop();
  }
}

template <class Face>
void FaceIndex<Face>::learnCorners(const Face* faces, int slot, bool isKnown) {
  const auto& corners = faces[slot].record().corners;
  if (isKnown && std::equal(corners, corners + kCorners, oldCorners_)) {
    return;
  }
  if (sets_.isBuilt) {
    sets_.content.put(slot, corners);
  }
  if (!around_.isBuilt) {
    return;
  }
  const int* old = oldCorners_;
  const int* oldEnd = old + (isKnown ? kCorners : 0);
  for (const int& corner : corners) {
    if (std::find(old, oldEnd, corner) == oldEnd &&
        std::find(&corners[0], &corner, corner) == &corner) {
      around_.content.add(corner, slot);
    }
  }
  for (; old != oldEnd; ++old) {
    if (std::find(corners, corners + kCorners, *old) == corners + kCorners) {
      around_.content.noteGone(*old);
    }
  }
  // Nobody may ever search, yet changes go on.
  if (around_.content.isOutgrown(0)) {
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
void FaceIndex<Face>::storeMoved(const Face* faces, int bound) {
  for (const int slot : exposed_.takeAll()) {
    learn(faces, slot, slot < bound);
  }
}

template <class Face>
Candidates FaceIndex<Face>::around(const Face* faces, int bound, int node) {
  if (around_.isBuilt && around_.content.isOutgrown(bound)) {
    around_.drop();
  }
  const bool isReady =
      around_.isReady(bound, [=](Incidence& content) { content.build(faces, bound); });
  return isReady ? withExposed(around_.content.around(faces, bound, node), bound)
                 : Candidates::all(bound);
}

template <class Face>
Candidates FaceIndex<Face>::withExposed(Incidence::View view, int bound) const {
  const std::vector<int>& exposed = exposed_.slots();
  if (exposed.empty()) {
    return Candidates(view.slots, view.count);
  }
  try {
    std::vector<int> both;
    const auto end = std::lower_bound(exposed.begin(), exposed.end(), bound);
    std::set_union(view.slots, view.slots + view.count, exposed.begin(), end,
                   std::back_inserter(both));
    return Candidates(std::move(both));
  } catch (const std::bad_alloc&) {
    return Candidates::all(bound);
  }
}

template <class Face>
template <class IsEnough>
bool FaceIndex<Face>::anyWithin(const Face* faces, int bound, const int* nodes, IsEnough isEnough) {
  const bool isReady = sets_.isReady(bound, [=](CornerSets& content) {
    content.reserve(bound);
    for (int slot = 0; slot < bound; ++slot) {
      content.put(slot, faces[slot].record().corners);
    }
  });
  if (isReady) {
    return sets_.content.anyWithin(nodes, isEnough) ||
           std::any_of(exposed_.slots().begin(), exposed_.slots().end(),
                       [&](int slot) { return slot < bound && isEnough(slot); });
  }
  for (int slot = 0; slot < bound; ++slot) {
    if (isEnough(slot)) {
      return true;
    }
  }
  return false;
}

template <class Face>
int FaceIndex<Face>::firstOddTag(const Face* faces, int bound) {
  const auto isOdd = [=](int slot) { return isOddTag(faces[slot].IsAvailableM()); };
  const bool isReady = oddTags_.isReady(bound, [=](SlotSet& content) {
    for (int slot = 0; slot < bound; ++slot) {
      if (isOdd(slot)) {
        content.insert(slot);
      }
    }
  });
  if (!isReady) {
    int slot = 0;
    while (slot < bound && !isOdd(slot)) {
      ++slot;
    }
    return slot < bound ? slot : kNoIndex;
  }
  int first = oddTags_.content.nextFrom(0);
  while (first >= 0 && first < bound && !isOdd(first)) {
    first = oddTags_.content.nextFrom(first + 1);
  }
  first = first < 0 ? bound : std::min(first, bound);
  for (const int slot : exposed_.slots()) {
    if (slot < first && isOdd(slot)) {
      first = slot;
      break;
    }
  }
  return first < bound ? first : kNoIndex;
}

}  // namespace zel
