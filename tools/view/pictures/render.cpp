#include "tools/view/pictures/render.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "tools/view/pictures/font.h"
#include "tools/view/pictures/offscreen_context.h"
#include "tools/view/pictures/scene_painter.h"

namespace zel::view {
namespace {

constexpr int kFinest = 3;
// About 300 MB of colour and depth at most.
constexpr std::int64_t kMostSamples = std::int64_t{36} << 20;

constexpr int kColumns = 3;
constexpr int kRows = 2;
struct Side {
  StandardView view;
  const char* name;
};
constexpr std::array<Side, std::size_t{kColumns * kRows}> kSides{
    {{StandardView::kFront, "front"},
     {StandardView::kRight, "right"},
     {StandardView::kTop, "above"},
     {StandardView::kBack, "back"},
     {StandardView::kLeft, "left"},
     {StandardView::kBottom, "below"}}};
constexpr int kLabelInset = 8;  // pixels
constexpr Colour kLabel{44, 50, 62, 255};
constexpr Colour kLabelOnDark{226, 231, 238, 255};

// Samples along each side of a pixel.
int samplesFor(ViewSize size) {
  int samples = kFinest;
  while (samples > 1 && std::int64_t{size.width} * size.height * samples * samples > kMostSamples) {
    --samples;
  }
  return samples;
}

}  // namespace

struct Renderer::Parts {
  Parts(const SceneMesh& scene, const TextureImage& texture, const DrawOptions& wanted,
        ViewSize size)
      : samples(samplesFor(size)),
        sampled{size.width * samples, size.height * samples},
        context(sampled.width, sampled.height),
        painter(scene, texture),
        options(wanted) {
    options.lineScale *= static_cast<float>(samples);
  }

  int samples;
  ViewSize sampled;
  OffscreenContext context;
  ScenePainter painter;
  DrawOptions options;
};

Renderer::Renderer(const SceneMesh& scene, const TextureImage& texture, const DrawOptions& options,
                   UpAxis up, ViewSize size)
    : parts_(std::make_unique<Parts>(scene, texture, options, size)) {
  if (options.faces && (options.occlusion || options.shadow)) {
    parts_->painter.setOcclusion(measureOcclusion(scene, parts_->painter.surface(), up));
  }
}

Renderer::~Renderer() = default;

Picture Renderer::draw(const Camera& camera) {
  const ViewSize size = parts_->sampled;
  parts_->painter.draw(parts_->options, camera, size);
  return shrunk(readPixels(size.width, size.height), parts_->samples);
}

Picture renderPicture(const SceneMesh& scene, const TextureImage& texture, const Camera& camera,
                      const DrawOptions& options, ViewSize size) {
  return Renderer(scene, texture, options, camera.up(), size).draw(camera);
}

Picture renderSheet(const SceneMesh& scene, const TextureImage& texture, UpAxis up,
                    const DrawOptions& options, ViewSize size) {
  // Rounded up, so that the sheet is full; the last ones may lose a line.
  const ViewSize tile{(size.width + kColumns - 1) / kColumns, (size.height + kRows - 1) / kRows};
  const std::vector<Vector3> points = scene.shownPoints();
  std::array<Camera, kSides.size()> cameras;
  double farthest = 0;
  for (std::size_t i = 0; i < kSides.size(); ++i) {
    cameras[i] = Camera(up);
    cameras[i].setOrthographic(true);
    cameras[i].setView(kSides[i].view);
    cameras[i].frame(points, tile);
    farthest = std::max(farthest, cameras[i].distance());
  }
  Renderer renderer(scene, texture, options, up, tile);
  Picture sheet{size.width, size.height, {}};
  sheet.rgba.resize(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) *
                    4);
  for (std::size_t i = 0; i < kSides.size(); ++i) {
    cameras[i].zoom(cameras[i].distance() / farthest);
    Picture picture = renderer.draw(cameras[i]);
    paste(picture, textPicture(kSides[i].name, options.isDark() ? kLabelOnDark : kLabel),
          kLabelInset, kLabelInset);
    paste(sheet, picture, static_cast<int>(i) % kColumns * tile.width,
          static_cast<int>(i) / kColumns * tile.height);
  }
  return sheet;
}

Camera turntableCamera(const SceneMesh& scene, const Camera& start, ViewSize size) {
  constexpr int kTurns = 24;
  const std::size_t axis = axisOf(start.up());
  const std::size_t across = axis == 2 ? 1 : 2;
  std::vector<Vector3> envelope;
  for (const Vector3& point : scene.shownPoints()) {
    const double radius = std::hypot(point[0], point[across]);
    for (int turn = 0; turn < kTurns; ++turn) {
      const double angle = 2 * std::numbers::pi * turn / kTurns;
      Vector3 turned{};
      turned[0] = static_cast<float>(radius * std::cos(angle));
      turned[across] = static_cast<float>(radius * std::sin(angle));
      turned[axis] = point[axis];
      envelope.push_back(turned);
    }
  }
  Camera camera = start;
  camera.frame(envelope, size);
  return camera;
}

}  // namespace zel::view
