#include "zel/geometry/detail/transform_many.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "geometry/geometry_values.h"
#include "geometry/random_geometry.h"
#include "support/bits.h"

namespace {

using namespace zel::test;  // NOLINT

/// A record as a mesh holds it: something before, a point, a normal, something after.
struct Record {
  char tag = 'g';
  Float3 point, normal;
  char guard = 'g';
};

bool isRecordOf(const Record& record, const Float3& point, const Float3& normal) {
  return samePoint(record.point, point) && samePoint(record.normal, normal) && record.tag == 'g' &&
         record.guard == 'g';
}

Float3 oddPoint(RandomGeometry& random) {
  const float special[]{0.0F, -0.0F, INFINITY, -INFINITY, 3e38F, 1e-45F};
  Float3 p;
  for (float& component : p) {
    const auto pick = static_cast<std::size_t>(random.number(0, 60));
    component = pick < std::size(special) ? special[pick] : random.number(-9, 9);
  }
  return p;
}

Matrix randomMatrix(RandomGeometry& random) {
  Matrix m;
  std::generate(m.begin(), m.end(),
                [&] { return random.number(0, 1) < 0.2 ? 0.0F : random.number(-2, 2); });
  return m;
}

TEST(TransformMany, equalsOneByOneToTheBit) {
  RandomGeometry random(101);
  for (std::size_t count = 0; count < 40; ++count) {
    const Matrix m = randomMatrix(random);
    std::vector<Record> before(count + 1);  // the last is no part of the runs
    for (Record& record : before) {
      record.point = oddPoint(random);
      record.normal = oddPoint(random);
    }
    std::vector<Record> both = before, points = before, normals = before;
    zel::transformPoints(m, {points[0].point, count, sizeof(Record)});
    zel::transformDirections(m, {normals[0].normal, count, sizeof(Record)});
    zel::transformPointsAndDirections(m, {both[0].point, count, sizeof(Record)}, both[0].normal);
    for (std::size_t i = 0; i <= count; ++i) {
      const Record& old = before[i];
      Record transformed = old;
      if (i < count) {
        slMatrix16MultiPoint3(m, transformed.point);
        slMatrix16MultiVector3(m, transformed.normal);
      }
      EXPECT_TRUE(isRecordOf(points[i], transformed.point, old.normal));
      EXPECT_TRUE(isRecordOf(normals[i], old.point, transformed.normal));
      EXPECT_TRUE(isRecordOf(both[i], transformed.point, transformed.normal));
    }
  }
}

TEST(TransformMany, packedPointsEndAtTheirLastFloat) {
  RandomGeometry random(102);
  const Matrix m = randomMatrix(random);
  for (std::size_t count = 1; count < 9; ++count) {
    std::vector<float> points(3 * count, 2.0F);  // exactly as long as the points: no room to spill
    zel::transformPoints(m, {points.data(), count});
    for (std::size_t i = 0; i < count; ++i) {
      EXPECT_TRUE(samePoint(&points[3 * i], moved(m, {2, 2, 2})));
    }
  }
}

}  // namespace
