#include "tools/zel/view_options.h"

#include <charconv>
#include <optional>

#include "tools/zel/failure.h"
#include "tools/zel/input_file.h"

namespace zel::program {

namespace {

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
  return parseColour(text) ? "" : "'" + text + "' is neither #rrggbb nor a colour's name";
}

}  // namespace

void ViewOptions::declare(Options& options) {
  options.flag("--wireframe", wireframe_, "Edges without faces");
  options.flag("--smooth", smooth_, "Smooth faces where they meet at less than 40 degrees");
  options.flag("--edges", edges_, "Draw the edges of faces");
  options.flag("--boundary", boundary_, "Draw the edges of exactly one face in colour");
  options.flag("--normals", normals_, "Draw the normals");
  options.value("--texture", "FILE", textureFile_,
                "Lay this BMP picture over the texture coordinates");
  options.flag("--checker", checker_, "Lay a checker pattern over the texture coordinates");
  options.value("--up", "AXIS", up_, "Axis of the mesh that points up: y or z").oneOf({"y", "z"});
  options.value("--background", "COLOUR", background_, "#rrggbb, white, black or transparent")
      .checkedBy(checkColour);
}

view::TextureImage ViewOptions::texture() const {
  if (textureFile_.empty()) {
    return {};
  }
  const InputFile input(textureFile_);
  view::TextureImage image = view::loadTexture(input.path());
  if (image.isEmpty()) {
    throw unreadable(textureFile_, "not an uncompressed BMP picture");
  }
  return image;
}

view::DrawOptions ViewOptions::drawOptions() const {
  view::DrawOptions options;
  options.faces = !wireframe_;
  options.smooth = smooth_;
  options.textured = checker_ || !textureFile_.empty();
  options.edges = edges_ || wireframe_;
  options.boundary = boundary_;
  options.normals = normals_;
  if (const auto colour = parseColour(background_)) {
    options.backgroundTop = options.backgroundBottom = *colour;
  }
  return options;
}

std::unique_ptr<view::SceneMesh> sceneOf(const Mesh& mesh) {
  return std::make_unique<view::SceneMesh>(mesh.nodes, mesh.triangles, mesh.quads,
                                           mesh.triangleTexture);
}

}  // namespace zel::program
