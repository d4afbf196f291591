#pragma once

#include <array>
#include <vector>

#include "tools/view/pictures/camera.h"
#include "tools/view/pictures/draw_options.h"
#include "tools/view/pictures/scene_lines.h"
#include "tools/view/pictures/scene_mesh.h"
#include "tools/view/pictures/texture.h"

namespace zel::view {

/// Draws one scene into the OpenGL context that is current from construction to destruction. What
/// has been drawn once is kept in display lists of that context.
class ScenePainter {
 public:
  /// @param scene   must outlive the painter.
  /// @param texture empty: a checker pattern stands in.
  ScenePainter(const SceneMesh& scene, const TextureImage& texture);
  ~ScenePainter();
  ScenePainter(const ScenePainter&) = delete;
  ScenePainter& operator=(const ScenePainter&) = delete;

  /// Paints background and scene over the whole drawing area.
  void draw(const DrawOptions& options, const Camera& camera, ViewSize size);
  /// @return number of boundary edges.
  [[nodiscard]] std::size_t boundaryCount();

 private:
  enum Layer {
    kFlatFaces,
    kSmoothFaces,
    kTexturedFlatFaces,
    kTexturedSmoothFaces,
    kEdges,
    kBoundary,
    kNormals,
    kLayers
  };

  void callLayer(Layer layer);
  void record(Layer layer);
  void drawFlatFaces() const;
  void drawCorners(bool smooth, bool textured) const;
  void drawEdges(const std::vector<Edge>& edges) const;
  void drawNormals();
  void drawPoints(float size) const;
  [[nodiscard]] Layer faceLayer(const DrawOptions& options) const;
  void drawFaces(const DrawOptions& options);
  void pushFacesBack(const DrawOptions& options);
  void drawLines(const DrawOptions& options);
  const EdgeLists& edgeLists();

  const SceneMesh& scene_;
  TextureImage texture_;
  unsigned textureName_ = 0;
  std::array<unsigned, kLayers> lists_{};
  bool hasEdges_ = false;
  EdgeLists edges_;
};

}  // namespace zel::view
