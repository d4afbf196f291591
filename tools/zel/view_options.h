#pragma once

#include <memory>
#include <string>

#include "tools/view/pictures/camera.h"
#include "tools/view/pictures/draw_options.h"
#include "tools/view/pictures/scene_mesh.h"
#include "tools/view/pictures/texture.h"
#include "tools/zel/console.h"
#include "tools/zel/mesh_nodes.h"
#include "tools/zel/options.h"
#include "tools/zel/welding.h"

namespace zel::program {

/// The options that pictures and the viewer share.
struct ViewOptions {
  /// Adds the options to a subcommand, those of welding among them.
  void declare(Options& options);

  /// @throws Failure (code 3) when the texture cannot be read.
  [[nodiscard]] view::TextureImage texture() const;
  /// Empty: none was named.
  [[nodiscard]] const std::string& textureFile() const { return textureFile_; }
  [[nodiscard]] view::DrawOptions drawOptions() const;
  /// The axis that was named; else z for formats of machines and printers (STL, 3MF), where it
  /// points up by custom, and y for all others.
  /// @param format of the mesh: "stl".
  [[nodiscard]] view::UpAxis upAxis(const std::string& format) const;
  [[nodiscard]] const Welding& welding() const { return welding_; }

 private:
  bool wireframe_ = false;
  bool smooth_ = false;
  bool edges_ = false;
  bool boundary_ = false;
  bool normals_ = false;
  bool features_ = false;
  bool defects_ = false;
  bool axes_ = false;
  bool grid_ = false;
  bool checker_ = false;
  bool unshaded_ = false;
  bool withoutShadow_ = false;
  double featureAngle_ = 30;
  std::string colouring_;
  std::string up_;
  std::string textureFile_;
  std::string background_;
  Welding welding_;
};

/// Makes a mesh ready for drawing.
[[nodiscard]] std::unique_ptr<view::SceneMesh> sceneOf(const Mesh& mesh);

/// Reads a mesh file with its colours, materials and the pictures that these name, and makes it
/// ready for drawing. A picture that cannot be had is told and left out.
/// @param format as readMesh() takes it. @param welding done first. @param withDefects whether they
/// are to be found as well.
/// @throws Failure or Error.
[[nodiscard]] std::unique_ptr<view::SceneMesh> readScene(const std::string& file,
                                                         const std::string& format,
                                                         const Welding& welding, bool withDefects,
                                                         const Console& console);

}  // namespace zel::program
