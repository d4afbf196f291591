#include "zel/core/desktop.h"

#include <algorithm>
#include <cstdlib>

#include "zel/core/constants.h"
#include "zel/core/platform.h"

namespace {

constexpr int kPlayLooped = 1;
constexpr int kPlayOnce = 2;
constexpr int kPlayStop = 3;

constexpr int kGlideSteps = 8;
constexpr std::int64_t kGlidePixelsPerMillisecond = 150;

// Zoom at `pixels` to the right of a drag's origin.
double scaleAt(std::int64_t pixels) {
  const double scale = static_cast<double>(pixels + zel::kZoomOriginPixels) *
                       static_cast<double>(zel::kZoomPerPixel);
  return std::max(scale, static_cast<double>(zel::kTolerance));
}

}  // namespace

std::uint32_t kwGetMMTickCount() { return zel::platform().tickCount(); }

std::uint32_t slGetSystemTimeAndElapse(std::uint32_t startTick) {
  return zel::platform().tickCount() - startTick;
}

void slPlayWavSoundM(const char* file, int mode) {
  if (mode == kPlayStop) {
    zel::platform().playSound(nullptr, zel::SoundMode::kStop);
    return;
  }
  if (file == nullptr || *file == '\0') {
    return;
  }
  if (mode == kPlayLooped) {
    zel::platform().playSound(file, zel::SoundMode::kLooped);
  } else if (mode == kPlayOnce) {
    zel::platform().playSound(file, zel::SoundMode::kOnce);
  }
}

void slSetCursorPos(POINT target) {
  zel::Platform& system = zel::platform();
  if (system.shiftKeyPressed()) {
    return;
  }
  const zel::ScreenPosition start = system.cursorPosition();
  const std::int64_t dx = std::int64_t{target.x} - start.x;
  const std::int64_t dy = std::int64_t{target.y} - start.y;
  const std::int64_t delay = (std::abs(dy) + std::abs(dx)) / kGlidePixelsPerMillisecond;
  for (int step = 1; step <= kGlideSteps; ++step) {
    system.setCursorPosition({static_cast<std::int32_t>(start.x + dx * step / kGlideSteps),
                              static_cast<std::int32_t>(start.y + dy * step / kGlideSteps)});
    if (delay > 0) {
      system.sleep(static_cast<std::uint32_t>(delay));
    }
  }
}

float slGetScale(CPoint origin, CPoint previous, CPoint current) {
  const double before = scaleAt(std::int64_t{previous.x} - origin.x);
  const double now = scaleAt(std::int64_t{current.x} - origin.x);
  return static_cast<float>(now / before);
}

void slGetPanDistance(CPoint from, CPoint to, float* dx, float* dy) {
  const auto perPixel = static_cast<double>(zel::kPanPerPixel);
  *dx = static_cast<float>(static_cast<double>(std::int64_t{to.x} - from.x) * perPixel);
  *dy = static_cast<float>(static_cast<double>(std::int64_t{to.y} - from.y) * -perPixel);
}

void slGetRealPosM(const CWnd* window, float* fx, float* fy, int x, int y) {
  RECT client{};
  window->GetClientRect(&client);
  const auto width = static_cast<double>(std::int64_t{client.right} - client.left);
  const auto height = static_cast<double>(std::int64_t{client.bottom} - client.top);
  *fx = static_cast<float>(static_cast<double>(x) / width);
  *fy = static_cast<float>(static_cast<double>(y) / height);
}
