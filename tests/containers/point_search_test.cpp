// Point3DArr::AddPointM() answers as a walk over the slots would, whatever
// happened before.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include "support/array_values.h"
#include "support/index_check.h"
#include "zel/containers/point3d_arr.h"

namespace zel::test {
namespace {

using Point = std::array<float, 3>;

constexpr float kMark = -1.0e18F;

/// The first slot below the bound within the tolerance on every axis; -1 when
/// there is none.
int firstByWalk(const Point3DArr& array, const Point& query) {
  const float(*store)[3] = array.getCurrentItemPrtConstM();
  for (int slot = 0; slot < array.GetBoundM(); ++slot) {
    bool isNear = true;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const double difference = static_cast<double>(store[slot][axis]) - query[axis];
      isNear = isNear && std::fabs(difference) < static_cast<double>(0.0001F);
    }
    if (isNear) {
      return slot;
    }
  }
  return -1;
}

/// Adds a point and compares with the walk.
void expectAddedAsByWalk(Point3DArr& array, const Point& point) {
  const int found = firstByWalk(array, point);
  const int end = std::max(array.GetBoundM(), 0);
  ASSERT_EQ(array.AddPointM(point.data()), found < 0 ? end : found);
}

struct Dice : std::mt19937 {
  Dice(unsigned seed, float latticeSpacing) : std::mt19937(seed), spacing(latticeSpacing) {}
  /// Points near the crossings of a small lattice, closer to them than the
  /// tolerance or just not; sometimes at the mark, where holes match.
  Point point() {
    static constexpr float kOffsets[] = {0, 0.00005F, -0.00005F, 0.0001F, -0.00009F};
    Dice& random = *this;
    Point point;
    for (float& coordinate : point) {
      coordinate = static_cast<float>(random() % 6) * spacing + kOffsets[random() % 5];
    }
    if (random() % 20 == 0) {
      point[0] = kMark;
    } else if (random() % 20 == 0) {
      static constexpr float kFar[] = {3e38F, -1e38F, 2.8e11F, 1.1e12F, 5000.0F};
      point[random() % 3] = kFar[random() % 5];
    }
    return point;
  }

  float spacing;
};

/// An array and the pointers that a caller got and may write through until its store changes.
struct Searched {
  Point3DArr array;
  Point3DArr kept;  ///< what the array was some time ago
  std::vector<float*> held;
  int length = -1;

  void dropPointersAfterGrowth() {
    if (array.GetLengthM() != length) {
      length = array.GetLengthM();
      held.clear();
    }
  }
  void changeSomehow(Dice& random) {
    const Point point = random.point();
    const int bound = std::max(array.GetBoundM(), 1);
    const int slot = static_cast<int>(random() % static_cast<unsigned>(bound + 2)) - 1;
    const std::function<void()> changes[] = {
        [&] { array.DelItemM(slot); },
        [&] { array.DelItemM(bound - 1); },
        [&] { array.SetItemM(point.data(), slot); },
        [&] { array.SetItemZValueM(slot, point[2]); },
        [&] { array.CancelLastItemM(); },
        [&] { array.InsertItemM(point.data(), random() % 4 == 0 ? slot : bound); },
        [&] { array.AddItemM(point.data()); },
        [&] {
          if (slot >= 0 && slot % 3 == 0) {
            held.push_back(array.GetItemPM(std::min(slot, array.GetLengthM() - 1)));
          }
        },
    };
    if (const std::size_t kind = random() % 14; kind < std::size(changes)) {
      changes[kind]();
    } else if (!held.empty()) {
      std::copy(point.begin(), point.end(), held[random() % held.size()]);
    }
  }
  void changeWholly(Dice& random, FILE* dump) {
    const auto replace = [&](Point3DArr by) {
      random() % 2 == 0 ? array = by : array = std::move(by);
      held.clear();
    };
    const std::function<void()> changes[] = {
        [&] { kept = array; },
        [&] { replace(kept); },
        [&] { replace(array); },
        [&] { replace(Point3DArr()); },
        [&] {
          array.AppendPntsM(arrayOf<Point3DArr>({random.point(), random.point()}));
        },
        [&] { array.AddSizeM(5); },
        [&] { array.DelAllVirtualM(); },
        [&] { held.push_back(array.getCurrentItemPrtM()[array.GetLengthM() / 2]); },
        [&] {
          array.DelAllM();
          held.clear();
        },
        [&] {
          std::rewind(dump);
          kept.FmOutputLstM(dump);
          std::rewind(dump);
          array.FmInputLstM(dump, kept.GetBoundM());
        },
    };
    changes[random() % std::size(changes)]();
  }
};

TEST(PointSearch, answersAsAWalkUnderAllChanges) {
  FILE* const dump = std::tmpfile();
  ASSERT_NE(dump, nullptr);
  for (unsigned seed = 1; seed <= 12; ++seed) {
    static constexpr float kSpacings[] = {0.25F, 0.0002F, 0.01F, 1000.0F};
    Dice random(seed, kSpacings[seed % 4]);
    Searched searched;
    for (int step = 0; step < 1500; ++step) {
      searched.dropPointersAfterGrowth();
      if (random() % 3 == 0) {
        searched.changeSomehow(random);
      } else if (random() % 100 == 0) {
        searched.changeWholly(random, dump);
      }
      ASSERT_NO_FATAL_FAILURE(expectAddedAsByWalk(searched.array, random.point()))
          << "seed " << seed << " step " << step;
      ASSERT_TRUE(step % 4 != 0 || IndexCheck::isTrue(searched.array))
          << "seed " << seed << " step " << step;
    }
  }
  std::fclose(dump);
}

TEST(PointSearch, welcomesUnorderedAndFarPoints) {
  Point3DArr array;
  for (int i = 0; i < 100; ++i) {
    array.AddPointM(Point{static_cast<float>(i), 0, 0}.data());
  }
  const float farthest = std::numeric_limits<float>::max();
  const float values[] = {INFINITY,  -INFINITY, std::nanf(""), farthest,
                          -farthest, kMark,     1e12F,         -0.0F};
  for (int round = 0; round < 2; ++round) {
    for (const float x : values) {
      for (const float y : values) {
        expectAddedAsByWalk(array, {x, y, x});
      }
    }
  }
  EXPECT_EQ(array.AddPointM(Point{0, 0, 0}.data()), 0);
}

TEST(PointSearch, aDenseHeapAfterAWideStartIsSearchedToo) {
  Dice random(12, 100.0F);
  Point3DArr array;
  for (int i = 0; i < 6000; ++i) {
    random.spacing = i < 60 ? 100.0F : 0.0005F;
    Point point = random.point();
    point[2] += static_cast<float>(i % 100) * 0.0003F;
    array.AddItemM(point.data());
    if (i % 20 == 0) {
      ASSERT_NO_FATAL_FAILURE(expectAddedAsByWalk(array, random.point())) << i;
    }
  }
}

TEST(PointSearch, manyCoincidingPointsStillGiveTheFirst) {
  Point3DArr array;
  const Point place{1, 1, 1};
  array.AddItemM(Point{5, 5, 5}.data());
  for (int i = 0; i < 3000; ++i) {
    array.AddItemM(place.data());
  }
  EXPECT_EQ(array.AddPointM(place.data()), 1);
  array.DelItemM(1);
  EXPECT_EQ(array.AddPointM(place.data()), 2);
}

}  // namespace
}  // namespace zel::test
