#pragma once

#include <SDL.h>

#include <string>

#include "zel/core/platform.h"

namespace zel::view {

/// Plays one wave file at a time through SDL.
class WavePlayer {
 public:
  WavePlayer() = default;
  ~WavePlayer() { stop(); }
  WavePlayer(const WavePlayer&) = delete;
  WavePlayer& operator=(const WavePlayer&) = delete;

  /// Stops what is playing and starts a file. @return whether it plays.
  bool play(const std::string& file, bool looped);
  void stop();

 private:
  static void feed(void* player, std::uint8_t* target, int bytes);

  SDL_AudioDeviceID device_ = 0;
  std::uint8_t* samples_ = nullptr;
  std::uint32_t length_ = 0;
  std::uint32_t position_ = 0;
  std::uint8_t silence_ = 0;
  bool looped_ = false;
};

/// The desktop services of SDL: keys, cursor, sound and message box; everything else is the
/// system's own. Put into force for the library while the object lives.
class SdlPlatform : public Platform {
 public:
  SdlPlatform();
  ~SdlPlatform() override;

  /// The window that message boxes belong to; may be null.
  void setWindow(SDL_Window* window) { window_ = window; }

  bool shiftKeyPressed() override;
  ScreenPosition cursorPosition() override;
  void setCursorPosition(ScreenPosition position) override;
  void playSound(const char* file, SoundMode mode) override;
  void showMessage(const char* gbkText) override;
  /// As showMessage(), of a text in UTF-8. Without a display the text goes to standard error.
  void showNotice(const std::string& text);

 private:
  static int watch(void* platform, SDL_Event* event);

  SDL_Window* window_ = nullptr;
  bool shiftWasPressed_ = false;
  WavePlayer player_;
};

}  // namespace zel::view
