#include <chrono>
#include <optional>
#include <utility>
#include <vector>

#include "tools/view/pictures/animation.h"
#include "tools/view/pictures/graphics_error.h"
#include "tools/view/pictures/render.h"
#include "tools/zel/commands/commands.h"
#include "tools/zel/failure.h"
#include "tools/zel/file_format.h"
#include "tools/zel/format_options.h"
#include "tools/zel/mesh_file.h"
#include "tools/zel/number_text.h"
#include "tools/zel/picture_file.h"
#include "tools/zel/view_options.h"

namespace zel::program {

namespace {

constexpr std::pair<const char*, view::StandardView> kSides[] = {
    {"front", view::StandardView::kFront},        {"back", view::StandardView::kBack},
    {"right", view::StandardView::kRight},        {"left", view::StandardView::kLeft},
    {"above", view::StandardView::kTop},          {"below", view::StandardView::kBottom},
    {"isometric", view::StandardView::kIsometric}};

constexpr int kMostTurns = 720;
constexpr int kTurnMilliseconds = 6000;  // of a whole turn

std::vector<std::string> sideNames() {
  std::vector<std::string> names;
  for (const auto& [name, side] : kSides) {
    names.emplace_back(name);
  }
  return names;
}

std::optional<view::ViewSize> sizeOf(const std::string& text) {
  const std::size_t cross = text.find('x');
  const auto width = readNumber<int>(text.substr(0, cross));
  const auto height = readNumber<int>(cross == std::string::npos ? "" : text.substr(cross + 1));
  const auto isSide = [](const std::optional<int>& side) {
    return side && *side >= view::kSmallestSide && *side <= view::kLargestSide;
  };
  return isSide(width) && isSide(height) ? std::optional(view::ViewSize{*width, *height})
                                         : std::nullopt;
}

std::string checkSize(const std::string& text) {
  return sizeOf(text) ? ""
                      : "'" + text + "' is no size such as 1200x900, with sides from " +
                            std::to_string(view::kSmallestSide) + " to " +
                            std::to_string(view::kLargestSide);
}

class RenderCommand : public Command {
 public:
  void declare(Options& options) override {
    options.argument("FILE", file_, "Mesh file, or - for standard input").required();
    options
        .value("-o,--output", "FILE", output_,
               "PNG or WebP file to write, or - for PNG on standard output")
        .required();
    declareFrom(options, from_);
    options.value("--width", "PIXELS", size_.width, "Pixels")
        .within(view::kSmallestSide, view::kLargestSide);
    options.value("--height", "PIXELS", size_.height, "Pixels")
        .within(view::kSmallestSide, view::kLargestSide);
    options.value("--size", "WIDTHxHEIGHT", sizeText_, "Both at once").checkedBy(checkSize);
    options.value("--yaw", "DEGREES", yaw_, "Look from so many degrees to the right of the front");
    options.value("--pitch", "DEGREES", pitch_, "Look from so many degrees above, -90 to 90")
        .within(-90.0, 90.0);
    options.value("--view", "SIDE", side_, "Look from a side instead").oneOf(sideNames());
    options.flag("--orthographic", orthographic_, "Draw without perspective");
    options.flag("--sheet", sheet_, "Six sides of the mesh on one sheet");
    options.value("--turntable", "PICTURES", turns_, "An animated WebP of a whole turn")
        .within(2, kMostTurns);
    viewOptions_.declare(options);
    options.note("Needs OpenGL, but no display.");
    options.example("zel render bunny.obj -o bunny.png --smooth --yaw -20");
    options.example("zel render part.stl -o part.png --features --view isometric --size 1600x1200");
    options.example("zel render bunny.obj -o bunny.webp --turntable 72 --size 480x480");
  }

  ExitCode run(const Console& console) override {
    return guarded(file_, console, [&] {
      size_ = sizeOf(sizeText_).value_or(size_);
      if (isSameFile(output_, file_) || isSameFile(output_, viewOptions_.textureFile())) {
        throw misuse(output_, "the picture is drawn from this");
      }
      const view::TextureImage texture = viewOptions_.texture();
      view::DrawOptions options = viewOptions_.drawOptions();
      const std::unique_ptr<view::SceneMesh> scene =
          readScene(file_, from_, viewOptions_.welding(), options.defects, console);
      if (scene->shownNodes.empty()) {
        throw unreadable(file_, "there is nothing to draw: no faces and no nodes");
      }
      options.textured = options.textured || !scene->textures.empty();
      if (options.textured && scene->textureCoords.empty()) {
        throw unreadable(file_, "the mesh has no texture coordinates to lay a texture over");
      }
      if (turns_ > 0 && !isWebp(output_)) {
        throw misuse(output_, "a turntable is written as a .webp file");
      }
      const auto start = std::chrono::steady_clock::now();
      const std::string bytes = draw(*scene, texture, options);
      const std::chrono::duration<double, std::milli> time =
          std::chrono::steady_clock::now() - start;
      writeBytes(bytes, output_);
      report(console, *scene, time.count());
      return ExitCode::kDone;
    });
  }

 private:
  [[nodiscard]] view::Camera camera(const view::SceneMesh& scene) const {
    view::Camera camera(viewOptions_.upAxis(inputFormatName(file_, from_)));
    camera.setAngles(yaw_, pitch_);
    for (const auto& [name, side] : kSides) {
      if (name == side_) {
        camera.setView(side);
      }
    }
    camera.setOrthographic(orthographic_);
    camera.frame(scene.shownPoints(), size_);
    return camera;
  }

  // The bytes of the file.
  [[nodiscard]] std::string draw(const view::SceneMesh& scene, const view::TextureImage& texture,
                                 const view::DrawOptions& options) const {
    try {
      const view::Camera start = camera(scene);
      if (turns_ > 0) {
        return turntable(scene, texture, options, start);
      }
      return pictureBytes(sheet_ ? renderSheet(scene, texture, start.up(), options, size_)
                                 : renderPicture(scene, texture, start, options, size_),
                          output_);
    } catch (const view::GraphicsError& error) {
      throw Failure(ExitCode::kNoGraphics, file_, "cannot draw", error.what());
    }
  }

  [[nodiscard]] std::string turntable(const view::SceneMesh& scene,
                                      const view::TextureImage& texture,
                                      const view::DrawOptions& options,
                                      const view::Camera& start) const {
    view::Camera camera = turntableCamera(scene, start, size_);
    view::Renderer renderer(scene, texture, options, start.up(), size_);
    const auto frame = [&](int number) {
      camera.setAngles(start.yaw() + 360.0 * number / turns_, start.pitch());
      return renderer.draw(camera);
    };
    return view::animationBytes(frame, turns_, kTurnMilliseconds / turns_);
  }

  void report(const Console& console, const view::SceneMesh& scene, double milliseconds) const {
    if (output_ == "-" || console.quiet) {
      return;
    }
    console.result(output_ + ": " + std::to_string(size_.width) + " x " +
                   std::to_string(size_.height) + " pixels, " +
                   groupedText(scene.triangleCount + scene.quadCount) + " faces drawn in " +
                   std::to_string(static_cast<long long>(milliseconds + 0.5)) + " ms\n");
  }

  std::string file_;
  std::string output_;
  std::string from_;
  std::string sizeText_;
  std::string side_;
  view::ViewSize size_{1200, 900};
  bool sheet_ = false;
  int turns_ = 0;
  double yaw_ = 30;
  double pitch_ = 20;
  bool orthographic_ = false;
  ViewOptions viewOptions_;
};

}  // namespace

std::unique_ptr<Command> makeRenderCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<RenderCommand>();
}

}  // namespace zel::program
