#pragma once

#include <SDL.h>

#include "tools/view/pictures/camera.h"

namespace zel::view {

/// SDL and a window with an OpenGL context, released in the reverse order.
class SdlWindow {
 public:
  /// @throws GraphicsError when there is no display or no OpenGL.
  explicit SdlWindow(ViewSize size);
  ~SdlWindow();
  SdlWindow(const SdlWindow&) = delete;
  SdlWindow& operator=(const SdlWindow&) = delete;

  [[nodiscard]] SDL_Window* handle() const { return handle_; }
  /// @return the size of the drawing buffer in pixels, each side at least 1.
  [[nodiscard]] ViewSize drawableSize() const;
  /// @return pixels of the drawing buffer for each unit of mouse positions.
  [[nodiscard]] double pixelScale() const;
  /// Whether multisampling would slow every frame down, so that the view at rest is better drawn
  /// several times instead.
  [[nodiscard]] bool smoothsAtRest() const { return smoothsAtRest_; }

  /// @return whether SIGTERM or SIGINT asked for the end. What goes on for three seconds after that
  ///         is ended by the system.
  [[nodiscard]] static bool mustEnd();

 private:
  SDL_Window* handle_ = nullptr;
  SDL_GLContext context_ = nullptr;
  bool smoothsAtRest_ = false;
};

}  // namespace zel::view
