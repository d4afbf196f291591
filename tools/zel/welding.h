#pragma once

#include <optional>
#include <string>

#include "tools/zel/console.h"
#include "tools/zel/options.h"
#include "tools/zel/report.h"
#include "zel/zel.h"

namespace zel::program {

/// Merging nodes that lie in one place, before the work of a subcommand: the options that it is
/// asked for with, and what a person is told about it.
class Welding {
 public:
  /// When nodes are merged.
  enum class When {
    kAsked,   ///< with --weld, or with a tolerance
    kAlways,  ///< it is what the subcommand does
  };

  /// Adds --weld, unless it always welds, --tolerance and --relative.
  void declare(Options& options, When when = When::kAsked);

  /// Welds a mesh if that was asked for; else tells when its faces share no nodes though they meet.
  /// @param file what the mesh is called in messages. @param looks follow the mesh; may be null.
  /// @return what was done; nothing when it was not asked for.
  /// @throws Error, and the mesh is as before.
  std::optional<WeldReport> apply(Mesh& mesh, const std::string& file, const Console& console,
                                  Appearance* looks = nullptr) const;

 private:
  [[nodiscard]] bool isAsked() const;
  [[nodiscard]] Tolerance tolerance() const;

  When when_ = When::kAsked;
  bool weld_ = false;
  std::optional<double> tolerance_;
  std::optional<double> relative_;
};

/// @return what welding did, in rows.
[[nodiscard]] Report reportOn(const WeldReport& weld);

}  // namespace zel::program
