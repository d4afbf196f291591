#include <filesystem>

#include "tools/view/pictures/graphics_error.h"
#include "tools/view/viewer.h"
#include "tools/zel/commands/commands.h"
#include "tools/zel/failure.h"
#include "tools/zel/format_options.h"
#include "tools/zel/input_file.h"
#include "tools/zel/mesh_file.h"
#include "tools/zel/number_text.h"
#include "tools/zel/picture_file.h"
#include "tools/zel/view_options.h"

namespace zel::program {

namespace {

std::string windowTitle(const std::string& file, const view::SceneMesh& scene) {
  return std::filesystem::path(file).filename().string() + " - " + groupedText(scene.nodeCount) +
         " nodes, " + groupedText(scene.triangleCount) + " triangles, " +
         groupedText(scene.quadCount) + " quads";
}

bool savePicture(const view::Picture& picture, const std::string& file) {
  try {
    writePicture(picture, file);
    return true;
  } catch (const Failure&) {
    return false;
  }
}

class ViewCommand : public Command {
 public:
  void declare(Options& options) override {
    options.argument("FILE", file_, "Mesh file, or - for standard input").required();
    declareFrom(options, from_);
    options.value("--script", "FILE", script_, "Play the session written in this file, then end");
    viewOptions_.declare(options);
    std::string keys = "In the window:";
    for (const std::string& line : view::bindingLines()) {
      keys += "\n  " + line;
    }
    options.note(keys);
    options.example("zel view bunny.obj --smooth");
  }

  ExitCode run(const Console& console) override {
    return guarded(file_, console, [&] {
      view::ViewerSetup setup;
      setup.up = viewOptions_.upAxis();
      setup.draw = viewOptions_.drawOptions();
      setup.texture = viewOptions_.texture();
      setup.script = readScript();
      view::OpenedScene first = open(file_, from_, console);
      try {
        view::Viewer viewer(
            setup, {[&console](const std::string& file) { return openDropped(file, console); },
                    savePicture});
        viewer.show(std::move(first));
        viewer.run();
      } catch (const view::GraphicsError& error) {
        throw Failure(ExitCode::kNoGraphics, file_, "cannot show", error.what());
      }
      return ExitCode::kDone;
    });
  }

 private:
  static view::OpenedScene open(const std::string& file, const std::string& format,
                                const Console& console) {
    view::OpenedScene opened;
    opened.scene = sceneOf(readMesh(file, format, console));
    opened.title = windowTitle(file, *opened.scene);
    return opened;
  }

  static view::OpenedScene openDropped(const std::string& file, const Console& console) {
    view::OpenedScene opened;
    try {
      opened = open(file, "", console);
    } catch (const Failure& failure) {
      opened.problem = failure.line();
    } catch (const std::bad_alloc&) {
      opened.problem = file + ": too large: out of memory";
    }
    return opened;
  }

  [[nodiscard]] std::vector<view::ScriptStep> readScript() const {
    if (script_.empty()) {
      return {};
    }
    const InputFile input(script_);
    try {
      return view::parseScript(input.readAll());
    } catch (const std::runtime_error& error) {
      throw unreadable(script_, error.what());
    }
  }

  std::string file_;
  std::string from_;
  std::string script_;
  ViewOptions viewOptions_;
};

}  // namespace

std::unique_ptr<Command> makeViewCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<ViewCommand>();
}

}  // namespace zel::program
