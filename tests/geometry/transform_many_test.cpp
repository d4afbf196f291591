#include "zel/geometry/detail/transform_many.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "geometry/random_geometry.h"
#include "support/bits.h"
#include "zel/geometry/matrices.h"

namespace {

using zel::test::samePoint;

/// A record as a mesh holds it: something before, a point, a normal, something after.
struct Record {
  char tag;
  float point[3];
  float normal[3];
  char guard;
};

std::vector<Record> randomRecords(zel::test::RandomGeometry& random, std::size_t count) {
  const float special[]{0.0F, -0.0F, INFINITY, -INFINITY, 3e38F, 1e-45F};
  std::vector<Record> records(count);
  for (Record& record : records) {
    record.tag = record.guard = 'g';
    for (int i = 0; i < 3; ++i) {
      const auto pick = static_cast<std::size_t>(random.number(0, 60));
      record.point[i] = pick < 6 ? special[pick] : static_cast<float>(random.number(-9, 9));
      record.normal[i] = pick > 54 ? special[60 - pick] : static_cast<float>(random.number(-1, 1));
    }
  }
  return records;
}

void randomMatrix(zel::test::RandomGeometry& random, float m[16]) {
  for (int k = 0; k < 16; ++k) {
    m[k] = random.number(0, 1) < 0.2 ? 0.0F : static_cast<float>(random.number(-2, 2));
  }
}

TEST(TransformMany, equalsOneByOneToTheBit) {
  zel::test::RandomGeometry random(101);
  for (std::size_t count = 0; count < 40; ++count) {
    float m[16];
    randomMatrix(random, m);
    const std::vector<Record> before = randomRecords(random, count);
    std::vector<Record> both = before, points = before, normals = before;
    float* const none = nullptr;
    const auto run = [&](std::vector<Record>& records, bool ofPoints) {
      float* first = records.empty() ? none
                     : ofPoints      ? records.front().point
                                     : records.front().normal;
      return zel::VectorRun{first, count, sizeof(Record)};
    };
    zel::transformPoints(m, run(points, true));
    zel::transformDirections(m, run(normals, false));
    zel::transformPointsAndDirections(m, run(both, true), run(both, false).first);
    for (std::size_t i = 0; i < count; ++i) {
      Record expected = before[i];
      slMatrix16MultiPoint3(m, expected.point);
      slMatrix16MultiVector3(m, expected.normal);
      EXPECT_TRUE(samePoint(points[i].point, expected.point));
      EXPECT_TRUE(samePoint(points[i].normal, before[i].normal));
      EXPECT_TRUE(samePoint(normals[i].normal, expected.normal));
      EXPECT_TRUE(samePoint(normals[i].point, before[i].point));
      EXPECT_TRUE(samePoint(both[i].point, expected.point) &&
                  samePoint(both[i].normal, expected.normal));
      EXPECT_EQ(both[i].tag + both[i].guard, 2 * 'g');
    }
  }
}

TEST(TransformMany, packedPointsEndAtTheirLastFloat) {
  zel::test::RandomGeometry random(102);
  float m[16];
  randomMatrix(random, m);
  for (std::size_t count = 1; count < 9; ++count) {
    std::vector<float> points(3 * count, 2.0F);  // exactly as long as the points: no room to spill
    zel::transformPoints(m, {points.data(), count});
    const float one[3]{2, 2, 2};
    float expected[3];
    slMatrix16MultiPoint3(m, one, expected);
    for (std::size_t i = 0; i < count; ++i) {
      EXPECT_TRUE(samePoint(&points[3 * i], expected));
    }
  }
}

}  // namespace
