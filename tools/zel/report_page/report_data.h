#pragma once

#include <string>

#include "tools/zel/console.h"
#include "tools/zel/json.h"
#include "zel/zel.h"

namespace zel::program {

/// The cube about the origin into which the page moves everything it draws, so that any scale and
/// any distance from the origin can be drawn in single precision.
struct ReportFrame {
  Double3 centre{};
  double scale = 1;  ///< half a diagonal
};

/// @return the frame that fits a mesh.
[[nodiscard]] ReportFrame frameOf(const Mesh& mesh);

/// All that the page knows about one mesh: facts, histograms, defects with their places, what is
/// drawn, and the unfolding. Figures are those of the whole mesh, also where what is drawn is
/// thinned. @param name what the page calls it.
[[nodiscard]] Json reportData(const Mesh& mesh, const std::string& name, const ReportFrame& frame,
                              std::size_t mostFaces, const Console& console);

}  // namespace zel::program
