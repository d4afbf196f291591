#include "tools/view/sdl_platform.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/temp_dir.h"
#include "support/wave_file.h"
#include "zel/core/desktop.h"

namespace {

// A tenth of a second that holds the text "tick" once.
std::string tickFile() {
  constexpr int kRate = 22050;
  std::string samples(kRate / 10, '\x80');
  samples.replace(200, 4, "tick");
  return zel::test::waveFile(kRate, samples);
}

int countOf(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

// SDL's "disk" device writes what would be heard into a file, at the pace of a real one.
class Sound : public testing::Test {
 protected:
  Sound() {
    setenv("SDL_AUDIODRIVER", "disk", 1);
    setenv("SDL_DISKAUDIOFILE", heard.c_str(), 1);
    zel::test::writeFile(wave, tickFile());
  }
  ~Sound() override { SDL_Quit(); }

  zel::test::TempDir dir;
  std::string heard = dir.file("heard.raw");
  std::string wave = dir.file("tick.wav");
};

TEST_F(Sound, playsOnce) {
  const zel::view::SdlPlatform platform;
  slPlayWavSoundM(wave.c_str(), 2);
  SDL_Delay(450);
  slPlayWavSoundM(nullptr, 3);
  EXPECT_EQ(countOf(zel::test::readFile(heard), "tick"), 1);
}

TEST_F(Sound, loopsUntilStopped) {
  const zel::view::SdlPlatform platform;
  slPlayWavSoundM(wave.c_str(), 1);
  SDL_Delay(550);
  slPlayWavSoundM(nullptr, 3);
  const std::string atStop = zel::test::readFile(heard);
  EXPECT_GE(countOf(atStop, "tick"), 3);
  SDL_Delay(200);
  EXPECT_EQ(zel::test::readFile(heard).size(), atStop.size());
}

TEST_F(Sound, missingOrBrokenFilesAreSilent) {
  const zel::view::SdlPlatform platform;
  zel::test::writeFile(wave, tickFile().substr(0, 20));
  slPlayWavSoundM(wave.c_str(), 2);
  slPlayWavSoundM(dir.file("none.wav").c_str(), 1);
  slPlayWavSoundM(nullptr, 3);
}

// A notice that was taken for GBK showed wrong characters for a file's Chinese name.
TEST(SdlPlatform, noticesInUtf8StayAsTheyAre) {
  unsetenv("DISPLAY");
  unsetenv("WAYLAND_DISPLAY");
  zel::view::SdlPlatform platform;
  const std::string notice = "\xE6\xA8\xA1\xE5\x9E\x8B.obj: cannot read: not a mesh";
  testing::internal::CaptureStderr();
  platform.showNotice(notice);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), notice + "\n");
}

TEST(SdlPlatform, shiftCountsOnceWhenPressedBetweenTwoQueries) {
  ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_EVENTS), 0);
  {
    zel::view::SdlPlatform platform;
    EXPECT_FALSE(platform.shiftKeyPressed());
    SDL_Event press{};
    press.type = SDL_KEYDOWN;
    press.key.keysym.sym = SDLK_RSHIFT;
    SDL_PushEvent(&press);
    EXPECT_TRUE(platform.shiftKeyPressed());
    EXPECT_FALSE(platform.shiftKeyPressed());
  }
  SDL_Quit();
}

}  // namespace
