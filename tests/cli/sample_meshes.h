#pragma once

#include <sstream>
#include <string>

namespace zel::test {

/// A tetrahedron as OBJ, with one vertex that no face uses and one that repeats another.
inline std::string tetrahedronObj() {
  return "# a comment\n"
         "v 0 0 0\nv 1.25 0 0\nv 0 1.0000001 0\nv 0 0 -0.333333343\nv 9 9 9\nv 1.25 0 0\n"
         "f 1 3 2\nf 1 2 4\nf 2 3 4\nf 3 1 4\n";
}

/// An open sheet of rows x columns squares in the plane z = x * y, as OBJ.
/// @param quads whether each square is one quad or two triangles.
inline std::string sheetObj(int rows, int columns, bool quads) {
  std::ostringstream text;
  text.precision(9);
  for (int row = 0; row <= rows; ++row) {
    for (int column = 0; column <= columns; ++column) {
      const float x = static_cast<float>(column) * 0.7F;
      const float y = static_cast<float>(row) / 3.0F;
      text << "v " << x << " " << y << " " << x * y << "\n";
    }
  }
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      const int a = row * (columns + 1) + column + 1;
      const int d = a + columns + 1;
      text << "f " << a << " " << a + 1 << " " << d + 1;
      if (!quads) {
        text << "\nf " << a << " " << d + 1;
      }
      text << " " << d << "\n";
    }
  }
  return text.str();
}

}  // namespace zel::test
