#pragma once

#include <SDL.h>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tools/view/pictures/scene_painter.h"
#include "tools/view/sdl_platform.h"
#include "tools/view/session_script.h"
#include "tools/view/view_controller.h"

namespace zel::view {

/// What a viewer starts with.
struct ViewerSetup {
  ViewSize size{1100, 800};
  UpAxis up = UpAxis::kY;
  DrawOptions draw;
  TextureImage texture;            ///< empty: a checker pattern
  std::vector<ScriptStep> script;  ///< when not empty, the session runs it and ends
};

/// A mesh file made ready, or the reason why not.
struct OpenedScene {
  std::unique_ptr<SceneMesh> scene;  ///< null when the file cannot be read
  std::string title;                 ///< for the window
  std::string problem;               ///< one line, when there is no scene
};

/// What a viewer asks of the program around it.
struct ViewerServices {
  std::function<OpenedScene(const std::string& file)> open;
  /// Writes a PNG file. @return false when it cannot be written.
  std::function<bool(const Picture& picture, const std::string& file)> save;
};

/// A window that shows one mesh.
class Viewer {
 public:
  /// Opens the window. @throws GraphicsError when there is no display or no OpenGL.
  Viewer(const ViewerSetup& setup, ViewerServices services);
  ~Viewer();
  Viewer(const Viewer&) = delete;
  Viewer& operator=(const Viewer&) = delete;

  /// Shows a scene. @param opened holds one.
  void show(OpenedScene opened);
  /// Serves the person, or plays the script, until the end.
  void run();

 private:
  struct Window;

  void handle(const SDL_Event& event);
  void handleKey(const SDL_KeyboardEvent& key);
  void handleButton(const SDL_MouseButtonEvent& button);
  void perform(Action action);
  /// Sets the status line to what there is to say after an action.
  void describe(Action action);
  void playStep(const ScriptStep& step);
  void openDropped(const std::string& file);
  void saveScreenshot();
  void waitForInput();
  void present();
  void presentSmooth();
  /// Draws the scene with the finest edges; gives up when `patient` is false and input waits.
  bool drawSmooth(bool patient);
  void drawScene(double shiftX, double shiftY);
  void drawOverlay();
  void noteSize();

  std::unique_ptr<Window> window_;
  SdlPlatform platform_;
  ViewerServices services_;
  ViewController controller_;
  TextureImage texture_;
  std::deque<ScriptStep> script_;
  bool isScripted_;
  std::unique_ptr<SceneMesh> scene_;
  std::unique_ptr<ScenePainter> painter_;
  std::string status_;
  bool shiftHeld_ = false;
  bool mustDraw_ = true;
  bool mustSmooth_ = false;  ///< what is shown has edges that could be finer
  bool mustQuit_ = false;
};

}  // namespace zel::view
