#pragma once

#include <array>
#include <cstring>
#include <vector>

#include "geometry/random_geometry.h"
#include "zel/geometry/matrices.h"
#include "zel/geometry/rectangles.h"
#include "zel/geometry/rotations.h"

namespace zel::test {

/// The four corners of a rectangle, to be compared as one value.
using Corners = std::vector<Double3>;

inline Corners corners(const RectangleD& r) {
  return {widen(r.corner0), widen(r.corner1), widen(r.corner2), widen(r.corner3)};
}

/// Sixteen floats by columns; a call takes it wherever it takes a float[16].
struct Matrix : std::array<float, 16> {
  operator const float*() const { return data(); }  // NOLINT(google-explicit-constructor)
  operator float*() { return data(); }              // NOLINT(google-explicit-constructor)
};

inline bool sameBits(const Matrix& a, const Matrix& b) {
  return std::memcmp(a.data(), b.data(), sizeof a) == 0;
}

/// The matrix that a function of the library writes into its last argument.
template <class Function, class... Arguments>
Matrix made(Function* make, const Arguments&... arguments) {
  Matrix m;
  make(arguments..., m);
  return m;
}

inline Float3 moved(const float m[16], Double3 p) {
  Float3 out = narrow(p);
  slMatrix16MultiPoint3(m, out);
  return out;
}

inline Float3 turned(const float m[16], Double3 v) {
  Float3 out = narrow(v);
  slMatrix16MultiVector3(m, out);
  return out;
}

/// A turn about any axis, then a move by up to `extent` along each.
inline Matrix randomMotion(RandomGeometry& random, double extent) {
  const Matrix turn =
      made(slGenerateRotateMatrix, narrow(random.direction()), random.number(-4, 4));
  const Matrix move = made(slGenerateMoveMatrix, narrow(random.point(extent)), 1.0F);
  return made(slMultiMatrix, move, turn);
}

}  // namespace zel::test
