#include "tools/view/pictures/offscreen_context.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>

#include <algorithm>
#include <array>

#include "tools/view/pictures/graphics_error.h"

namespace zel::view {
namespace {

// Mesa's surfaceless platform needs neither a display server nor a graphics card; where it is
// missing the default display is tried.
EGLDisplay openDisplay() {
  const auto getPlatformDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
      eglGetProcAddress("eglGetPlatformDisplayEXT"));
  if (getPlatformDisplay != nullptr) {
    const EGLDisplay display =
        getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr) == EGL_TRUE) {
      return display;
    }
  }
  const EGLDisplay display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
  if (display == EGL_NO_DISPLAY || eglInitialize(display, nullptr, nullptr) != EGL_TRUE) {
    throw GraphicsError("no EGL display can be opened; Mesa's software drivers offer one");
  }
  return display;
}

EGLConfig chooseConfig(EGLDisplay display) {
  constexpr std::array kWanted{EGL_SURFACE_TYPE,
                               EGL_PBUFFER_BIT,
                               EGL_RENDERABLE_TYPE,
                               EGL_OPENGL_BIT,
                               EGL_RED_SIZE,
                               8,
                               EGL_GREEN_SIZE,
                               8,
                               EGL_BLUE_SIZE,
                               8,
                               EGL_ALPHA_SIZE,
                               8,
                               EGL_DEPTH_SIZE,
                               24,
                               EGL_NONE};
  EGLConfig config = nullptr;
  EGLint count = 0;
  if (eglChooseConfig(display, kWanted.data(), &config, 1, &count) != EGL_TRUE || count < 1) {
    throw GraphicsError("OpenGL offers no off-screen buffer with colour and depth");
  }
  return config;
}

}  // namespace

struct OffscreenContext::Handles {
  // The display stays open: it is the process's own, and the next context needs it again.
  Handles() {
    static const EGLDisplay shared = openDisplay();
    display = shared;
  }
  ~Handles() {
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (context != EGL_NO_CONTEXT) {
      eglDestroyContext(display, context);
    }
    if (surface != EGL_NO_SURFACE) {
      eglDestroySurface(display, surface);
    }
  }
  Handles(const Handles&) = delete;
  Handles& operator=(const Handles&) = delete;

  EGLDisplay display = EGL_NO_DISPLAY;
  EGLSurface surface = EGL_NO_SURFACE;
  EGLContext context = EGL_NO_CONTEXT;
};

OffscreenContext::OffscreenContext(int width, int height)
    : width_(width), height_(height), handles_(std::make_unique<Handles>()) {
  const EGLDisplay display = handles_->display;
  const EGLConfig config = chooseConfig(display);
  const std::array<EGLint, 5> size{EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
  handles_->surface = eglCreatePbufferSurface(display, config, size.data());
  if (handles_->surface == EGL_NO_SURFACE) {
    throw GraphicsError("OpenGL has no off-screen buffer of that size");
  }
  eglBindAPI(EGL_OPENGL_API);
  handles_->context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
  if (handles_->context == EGL_NO_CONTEXT ||
      eglMakeCurrent(display, handles_->surface, handles_->surface, handles_->context) !=
          EGL_TRUE) {
    throw GraphicsError("OpenGL gives no off-screen context");
  }
}

OffscreenContext::~OffscreenContext() = default;

Picture readPixels(int width, int height, int left) {
  const std::size_t rowBytes = static_cast<std::size_t>(width) * 4;
  Picture picture{width, height,
                  std::vector<std::uint8_t>(rowBytes * static_cast<std::size_t>(height))};
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(left, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, picture.rgba.data());
  for (std::size_t top = 0, bottom = static_cast<std::size_t>(height); top + 1 < bottom; ++top) {
    --bottom;
    const auto upper = picture.rgba.begin() + static_cast<std::ptrdiff_t>(top * rowBytes);
    const auto lower = picture.rgba.begin() + static_cast<std::ptrdiff_t>(bottom * rowBytes);
    std::swap_ranges(upper, upper + static_cast<std::ptrdiff_t>(rowBytes), lower);
  }
  return picture;
}

}  // namespace zel::view
