#pragma once

#include <memory>

#include "tools/view/pictures/camera.h"
#include "tools/view/pictures/draw_options.h"
#include "tools/view/pictures/picture.h"
#include "tools/view/pictures/scene_mesh.h"
#include "tools/view/pictures/texture.h"

namespace zel::view {

/// Sides that pictures may have, in pixels.
inline constexpr int kSmallestSide = 16;
inline constexpr int kLargestSide = 8192;

/// Draws pictures of one scene off-screen, with smoothed edges, shade and shadow. Needs no display.
/// Only one may live on a thread at a time.
class Renderer {
 public:
  /// @param scene   must outlive the renderer.
  /// @param texture empty: the scene's own textures, or a checker pattern when it has none.
  /// @param up      the axis that points up: where the ground is.
  /// @param size    of the pictures, sides from kSmallestSide to kLargestSide.
  /// @throws GraphicsError when the machine has no OpenGL or not the memory.
  Renderer(const SceneMesh& scene, const TextureImage& texture, const DrawOptions& options,
           UpAxis up, ViewSize size);
  ~Renderer();
  Renderer(const Renderer&) = delete;
  Renderer& operator=(const Renderer&) = delete;

  [[nodiscard]] Picture draw(const Camera& camera);

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

/// Draws one picture. As Renderer.
[[nodiscard]] Picture renderPicture(const SceneMesh& scene, const TextureImage& texture,
                                    const Camera& camera, const DrawOptions& options,
                                    ViewSize size);

/// Draws the six sides of a scene in parallel, at one scale, in two rows: front, right and above
/// over back, left and below. As Renderer.
/// @param size of the whole sheet.
[[nodiscard]] Picture renderSheet(const SceneMesh& scene, const TextureImage& texture, UpAxis up,
                                  const DrawOptions& options, ViewSize size);

/// @return the camera moved and zoomed so that the scene stays in sight when it is turned all the
///         way about the up axis.
[[nodiscard]] Camera turntableCamera(const SceneMesh& scene, const Camera& start, ViewSize size);

}  // namespace zel::view
