#include "tools/view/pictures/render.h"

#include <cstdint>

#include "tools/view/pictures/offscreen_context.h"
#include "tools/view/pictures/scene_painter.h"

namespace zel::view {
namespace {

constexpr int kFinest = 3;
// About 300 MB of colour and depth at most.
constexpr std::int64_t kMostSamples = std::int64_t{36} << 20;

// Samples along each side of a pixel.
int samplesFor(ViewSize size) {
  int samples = kFinest;
  while (samples > 1 && std::int64_t{size.width} * size.height * samples * samples > kMostSamples) {
    --samples;
  }
  return samples;
}

}  // namespace

Picture renderPicture(const SceneMesh& scene, const TextureImage& texture, const Camera& camera,
                      const DrawOptions& options, ViewSize size) {
  const int samples = samplesFor(size);
  const ViewSize sampled{size.width * samples, size.height * samples};
  const OffscreenContext context(sampled.width, sampled.height);
  DrawOptions fine = options;
  fine.lineScale *= static_cast<float>(samples);
  ScenePainter painter(scene, texture);
  if (options.faces && (options.occlusion || options.shadow)) {
    painter.setOcclusion(measureOcclusion(scene, painter.surface(), camera.up()));
  }
  painter.draw(fine, camera, sampled);
  return shrunk(readPixels(sampled.width, sampled.height), samples);
}

}  // namespace zel::view
