#pragma once

/// @file
/// What the lists of triangles and of quads do alike. `Faces` is their IndexedSlots.

#include "zel/containers/detail/indexed_slots_impl.h"
#include "zel/core/constants.h"
#include "zel/mesh/detail/faces/face_record_ops.h"
#include "zel/mesh/detail/index/candidates.h"
#include "zel/mesh/detail/index/face_index.h"

namespace zel {

template <class Face>
using FaceSlots = IndexedSlots<Face, ElementPolicy, FaceIndex<Face>>;

/// Every face that has `node`, deleted ones too, among others that the caller has to rule out.
template <class Face>
Candidates facesAround(const FaceSlots<Face>& faces, int node) {
  const FaceIndex<Face>* index = faces.index();
  return index == nullptr ? Candidates::all(faces.count())
                          : index->around(faces.data(), faces.count(), node);
}

/// Every face that has both nodes, among others; the shorter of their two lists.
template <class Face>
Candidates facesAlong(const FaceSlots<Face>& faces, int a, int b) {
  Candidates aroundA = facesAround(faces, a);
  if (aroundA.size() <= kShortList || a == b) {
    return aroundA;
  }
  Candidates aroundB = facesAround(faces, b);
  return aroundB.size() < aroundA.size() ? std::move(aroundB) : std::move(aroundA);
}

template <class Face>
int countFacesAlong(const FaceSlots<Face>& faces, int a, int b, int* last) {
  const Candidates candidates = facesAlong(faces, a, b);
  int count = 0;
  for (int k = 0; k < candidates.size(); ++k) {
    const int slot = candidates[k];
    if (hasNeighbours(faces[slot].record(), a, b)) {
      *last = slot;
      ++count;
    }
  }
  return count;
}

template <class Face>
int cornerAfter(const FaceSlots<Face>& faces, int node) {
  const Candidates candidates = facesAround(faces, node);
  for (int k = 0; k < candidates.size(); ++k) {
    const auto& face = faces[candidates[k]].record();
    const int corner = cornerOf(face, node);
    if (corner != kNoIndex) {
      return face.corners[(corner + 1) % face.kCorners];
    }
  }
  return kNoIndex;
}

/// Whether every corner of the face is among three nodes.
inline bool liesWithin(const FaceRecord<3>& face, const int* nodes) {
  return std::all_of(face.corners, face.corners + 3,
                     [=](int corner) { return std::find(nodes, nodes + 3, corner) != nodes + 3; });
}

/// Asks `isEnough(slot)` about every face that lies within three nodes, deleted ones too, in no
/// particular order, until it says yes. @return whether it did.
template <class Face, class IsEnough>
bool anyFaceWithin(const FaceSlots<Face>& faces, const int* nodes, IsEnough isEnough) {
  const auto matches = [&](int slot) {
    return slot < faces.count() && liesWithin(faces[slot].record(), nodes) && isEnough(slot);
  };
  if (const FaceIndex<Face>* index = faces.index()) {
    return index->anyWithin(faces.data(), faces.count(), nodes, matches);
  }
  for (int slot = 0; slot < faces.count(); ++slot) {
    if (matches(slot)) {
      return true;
    }
  }
  return false;
}

/// The lowest slot whose tag is neither 30 nor 31, or kNoIndex.
template <class Face>
int firstOddTag(const FaceSlots<Face>& faces) {
  if (const FaceIndex<Face>* index = faces.index()) {
    return index->firstOddTag(faces.data(), faces.count());
  }
  for (int slot = 0; slot < faces.count(); ++slot) {
    if (isOddTag(faces[slot].IsAvailableM())) {
      return slot;
    }
  }
  return kNoIndex;
}

/// Renames the first corner `oldNode` of every face. `renamed(slot)` hears of each face changed
/// and may delete it.
template <class Face, class Renamed>
void renameNode(FaceSlots<Face>& faces, int oldNode, int newNode, Renamed renamed) {
  // The renaming itself changes the lists of the index.
  const Candidates candidates = facesAround(faces, oldNode).detached(faces.count());
  for (int k = 0; k < candidates.size() && candidates[k] < faces.count(); ++k) {
    const int slot = candidates[k];
    const int corner = cornerOf(faces[slot].record(), oldNode);
    if (corner != kNoIndex) {
      faces.change(slot, [&](Face& face) { face.record().corners[corner] = newNode; });
      renamed(slot);
    }
  }
}

/// Inserts a face, growing a full store by the increment.
template <class Face>
void insertFace(FaceSlots<Face>& faces, const Face& face, int position) {
  if (position < 0 || position > faces.count()) {
    return;
  }
  if (faces.count() == faces.length()) {
    faces.addSize(faces.increment());
  }
  faces.insert(face, position);
}

/// Changes the normal of every slot below the bound, deleted ones too.
template <class Face, class Change>
void changeEveryNormal(FaceSlots<Face>& faces, Change change) {
  Face* store = faces.changeUnindexed();
  for (int slot = 0; slot < faces.count(); ++slot) {
    change(store[slot].record());
  }
}

/// Renumbers the live faces and squeezes out everything else, collapsed ones included.
template <class Face>
void renumberAndCompact(FaceSlots<Face>& faces, const IntArr& map) {
  auto& store = faces.changeAll();
  for (int slot = 0; slot < faces.count(); ++slot) {
    if (slot + kFacesAhead < faces.count()) {
      prefetchCorners(store[slot + kFacesAhead].record(), map);
    }
    if (faces.isLive(slot) && store[slot].ResetNodeIdxM(map) == 0) {
      store[slot].SetDeleteTagM(kTagNotAvailable);
      store.setAvailable(store.available() - 1);
    }
  }
  int removed = 0;
  for (int slot = 0; slot < faces.count(); ++slot) {
    if (!faces.isLive(slot)) {
      ++removed;
    } else if (removed > 0) {
      store[slot - removed] = store[slot];
      store[slot].DelItemM();
    }
  }
  store.setBound(faces.count() - removed);
  if (faces.length() > store.kInlineLength && faces.count() <= store.kInlineLength) {
    returnInline(faces);
  }
}

/// Takes the few faces that are left out of the heap block and gives the block back.
template <class Face>
void returnInline(FaceSlots<Face>& faces) {
  typename FaceSlots<Face>::Store home;
  std::copy_n(faces.data(), faces.count(), home.data());
  home.setBound(faces.count());
  home.setAvailable(faces.available());
  home.setIncrement(faces.increment());
  faces.replace(std::move(home));
}

}  // namespace zel
