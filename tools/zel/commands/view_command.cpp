#include <filesystem>
#include <optional>
#include <utility>

#include "tools/view/pictures/graphics_error.h"
#include "tools/view/viewer.h"
#include "tools/zel/commands/commands.h"
#include "tools/zel/failure.h"
#include "tools/zel/file_format.h"
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

class ViewCommand : public Command {
 public:
  void declare(Options& options) override {
    options.argument("FILES", files_, "Mesh files to go through, or - for standard input")
        .required();
    declareFrom(options, from_);
    options.value("--script", "FILE", script_, "Play the session written in this file, then end");
    viewOptions_.declare(options);
    std::string keys = "In the window:";
    for (const std::string& line : view::bindingLines()) {
      keys += "\n  " + line;
    }
    options.note(keys);
    options.example("zel view bunny.obj --smooth");
    options.example("zel view scans/*.ply --defects");
  }

  ExitCode run(const Console& console) override {
    return guarded(files_.front(), console, [&] {
      view::ViewerSetup setup;
      setup.draw = viewOptions_.drawOptions();
      setup.texture = viewOptions_.texture();
      setup.script = readScript();
      setup.files = files_;
      // With other files to look at, the window tells what is wrong with the first.
      view::OpenedScene first =
          files_.size() == 1 ? open(files_.front(), console) : tryToOpen(files_.front(), console);
      try {
        view::Viewer viewer(setup,
                            {[&](const std::string& file) { return tryToOpen(file, console); },
                             [&](const view::Picture& picture, const std::string& file) {
                               return attempt(file, [&] { writePicture(picture, file); });
                             }});
        viewer.show(std::move(first));
        if (!viewer.run()) {
          throw lastFailure_.value();
        }
        return ExitCode::kDone;
      } catch (const view::GraphicsError& error) {
        throw Failure(ExitCode::kNoGraphics, files_.front(), "cannot show", error.what());
      }
    });
  }

 private:
  [[nodiscard]] view::OpenedScene open(const std::string& file, const Console& console) const {
    view::OpenedScene opened;
    opened.scene = readScene(file, from_, viewOptions_.welding(), true, console);
    opened.up = viewOptions_.upAxis(inputFormatName(file, from_));
    opened.title = windowTitle(file, *opened.scene);
    return opened;
  }

  // Runs work on a file; a failure is kept. @return whether there was none.
  template <class Work>
  bool attempt(const std::string& file, Work work) {
    try {
      work();
      return true;
    } catch (const Failure& failure) {
      lastFailure_ = failure;
    } catch (const std::exception&) {
      lastFailure_ = caughtFailure(file);
    }
    return false;
  }

  [[nodiscard]] view::OpenedScene tryToOpen(const std::string& file, const Console& console) {
    view::OpenedScene opened;
    if (!attempt(file, [&] { opened = open(file, console); })) {
      opened.problem = lastFailure_->line();
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

  std::vector<std::string> files_;
  std::string from_;
  std::string script_;
  std::optional<Failure> lastFailure_;
  ViewOptions viewOptions_;
};

}  // namespace

std::unique_ptr<Command> makeViewCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<ViewCommand>();
}

}  // namespace zel::program
