#pragma once

#include <SDL.h>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tools/view/file_watch.h"
#include "tools/view/occlusion_work.h"
#include "tools/view/picking.h"
#include "tools/view/pictures/scene_marks.h"
#include "tools/view/pictures/scene_painter.h"
#include "tools/view/sdl_platform.h"
#include "tools/view/sdl_window.h"
#include "tools/view/session_script.h"
#include "tools/view/view_controller.h"

namespace zel::view {

/// What a viewer starts with.
struct ViewerSetup {
  ViewSize size{1100, 800};
  DrawOptions draw;
  TextureImage texture;            ///< empty: a checker pattern
  std::vector<std::string> files;  ///< to go through with the keys; the first is to be shown
  std::vector<ScriptStep> script;  ///< when not empty, the session runs it and ends
};

/// A mesh file made ready, or the reason why not.
struct OpenedScene {
  std::unique_ptr<SceneMesh> scene;  ///< null when the file cannot be read
  UpAxis up = UpAxis::kY;
  std::string title;    ///< for the window
  std::string problem;  ///< one line, when there is no scene
};

/// What a viewer asks of the program around it.
struct ViewerServices {
  std::function<OpenedScene(const std::string& file)> open;
  /// Writes a PNG file. @return false when it cannot be written.
  std::function<bool(const Picture& picture, const std::string& file)> save;
};

/// A window that shows one mesh at a time.
class Viewer {
 public:
  /// Opens the window. @throws GraphicsError when there is no display or no OpenGL.
  Viewer(const ViewerSetup& setup, ViewerServices services);
  ~Viewer();
  Viewer(const Viewer&) = delete;
  Viewer& operator=(const Viewer&) = delete;

  /// Shows what has been opened as the first file, or its problem.
  void show(OpenedScene opened);
  /// Serves the person, or plays the script, until the end.
  /// @return false when a script ended early because a file could not be opened or saved.
  [[nodiscard]] bool run();

 private:
  // --- input, in viewer.cpp ---
  void handle(const SDL_Event& event);
  void handleKey(const SDL_KeyboardEvent& key);
  void handleButton(const SDL_MouseButtonEvent& button);
  void endPress(const SDL_MouseButtonEvent& button);
  void perform(Action action);
  bool performOnFiles(Action action);
  void escape();
  void pick(int x, int y, bool centre);
  /// Sets the status line to what there is to say after an action.
  void describe(Action action);
  void playStep(const ScriptStep& step);
  void openFile(std::size_t place);
  void openDropped(const std::string& file);
  void reload();
  void showReloaded(OpenedScene opened);
  /// Tells in the status line why a file is not shown; a script ends with it.
  void tellProblem(const std::string& problem);
  /// Ends a script; a person goes on.
  void failScript();
  void waitForInput();
  /// Does what time brings: files that have changed, shades that are measured.
  void serveTime();

  // --- drawing, in viewer_drawing.cpp ---
  void takeScene(std::unique_ptr<SceneMesh> scene, UpAxis up);
  void takeOcclusion();
  void saveScreenshot();
  void saveShot(const std::string& file);
  void present();
  void presentSmooth();
  /// Draws the scene with the finest edges; gives up when `patient` is false and input waits.
  bool drawSmooth(bool patient);
  void drawScene(double shiftX, double shiftY);
  void drawOverlay();
  void noteSize();
  [[nodiscard]] int textScale() const;
  [[nodiscard]] int panelLeft() const;

  SdlWindow window_;
  SdlPlatform platform_;
  ViewerServices services_;
  ViewController controller_;
  TextureImage texture_;
  std::vector<std::string> files_;
  std::size_t place_ = 0;  ///< of the file shown
  FileWatch watch_;
  std::deque<ScriptStep> script_;
  bool isScripted_;
  bool hasFailed_ = false;
  std::unique_ptr<SceneMesh> scene_;
  std::unique_ptr<ScenePainter> painter_;
  std::unique_ptr<Picker> picker_;       ///< made at the first click
  std::unique_ptr<OcclusionWork> work_;  ///< while shades are measured
  bool isShaded_ = false;                ///< shades have been asked for
  bool hasSelection_ = false;
  std::string status_;
  bool shiftHeld_ = false;
  bool mustDraw_ = true;
  bool mustSmooth_ = false;  ///< what is shown has edges that could be finer
  bool mustQuit_ = false;
};

}  // namespace zel::view
