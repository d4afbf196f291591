#pragma once

#include "tools/view/pictures/camera.h"
#include "tools/view/pictures/draw_options.h"
#include "tools/view/pictures/picture.h"
#include "tools/view/pictures/scene_mesh.h"
#include "tools/view/pictures/texture.h"

namespace zel::view {

/// Sides that renderPicture() accepts, in pixels.
inline constexpr int kSmallestSide = 16;
inline constexpr int kLargestSide = 8192;

/// Draws a scene off-screen, with smoothed edges. Needs no display.
/// @param size    sides from kSmallestSide to kLargestSide.
/// @param texture empty: a checker pattern stands in when `options` wants a texture.
/// @throws GraphicsError when the machine has no OpenGL or not the memory.
[[nodiscard]] Picture renderPicture(const SceneMesh& scene, const TextureImage& texture,
                                    const Camera& camera, const DrawOptions& options,
                                    ViewSize size);

}  // namespace zel::view
