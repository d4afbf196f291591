#include "tools/view/sdl_platform.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace zel::view {

// --- WavePlayer ----------------------------------------------------------------------------------

bool WavePlayer::play(const std::string& file, bool looped) {
  stop();
  SDL_AudioSpec spec{};
  if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0 ||
      SDL_LoadWAV(file.c_str(), &spec, &samples_, &length_) == nullptr) {
    return false;
  }
  position_ = 0;
  silence_ = spec.silence;
  looped_ = looped;
  spec.callback = feed;
  spec.userdata = this;
  device_ = SDL_OpenAudioDevice(nullptr, 0, &spec, nullptr, 0);
  if (device_ == 0) {
    stop();
    return false;
  }
  SDL_PauseAudioDevice(device_, 0);
  return true;
}

void WavePlayer::stop() {
  if (device_ != 0) {
    SDL_CloseAudioDevice(device_);  // waits until feed() has returned
    device_ = 0;
  }
  SDL_FreeWAV(samples_);
  samples_ = nullptr;
  length_ = 0;
}

void WavePlayer::feed(void* player, std::uint8_t* target, int bytes) {
  WavePlayer& self = *static_cast<WavePlayer*>(player);
  auto wanted = static_cast<std::uint32_t>(bytes);
  while (wanted > 0) {
    if (self.position_ == self.length_ && self.looped_) {
      self.position_ = 0;
    }
    const std::uint32_t count = std::min(wanted, self.length_ - self.position_);
    if (count == 0) {
      std::memset(target, self.silence_, wanted);
      return;
    }
    std::memcpy(target, self.samples_ + self.position_, count);
    self.position_ += count;
    target += count;
    wanted -= count;
  }
}

// --- SdlPlatform ---------------------------------------------------------------------------------

SdlPlatform::SdlPlatform() {
  SDL_AddEventWatch(watch, this);
  setPlatform(this);
}

SdlPlatform::~SdlPlatform() {
  setPlatform(nullptr);
  SDL_DelEventWatch(watch, this);
}

int SdlPlatform::watch(void* platform, SDL_Event* event) {
  if (event->type == SDL_KEYDOWN &&
      (event->key.keysym.sym == SDLK_LSHIFT || event->key.keysym.sym == SDLK_RSHIFT)) {
    static_cast<SdlPlatform*>(platform)->shiftWasPressed_ = true;
  }
  return 0;
}

bool SdlPlatform::shiftKeyPressed() {
  SDL_PumpEvents();
  const bool pressed = shiftWasPressed_ || (SDL_GetModState() & KMOD_SHIFT) != 0;
  shiftWasPressed_ = false;
  return pressed;
}

ScreenPosition SdlPlatform::cursorPosition() {
  int x = 0;
  int y = 0;
  SDL_GetGlobalMouseState(&x, &y);
  return {x, y};
}

void SdlPlatform::setCursorPosition(ScreenPosition position) {
  SDL_WarpMouseGlobal(position.x, position.y);
}

void SdlPlatform::playSound(const char* file, SoundMode mode) {
  if (mode == SoundMode::kStop) {
    player_.stop();
  } else {
    player_.play(file != nullptr ? file : "", mode == SoundMode::kLooped);
  }
}

void SdlPlatform::showMessage(const char* gbkText) { showNotice(noticeInUtf8(gbkText)); }

void SdlPlatform::showNotice(const std::string& text) {
  constexpr Uint32 kNoIcon = 0;
  if (SDL_ShowSimpleMessageBox(kNoIcon, "zel", text.c_str(), window_) != 0) {
    std::fprintf(stderr, "%s\n", text.c_str());
  }
}

}  // namespace zel::view
