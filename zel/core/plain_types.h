#pragma once

/// @file
/// The small value types that the second storey shares.

#include <array>
#include <cstddef>
#include <span>

namespace zel {

/// Two single-precision numbers: a point in the plane or a texture coordinate (u, v).
using Float2 = std::array<float, 2>;
/// Three single-precision numbers: a point or a direction in space.
using Float3 = std::array<float, 3>;
/// Three double-precision numbers: a difference or a mean of points, before it is rounded.
using Double3 = std::array<double, 3>;

/// Rows of `kColumns` numbers that lie a fixed number of bytes apart inside larger records.
///
/// It owns nothing: it is valid as long as the records stay where they are.
template <class Number, std::size_t kColumns>
class StridedRows {
 public:
  /// One row, viewed in place.
  using Row = std::span<const Number, kColumns>;

  StridedRows() = default;
  /// @param first the first number of row 0; may be null when there are no rows.
  /// @param rows how many. @param stride bytes from one row to the next.
  StridedRows(const Number* first, std::size_t rows, std::size_t stride)
      : first_(first), rows_(rows), stride_(stride) {}

  /// @return the number of rows.
  [[nodiscard]] std::size_t size() const { return rows_; }
  /// @return whether there is no row.
  [[nodiscard]] bool empty() const { return rows_ == 0; }
  /// @return bytes from one row to the next.
  [[nodiscard]] std::size_t stride() const { return stride_; }
  /// @return the first number of row 0.
  [[nodiscard]] const Number* data() const { return first_; }
  /// @return one row; unchecked: row < size().
  [[nodiscard]] Row operator[](std::size_t row) const {
    const auto* bytes = reinterpret_cast<const std::byte*>(first_) + row * stride_;
    return Row(reinterpret_cast<const Number*>(bytes), kColumns);
  }

 private:
  const Number* first_ = nullptr;
  std::size_t rows_ = 0;
  std::size_t stride_ = 0;
};

}  // namespace zel
