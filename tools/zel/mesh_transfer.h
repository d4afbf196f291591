#pragma once

#include <functional>
#include <optional>
#include <string>

#include "tools/zel/command.h"
#include "tools/zel/mesh_nodes.h"
#include "tools/zel/welding.h"

namespace zel::program {

/// The options of every subcommand that takes one mesh in and gives one mesh out.
class MeshTransfer {
 public:
  /// Adds INPUT, OUTPUT, --from, --to, --ascii, --in-place and the options of welding.
  void declare(Options& options, Welding::When welds = Welding::When::kAsked);

  /// What the input is called in messages.
  [[nodiscard]] const std::string& input() const { return input_; }
  /// Reads the input, and welds it where that is asked for.
  /// @throws Failure: code 2 when neither or both of OUTPUT and --in-place are given, or OUTPUT is
  ///         the input.
  [[nodiscard]] Mesh read(const Console& console);
  /// What welding did to the mesh that was read; nothing when it was not asked for.
  [[nodiscard]] const std::optional<WeldReport>& welded() const { return welded_; }
  /// Colours and materials of the mesh that was read; they are written with it.
  [[nodiscard]] Appearance& looks() { return looks_; }
  [[nodiscard]] bool writesStandardOutput() const { return output_ == "-"; }
  /// For a second output, which must not take the mesh's place. @throws Failure (code 2).
  void expectOtherFile(const std::string& second) const;
  /// @throws Failure.
  void write(const Mesh& mesh, const Console& console) const;
  /// Writes the mesh and a text beside it; neither when the second file cannot be written.
  /// @param second file of the text; empty: there is none. @throws Failure.
  void write(const Mesh& mesh, const std::string& second, const std::function<std::string()>& text,
             const Console& console) const;

 private:
  void write(const Mesh& mesh, const std::function<void()>& beforeItAppears,
             const Console& console) const;

  std::string input_;
  std::string output_;
  std::string from_;
  std::string to_;
  bool inPlace_ = false;
  bool ascii_ = false;
  Welding welding_;
  std::optional<WeldReport> welded_;
  Appearance looks_;
};

}  // namespace zel::program
