#pragma once

// The lists of nodes and faces as plain rows that every search walks from slot 0 up, for comparing
// the library's indexed lists with.

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "zel/core/constants.h"
#include "zel/geometry/geometry.h"

namespace zel::test {

template <class Element>
struct ListModel {
  using Row = Element;

  std::vector<Element> slots{4};
  int bound = 0;
  int available = 0;
  int increment = 10;

  [[nodiscard]] int length() const { return static_cast<int>(slots.size()); }
  Element& at(int slot) { return slots[static_cast<std::size_t>(slot)]; }
  [[nodiscard]] const Element& at(int slot) const { return slots[static_cast<std::size_t>(slot)]; }
  [[nodiscard]] bool isLive(int slot) const {
    return slot >= 0 && slot < bound && at(slot).tag == kTagAvailable;
  }
  /// The lowest slot of which `isWanted(slot)` holds, or kNoIndex.
  template <class Predicate>
  [[nodiscard]] int firstSlot(Predicate isWanted) const {
    for (int slot = 0; slot < bound; ++slot) {
      if (isWanted(slot)) {
        return slot;
      }
    }
    return kNoIndex;
  }
  void grow(int count) { slots.resize(slots.size() + static_cast<std::size_t>(count)); }

  void set(Element element, int slot) {
    if (slot >= length()) {
      grow(std::max(length(), slot - length() + 1));
    }
    if (at(slot).tag != kTagAvailable && element.tag == kTagAvailable) {
      ++available;
    }
    at(slot) = element;
    bound = std::max(bound, slot + 1);
  }
  int add(Element element) {
    set(element, bound);
    return bound - 1;
  }
  void insert(Element element, int position) {
    if (bound == length()) {
      set(element, bound);
    } else {
      ++bound;
      ++available;
    }
    for (int slot = bound - 1; slot > position; --slot) {
      at(slot) = at(slot - 1);
    }
    at(position) = element;
  }
  void remove(int slot) {
    if (isLive(slot)) {
      at(slot).tag = kTagDeleted;
      --available;
    }
    if (slot == bound - 1) {
      --bound;
    }
  }
};

struct ModelNode {
  signed char tag = kTagNotAvailable;
  std::array<float, 3> point{};
  std::array<float, 3> normal{};
};

struct NodeModel : ListModel<ModelNode> {
  [[nodiscard]] int merge(ModelNode node) {
    const int found = firstSlot([&](int slot) {
      return isLive(slot) && slIsEqualPoint3D(at(slot).point.data(), node.point.data()) == 1;
    });
    return found >= 0 ? found : add(node);
  }
  [[nodiscard]] int nearest(const float* p) const {
    float best = 1.0e18F;
    int winner = kNoIndex;
    for (int slot = 0; slot < bound; ++slot) {
      if (isLive(slot) && slDistance3(at(slot).point.data(), p) < best) {
        best = slDistance3(at(slot).point.data(), p);
        winner = slot;
      }
    }
    return winner;
  }
};

template <int kCount>
struct ModelFace {
  signed char tag = kTagNotAvailable;
  std::array<int, kCount> corners;
  ModelFace() { corners.fill(kNoIndex); }

  [[nodiscard]] int find(int node) const {
    const auto found = std::find(corners.begin(), corners.end(), node);
    return found == corners.end() ? -1 : static_cast<int>(found - corners.begin());
  }
  [[nodiscard]] int corner(int k) const {
    return corners[static_cast<std::size_t>((k + kCount) % kCount)];
  }
  [[nodiscard]] auto sorted() const {
    auto result = corners;
    std::sort(result.begin(), result.end());
    return result;
  }
  [[nodiscard]] bool isDegenerate() const {
    const auto nodes = sorted();
    return std::adjacent_find(nodes.begin(), nodes.end()) != nodes.end();
  }
  [[nodiscard]] bool runsAlong(int from, int to) const {
    for (int k = 0; k < kCount; ++k) {
      if (corner(k) == from && corner(k + 1) == to) {
        return true;
      }
    }
    return false;
  }
};

template <int kCount>
struct FaceModel : ListModel<ModelFace<kCount>> {
  using Face = ModelFace<kCount>;
  using ListModel<Face>::at;
  using ListModel<Face>::bound;
  using ListModel<Face>::available;
  using ListModel<Face>::firstSlot;
  using ListModel<Face>::isLive;
  static constexpr bool kIsTriangle = kCount == 3;

  // What matching corners means to a merge: nine pairs, exactly three of them equal.
  static int equalPairs(const Face& a, const Face& b) {
    int pairs = 0;
    for (const int x : a.corners) {
      pairs += static_cast<int>(std::count(b.corners.begin(), b.corners.end(), x));
    }
    return pairs;
  }
  int merge(Face face) {
    const auto isMatch = [&](int slot) { return equalPairs(at(slot), face) == 3; };
    if (kIsTriangle && (face.isDegenerate() || firstSlot(isMatch) >= 0)) {
      return 0;
    }
    this->add(face);
    return 1;
  }
  int findLast(const std::array<int, 3>& nodes) const {
    int result = -1;
    for (int slot = 0; slot < bound; ++slot) {
      const bool isWithin = std::ranges::all_of(at(slot).corners, [&](int corner) {
        return std::find(nodes.begin(), nodes.end(), corner) != nodes.end();
      });
      result = isWithin ? slot : result;
    }
    return result;
  }
  int findFirst(std::array<int, 3> nodes) const {
    std::sort(nodes.begin(), nodes.end());
    return firstSlot([&](int slot) { return at(slot).sorted() == nodes; });
  }
  std::vector<std::array<int, 2>> around(int node) const {
    std::vector<std::array<int, 2>> pairs;
    for (int slot = 0; slot < bound; ++slot) {
      if (at(slot).find(node) >= 0) {
        pairs.push_back({slot, at(slot).find(node)});
      }
    }
    return pairs;
  }
  int judgeBound(int a, int b, int* last) const {
    int count = 0;
    for (const auto& [slot, k] : around(a)) {
      if (at(slot).corner(k + 1) == b || at(slot).corner(k - 1) == b) {
        ++count;
        *last = slot;
      }
    }
    return count;
  }
  int oneBound(int previous, int* edge, int* last) const {
    int count = 0;
    bool joins = false;
    for (const auto& [slot, k] : around(edge[0])) {
      for (const int other : {at(slot).corner(k == 0 ? 1 : 0), at(slot).corner(k == 2 ? 1 : 2)}) {
        joins = joins || other == previous;
        if (other != previous && (count = judgeBound(edge[0], other, last)) == 1) {
          edge[1] = other;
          return 1;
        }
      }
    }
    edge[1] = joins ? previous : edge[1];
    return joins ? 1 : count;
  }
  int nextRelated(int skip, const int* edge, bool isDirected) const {
    return firstSlot([&](int slot) {
      const Face& face = at(slot);
      return slot != skip && isLive(slot) &&
             (face.runsAlong(edge[0], edge[1]) ||
              (!isDirected && face.runsAlong(edge[1], edge[0])));
    });
  }
  int cornerAfter(int node) const {
    const auto faces = around(node);
    return faces.empty() ? kNoIndex : at(faces[0][0]).corner(faces[0][1] + 1);
  }
  int firstOddTag() const {
    return firstSlot([&](int slot) { return at(slot).tag != 30 && at(slot).tag != 31; });
  }
  void rename(int from, int to) {
    for (const auto& [slot, k] : around(from)) {
      at(slot).corners[static_cast<std::size_t>(k)] = to;
      if (kIsTriangle && at(slot).isDegenerate()) {
        this->remove(slot);
      }
    }
  }
  void deleteAround(int node) {
    for (const auto& [slot, k] : around(node)) {
      if (isLive(slot)) {
        this->remove(slot);
      }
    }
  }
  void renumber(const std::vector<int>& map) {
    for (int slot = 0; slot < bound; ++slot) {
      if (!isLive(slot)) {
        continue;
      }
      for (int& corner : at(slot).corners) {
        const bool isMapped = corner >= 0 && corner < static_cast<int>(map.size());
        corner = isMapped ? map[static_cast<std::size_t>(corner)] : kNoIndex;
      }
      if (at(slot).isDegenerate()) {
        at(slot).tag = kTagNotAvailable;
        --available;
      }
    }
    int removed = 0;
    for (int slot = 0; slot < bound; ++slot) {
      if (!isLive(slot)) {
        ++removed;
      } else if (removed > 0) {
        at(slot - removed) = at(slot);
        at(slot).tag = kTagDeleted;
      }
    }
    bound -= removed;
    if (this->length() > 4 && bound <= 4) {
      this->slots.resize(static_cast<std::size_t>(bound));
      this->slots.resize(4);
    }
  }
  void purge() {
    if (available == bound) {
      return;
    }
    FaceModel fresh;
    for (int slot = 0; slot < bound; ++slot) {
      if (isLive(slot)) {
        fresh.add(at(slot));
      }
    }
    *this = fresh;
  }
};

}  // namespace zel::test
