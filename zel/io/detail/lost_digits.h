#pragma once

/// @file
/// Whether single precision was fine enough for a mesh.

#include <algorithm>
#include <cmath>
#include <limits>

#include "zel/algorithms/measure.h"
#include "zel/io/detail/codec.h"

namespace zel {

/// Counts the points that lost more than a millionth of the mesh's size when their coordinates were
/// rounded to floats. That happens only far from the origin.
class LostDigits {
 public:
  explicit LostDigits(const Mesh& mesh) {
    constexpr double kFraction = 1e-6;
    const Bounds bounds = boundsOf(mesh);
    double largest = 0.0;
    for (const Float3& corner : {bounds.low, bounds.high}) {
      for (const float x : corner) {
        largest = std::max(largest, std::fabs(double{x}));
      }
    }
    limit_ = kFraction * bounds.diagonal();
    mayLose_ = largest * (std::numeric_limits<float>::epsilon() / 2.0) > limit_;
  }

  /// @return whether it is worth while to look at each point.
  [[nodiscard]] bool mayLose() const { return mayLose_; }
  /// @param point three coordinates as the file has them.
  void look(const double* point) {
    const bool loses = std::any_of(point, point + 3, [this](double x) {
      return std::fabs(x - static_cast<double>(static_cast<float>(x))) > limit_;
    });
    count_ += loses ? 1 : 0;
  }
  /// @param loss the greatest of a point's coordinates.
  void lookAt(double loss) { count_ += loss > limit_ ? 1 : 0; }
  void tell(Remarks& remarks) const {
    addRemark(remarks, Remark::Kind::kChanged, count_, "rounded", "point",
              "so far from the origin single precision loses more than a millionth of the size");
  }

 private:
  double limit_ = 0.0;
  bool mayLose_ = false;
  long long count_ = 0;
};

}  // namespace zel
