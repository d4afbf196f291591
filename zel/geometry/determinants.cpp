#include "zel/geometry/determinants.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <exception>
#include <utility>
#include <vector>

#include "zel/core/constants.h"
#include "zel/core/memory.h"
#include "zel/geometry/detail/scalars.h"

namespace {

/// Up to here the expansion is used; its memory doubles with every size.
constexpr int kLargestExpanded = 20;
/// The minors of a matrix up to this size fit on the stack.
constexpr int kLargestOnStack = 4;

/// Expansion along the first row of the minor that is left of m when only the columns in `columns`
/// and the last rows, as many, are kept. `minors` holds the values of all smaller ones.
float expandMinor(const float* m, int n, unsigned columns, const float* minors) {
  const int size = std::popcount(columns);
  const float* row = m + static_cast<std::size_t>(n - size) * static_cast<std::size_t>(n);
  if (size == 2) {  // as one difference, which may be -0
    const unsigned first = columns & (~columns + 1);
    const unsigned second = columns & ~first;
    return static_cast<float>(static_cast<double>(row[std::countr_zero(first)]) * minors[second] -
                              static_cast<double>(row[std::countr_zero(second)]) * minors[first]);
  }
  double sum = 0.0;
  double sign = 1.0;
  for (unsigned rest = columns; rest != 0; rest &= rest - 1) {
    const unsigned column = rest & (~rest + 1);
    const double value = row[std::countr_zero(rest)];
    sum += value * minors[columns & ~column] * sign;
    sign = -sign;
  }
  return static_cast<float>(sum);
}

/// Every minor that the expansion needs, once each, small before large.
float determinantByExpansion(const float* m, int n, float* minors) {
  const unsigned all = (1U << n) - 1;
  for (int i = 0; i < n; ++i) {
    minors[1U << i] = m[static_cast<std::size_t>(n) * static_cast<std::size_t>(n - 1) +
                        static_cast<std::size_t>(i)];
  }
  for (unsigned columns = 3; columns <= all; ++columns) {
    if (std::popcount(columns) > 1) {
      minors[columns] = expandMinor(m, n, columns, minors);
    }
  }
  return minors[all];
}

/// Gaussian elimination with partial pivoting.
float determinantByElimination(const float* m, int n) {
  const std::size_t size = static_cast<std::size_t>(n);
  std::vector<double> a(m, m + size * size);
  double product = 1.0;
  for (std::size_t k = 0; k < size; ++k) {
    std::size_t pivot = k;
    for (std::size_t row = k + 1; row < size; ++row) {
      if (std::abs(a[row * size + k]) > std::abs(a[pivot * size + k])) {
        pivot = row;
      }
    }
    if (a[pivot * size + k] == 0.0) {
      return 0.0F;
    }
    if (pivot != k) {
      std::swap_ranges(&a[k * size], &a[k * size] + size, &a[pivot * size]);
      product = -product;
    }
    product *= a[k * size + k];
    for (std::size_t row = k + 1; row < size; ++row) {
      const double factor = a[row * size + k] / a[k * size + k];
      for (std::size_t column = k + 1; column < size; ++column) {
        a[row * size + column] -= factor * a[k * size + column];
      }
    }
  }
  return static_cast<float>(product);
}

/// Determinant of a 3x3 matrix by the rule of Sarrus.
double determinant3(const double a[9]) {
  return a[0] * a[4] * a[8] + a[1] * a[5] * a[6] + a[2] * a[3] * a[7] - a[2] * a[4] * a[6] -
         a[1] * a[3] * a[8] - a[0] * a[5] * a[7];
}

}  // namespace

void slNewTrainM(const float* m, int col, int row, int n, float* out) {
  if (n < 1 || col < 0 || col >= n || row < 0 || row >= n) {
    return;
  }
  for (int r = 0; r < n; ++r) {
    for (int c = 0; c < n; ++c, ++m) {
      if (r != row && c != col) {
        *out++ = *m;
      }
    }
  }
}

float slValueOfTrainM(const float* m, int n) {
  if (n < 2) {
    return 0.0F;
  }
  try {
    if (n > kLargestExpanded) {
      return determinantByElimination(m, n);
    }
    if (n > kLargestOnStack) {
      std::vector<float> minors(std::size_t{1} << n);
      return determinantByExpansion(m, n, minors.data());
    }
  } catch (const std::exception&) {
    kwErrorMessage(zel::kOutOfMemory);
    return 0.0F;
  }
  float minors[1U << kLargestOnStack];
  return determinantByExpansion(m, n, minors);
}

int slSolveEquationGroup3(const double a[9], const double b[3], double x[3]) {
  const double determinant = determinant3(a);
  if (zel::deadAbs(determinant) <= zel::kTolerance) {
    return 0;
  }
  double solved[3];
  for (int column = 0; column < 3; ++column) {
    double replaced[9];
    std::copy_n(a, 9, replaced);
    for (int row = 0; row < 3; ++row) {
      replaced[3 * row + column] = b[row];
    }
    solved[column] = determinant3(replaced) / determinant;
  }
  std::copy_n(solved, 3, x);
  return 1;
}
