#pragma once

#include <array>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

#include "tools/view/pictures/camera.h"
#include "tools/view/pictures/draw_options.h"
#include "tools/view/pictures/lighting.h"
#include "tools/view/pictures/occlusion.h"
#include "tools/view/pictures/scalar_field.h"
#include "tools/view/pictures/scene_lines.h"
#include "tools/view/pictures/scene_mesh.h"
#include "tools/view/pictures/surface.h"
#include "tools/view/pictures/texture.h"

namespace zel::view {

/// What a person has picked out; it is drawn in yellow, over everything.
struct Selection {
  std::optional<std::uint32_t> face;  ///< of the scene
  std::optional<int> node;
};

/// Draws one scene into the OpenGL context that is current from construction to destruction. What
/// has been drawn once is kept in display lists of that context.
class ScenePainter {
 public:
  /// @param scene   must outlive the painter.
  /// @param texture empty: a checker pattern stands in.
  /// @throws GraphicsError when OpenGL is older than 2.0.
  ScenePainter(const SceneMesh& scene, const TextureImage& texture);
  ~ScenePainter();
  ScenePainter(const ScenePainter&) = delete;
  ScenePainter& operator=(const ScenePainter&) = delete;

  /// What measureOcclusion() is to be given with the scene.
  [[nodiscard]] const Surface& surface() const { return surface_; }
  /// @param occlusion of surface().
  void setOcclusion(Occlusion occlusion);
  void setSelection(const Selection& selection) { selection_ = selection; }

  /// Paints background and scene over a drawing area.
  /// @param left pixels of the drawing buffer to the left of the area.
  void draw(const DrawOptions& options, const Camera& camera, ViewSize size, int left = 0);

  [[nodiscard]] const EdgeLists& edges();
  /// The numbers that the colours show, measured when first asked for.
  [[nodiscard]] const ScalarField& scalars(Colouring colouring);

 private:
  enum Layer { kEdges, kFeatures, kBoundary, kNormals, kLayers };
  /// Smooth, textured, shaded by occlusion, coloured.
  using FaceKey = std::tuple<bool, bool, bool, Colouring>;

  [[nodiscard]] FaceKey faceKey(const DrawOptions& options);
  [[nodiscard]] bool isColoured(const DrawOptions& options);
  /// Faces that are drawn with one texture.
  struct FaceGroup {
    unsigned texture;  ///< OpenGL's name, or 0
    unsigned list;
  };
  const std::vector<FaceGroup>& faceGroups(const FaceKey& key);
  void recordFaces(const FaceKey& key, int texture);
  [[nodiscard]] Colour cornerColour(const FaceKey& key, std::size_t face,
                                    const std::array<float, 2>& shares);
  [[nodiscard]] int textureOf(const FaceKey& key, std::size_t face) const;
  unsigned textureName(int texture);
  void callLayer(Layer layer, const DrawOptions& options);
  void record(Layer layer, const DrawOptions& options);
  void drawEdges(const std::vector<Edge>& edges) const;
  void drawFeatures(double angle);
  void drawNormals();
  void drawPoints(const DrawOptions& options) const;
  void drawFaces(const DrawOptions& options);
  void pushFacesBack(const DrawOptions& options);
  void drawLines(const DrawOptions& options);
  void drawDefects(const DrawOptions& options) const;
  void drawSelection(const DrawOptions& options) const;
  void dropFaceLists();

  const SceneMesh& scene_;
  const Surface surface_;
  FaceLight light_;
  Occlusion occlusion_;
  Selection selection_;
  TextureImage texture_;
  std::map<int, unsigned> textureNames_;
  std::map<FaceKey, std::vector<FaceGroup>> faceGroups_;
  std::array<unsigned, kLayers> lists_{};
  double recordedAngle_ = 0;  ///< of the list of features
  std::optional<EdgeLists> edges_;
  std::map<Colouring, ScalarField> scalars_;
};

}  // namespace zel::view
