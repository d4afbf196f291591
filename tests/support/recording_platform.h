#pragma once

#include <string>
#include <vector>

#include "zel/core/platform.h"

namespace zel::test {

/// Services that note what they are asked to do, in force while the object lives.
class RecordingPlatform : public Platform {
 public:
  RecordingPlatform() { setPlatform(this); }
  ~RecordingPlatform() override { setPlatform(nullptr); }

  std::uint32_t tickCount() override { return ticks; }
  void sleep(std::uint32_t milliseconds) override { sleeps.push_back(milliseconds); }
  bool shiftKeyPressed() override { return shift; }
  ScreenPosition cursorPosition() override { return cursor; }
  void setCursorPosition(ScreenPosition position) override { moves.push_back(position); }
  void playSound(const char* file, SoundMode mode) override {
    const char* const modes[] = {"stop", "once", "looped"};
    sounds.push_back(std::string(modes[static_cast<int>(mode)]) + " " +
                     (file != nullptr ? file : "-"));
  }
  void showMessage(const char* gbkText) override { messages.emplace_back(gbkText); }

  std::uint32_t ticks = 0;
  bool shift = false;
  ScreenPosition cursor{0, 0};
  std::vector<std::uint32_t> sleeps;
  std::vector<ScreenPosition> moves;
  std::vector<std::string> sounds;
  std::vector<std::string> messages;
};

}  // namespace zel::test
