// Point3DArr::AddPointM() answers as a walk over the slots would, whatever
// happened before.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <random>
#include <utility>
#include <vector>

#include "zel/containers/point3d_arr.h"

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
    }
    return point;
  }

  float spacing;
};

/// `count` points one apart along x, all known to the search.
Point3DArr searchedRow(int count, float y) {
  Point3DArr array;
  for (int i = 0; i < count; ++i) {
    array.AddPointM(Point{static_cast<float>(i), y, 0}.data());
  }
  EXPECT_EQ(array.AddPointM(Point{1, y, 0}.data()), 1);
  return array;
}

/// Pointers that a caller got and may write through until the store's length
/// changes.
class Pointers {
 public:
  void forgetAfterGrowth(const Point3DArr& array) {
    if (array.GetLengthM() != length_) {
      length_ = array.GetLengthM();
      held_.clear();
    }
  }
  void hold(float* slot) { held_.push_back(slot); }
  void writeThroughOne(const Point& point, Dice& random) {
    if (!held_.empty()) {
      std::copy(point.begin(), point.end(), held_[random() % held_.size()]);
    }
  }

 private:
  std::vector<float*> held_;
  int length_ = -1;
};

void changeSomehow(Point3DArr& array, Pointers& pointers, Dice& random) {
  const Point point = random.point();
  const int bound = std::max(array.GetBoundM(), 1);
  const int slot = static_cast<int>(random() % static_cast<unsigned>(bound + 2)) - 1;
  switch (random() % 14) {
    case 0:
    case 1:
      array.DelItemM(slot);
      break;
    case 2:
      array.DelItemM(bound - 1);
      break;
    case 3:
      array.SetItemM(point.data(), slot);
      break;
    case 4:
      array.SetItemZValueM(slot, point[2]);
      break;
    case 5:
      array.CancelLastItemM();
      break;
    case 6:
      array.InsertItemM(point.data(), random() % 4 == 0 ? slot : bound);
      break;
    case 7:
      if (slot >= 0 && random() % 3 == 0) {
        pointers.hold(array.GetItemPM(std::min(slot, bound - 1)));
      }
      break;
    case 8:
      array.AddItemM(point.data());
      break;
    default:
      pointers.writeThroughOne(point, random);
  }
}

/// Rare changes to the whole array.
void changeWholly(Point3DArr& array, Pointers& pointers, Dice& random) {
  switch (random() % 7) {
    case 0: {
      Point3DArr other(array);
      array = other;
      pointers = Pointers();
      break;
    }
    case 1: {
      Point3DArr other(std::move(array));
      array = std::move(other);
      break;
    }
    case 2: {
      Point3DArr tail;
      tail.AddItemM(random.point().data());
      tail.SetItemM(random.point().data(), 2);
      array.AppendPntsM(tail);
      break;
    }
    case 3:
      pointers.hold(array.getCurrentItemPrtM()[array.GetLengthM() / 2]);
      break;
    case 4:
      array.AddSizeM(5);
      break;
    case 5:
      array.DelAllVirtualM();
      break;
    default:
      array.DelAllM();
      pointers = Pointers();
  }
}

TEST(PointSearch, answersAsAWalkUnderAllChanges) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    static constexpr float kSpacings[] = {0.25F, 0.0002F, 0.01F, 1000.0F};
    Dice random(seed, kSpacings[seed % 4]);
    Point3DArr array;
    Pointers pointers;
    for (int step = 0; step < 1500; ++step) {
      pointers.forgetAfterGrowth(array);
      if (random() % 3 == 0) {
        changeSomehow(array, pointers, random);
      } else if (random() % 150 == 0) {
        changeWholly(array, pointers, random);
      }
      ASSERT_NO_FATAL_FAILURE(expectAddedAsByWalk(array, random.point()))
          << "seed " << seed << " step " << step;
    }
  }
}

TEST(PointSearch, welcomesUnorderedAndFarPoints) {
  Point3DArr array = searchedRow(100, 0);
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

TEST(PointSearch, assignmentReplacesWhatIsFound) {
  Point3DArr array = searchedRow(100, 0);
  const Point3DArr other = searchedRow(100, 5);
  array = other;
  EXPECT_EQ(array.AddPointM(Point{7, 0, 0}.data()), 100);
  array = searchedRow(80, 3);
  EXPECT_EQ(array.AddPointM(Point{7, 5, 0}.data()), 80);
  EXPECT_EQ(array.AddPointM(Point{7, 3, 0}.data()), 7);
}

TEST(PointSearch, seesWhatADumpReadOverIt) {
  Point3DArr array = searchedRow(100, 0);
  FILE* file = std::tmpfile();
  ASSERT_NE(file, nullptr);
  const float moved[2][3] = {{70, 1, 1}, {99, 0, 0}};
  std::fwrite(moved, sizeof moved, 1, file);
  std::rewind(file);
  array.FmInputLstM(file, 2);
  std::fclose(file);
  EXPECT_EQ(array.AddPointM(moved[1]), 1);
  EXPECT_EQ(array.AddPointM(moved[0]), 0);
  array.SetItemM(moved[0],
                 80);  // the old slots from 2 on lie below the bound again
  EXPECT_EQ(array.AddPointM(moved[1]), 1);
  EXPECT_EQ(array.AddPointM(Point{50, 0, 0}.data()), 50);
}

TEST(PointSearch, manyCoincidingPointsStillGiveTheFirst) {
  Point3DArr array;
  const float far[3] = {5, 5, 5};
  const float place[3] = {1, 1, 1};
  array.AddItemM(far);
  for (int i = 0; i < 3000; ++i) {
    array.AddItemM(place);
  }
  EXPECT_EQ(array.AddPointM(place), 1);
  array.DelItemM(1);
  EXPECT_EQ(array.AddPointM(place), 2);
  EXPECT_EQ(array.AddPointM(far), 0);
}

}  // namespace
