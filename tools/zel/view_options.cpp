#include "tools/zel/view_options.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <optional>

#include "tools/view/pictures/image_file.h"
#include "tools/view/pictures/scene_looks.h"
#include "tools/zel/failure.h"
#include "tools/zel/input_file.h"
#include "tools/zel/mesh_file.h"

namespace zel::program {

namespace {

constexpr const char* kDarkGround = "dark";

std::optional<view::Colour> parseColour(const std::string& text) {
  if (text == "white") {
    return view::Colour{255, 255, 255, 255};
  }
  if (text == "black") {
    return view::Colour{0, 0, 0, 255};
  }
  if (text == "transparent") {
    return view::Colour{0, 0, 0, 0};
  }
  unsigned value = 0;
  const char* const end = text.data() + text.size();
  if (text.size() != 7 || text[0] != '#' ||
      std::from_chars(text.data() + 1, end, value, 16).ptr != end) {
    return std::nullopt;
  }
  return view::Colour{static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8),
                      static_cast<std::uint8_t>(value), 255};
}

std::string checkColour(const std::string& text) {
  return parseColour(text) || text == kDarkGround
             ? ""
             : "'" + text + "' is neither #rrggbb nor a colour's name";
}

// A picture that a mesh file holds or names, relative to the file's own folder.
view::TextureImage readTexture(const Material& material, const std::string& meshFile) {
  if (!material.textureBytes.empty()) {
    return view::decodeImage({reinterpret_cast<const char*>(material.textureBytes.data()),
                              material.textureBytes.size()});
  }
  std::string name = material.texture;
  std::replace(name.begin(), name.end(), '\\', '/');
  const std::filesystem::path path = std::filesystem::path(meshFile).parent_path() / name;
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) {
    throw view::ImageError("there is no such file");
  }
  return view::readImage(path.string());
}

}  // namespace

void ViewOptions::declare(Options& options) {
  welding_.declare(options);
  options.flag("--wireframe", wireframe_, "Edges without faces");
  options.flag("--smooth", smooth_, "Smooth faces where they meet at less than 40 degrees");
  options.flag("--edges", edges_, "Draw the edges of faces");
  options.flag("--features", features_, "Draw the edges between faces that meet at an angle");
  options.value("--feature-angle", "DEGREES", featureAngle_, "That angle, from 0 to 180")
      .within(0, 180);
  options.flag("--boundary", boundary_, "Draw the edges of exactly one face in colour");
  options.flag("--defects", defects_, "Draw each class of defects in a colour of its own");
  options.flag("--normals", normals_, "Draw the normals");
  options.flag("--axes", axes_, "Draw a cross of the axes");
  options.flag("--grid", grid_, "Draw a grid on the ground");
  options.value("--colour", "WHAT", colouring_, "Colours that tell this")
      .oneOf({"edge-length", "face-area", "texture-stretch"});
  options.value("--texture", "FILE", textureFile_,
                "Lay this PNG, JPEG or BMP picture over the texture coordinates");
  options.flag("--checker", checker_, "Lay a checker pattern over the texture coordinates");
  options.value("--up", "AXIS", up_, "Axis of the mesh that points up")
      .oneOf({"y", "z"})
      .byDefault("z for STL and 3MF, else y");
  options.value("--background", "COLOUR", background_, "#rrggbb, white, black, dark or transparent")
      .checkedBy(checkColour);
  options.flag("--no-shade", unshaded_, "Leave hollows as light as the rest");
  options.flag("--no-shadow", withoutShadow_, "No shadow on the ground");
}

view::TextureImage ViewOptions::texture() const {
  if (textureFile_.empty()) {
    return {};
  }
  const InputFile input(textureFile_);
  try {
    return view::readImage(input.path());
  } catch (const view::ImageError& error) {
    throw unreadable(textureFile_, error.what());
  }
}

view::UpAxis ViewOptions::upAxis(const std::string& format) const {
  const bool isZ = up_.empty() ? format == "stl" || format == "3mf" : up_ == "z";
  return isZ ? view::UpAxis::kZ : view::UpAxis::kY;
}

view::DrawOptions ViewOptions::drawOptions() const {
  view::DrawOptions options;
  options.faces = !wireframe_;
  options.smooth = smooth_;
  options.textured = checker_ || !textureFile_.empty();
  options.edges = edges_ || wireframe_;
  options.boundary = boundary_;
  options.features = features_;
  options.featureAngle = featureAngle_;
  options.defects = defects_;
  options.normals = normals_;
  options.axes = axes_;
  options.grid = grid_;
  options.occlusion = !unshaded_;
  options.shadow = !withoutShadow_;
  options.colouring = colouring_ == "edge-length"       ? view::Colouring::kEdgeLength
                      : colouring_ == "face-area"       ? view::Colouring::kFaceArea
                      : colouring_ == "texture-stretch" ? view::Colouring::kStretch
                                                        : view::Colouring::kOwn;
  options.setDark(background_ == kDarkGround);
  if (const auto colour = parseColour(background_)) {
    options.backgroundTop = options.backgroundBottom = *colour;
  }
  return options;
}

std::unique_ptr<view::SceneMesh> sceneOf(const Mesh& mesh) {
  return std::make_unique<view::SceneMesh>(mesh);
}

std::unique_ptr<view::SceneMesh> readScene(const std::string& file, const std::string& format,
                                           const Welding& welding, bool withDefects,
                                           const Console& console) {
  Appearance looks;
  Mesh mesh = readMesh(file, format, console, &looks);
  welding.apply(mesh, file, console, &looks);
  auto scene = sceneOf(mesh);
  giveLooks(*scene, looks, [&](const Material& material) {
    try {
      return readTexture(material, file);
    } catch (const view::ImageError& error) {
      console.note(file + ": picture " + material.texture + " is left out: " + error.what());
      return view::TextureImage();
    }
  });
  if (withDefects) {
    scene->defects = view::defectMarksOf(mesh, *scene);
  }
  return scene;
}

}  // namespace zel::program
