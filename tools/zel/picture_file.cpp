#include "tools/zel/picture_file.h"

#include <filesystem>

#include "tools/view/pictures/animation.h"
#include "tools/view/pictures/render.h"
#include "tools/zel/mesh_file.h"
#include "tools/zel/view_options.h"

namespace zel::program {

namespace {

constexpr view::ViewSize kDemoSize{960, 640};
// The side from which all three loops of the demo's knot are seen.
constexpr double kDemoYaw = 20;
constexpr double kDemoPitch = 44;

}  // namespace

bool isWebp(const std::string& file) {
  const std::string extension = std::filesystem::path(file).extension().string();
  return extension == ".webp" || extension == ".WEBP";
}

std::string pictureBytes(const view::Picture& picture, const std::string& file) {
  return isWebp(file) ? view::webpBytes(picture) : view::pngBytes(picture);
}

void writeBytes(const std::string& bytes, const std::string& file) {
  const std::unique_ptr<OutputFile> output = outputNamed(file);
  output->write(bytes);
  output->commit();
}

void writePicture(const view::Picture& picture, const std::string& file) {
  writeBytes(pictureBytes(picture, file), file);
}

view::Picture demoPicture(const Mesh& mesh) {
  const std::unique_ptr<view::SceneMesh> scene = sceneOf(mesh);
  view::DrawOptions options;
  options.smooth = true;
  options.boundary = true;
  view::Camera camera(view::UpAxis::kZ);
  camera.setAngles(kDemoYaw, kDemoPitch);
  camera.frame(scene->shownPoints(), kDemoSize);
  return view::renderPicture(*scene, {}, camera, options, kDemoSize);
}

}  // namespace zel::program
