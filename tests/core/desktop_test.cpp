#include "zel/core/desktop.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/fake_window.h"
#include "support/recording_platform.h"

namespace {

TEST(Desktop, elapsedTimeCrossesTheWrapOfTheTicks) {
  zel::test::RecordingPlatform system;
  system.ticks = 5;
  EXPECT_EQ(kwGetMMTickCount(), 5U);
  EXPECT_EQ(slGetSystemTimeAndElapse(0xFFFFFFF0U), 21U);
  EXPECT_EQ(slGetSystemTimeAndElapse(5), 0U);
}

TEST(Desktop, soundModesReachTheSystem) {
  zel::test::RecordingPlatform system;
  slPlayWavSoundM("", 1);
  slPlayWavSoundM(nullptr, 2);
  for (const int mode : {0, 4, -1}) {
    slPlayWavSoundM("a.wav", mode);
  }
  EXPECT_TRUE(system.sounds.empty());
  slPlayWavSoundM("a.wav", 1);
  slPlayWavSoundM("b.wav", 2);
  slPlayWavSoundM("c.wav", 3);
  slPlayWavSoundM("", 3);
  const std::vector<std::string> expected{"looped a.wav", "once b.wav", "stop -", "stop -"};
  EXPECT_EQ(system.sounds, expected);
}

TEST(Desktop, cursorGlidesInEightStepsFromItsStart) {
  zel::test::RecordingPlatform system;
  system.cursor = {10, 100};
  slSetCursorPos(POINT{110, 87});
  ASSERT_EQ(system.moves.size(), 8U);
  const int xs[] = {22, 35, 47, 60, 72, 85, 97, 110};
  const int ys[] = {99, 97, 96, 94, 92, 91, 89, 87};  // quotients truncate towards the start
  for (std::size_t k = 0; k < 8; ++k) {
    EXPECT_EQ(system.moves[k].x, xs[k]);
    EXPECT_EQ(system.moves[k].y, ys[k]);
  }
  EXPECT_TRUE(system.sleeps.empty());
}

TEST(Desktop, longGlidesWaitAndShiftStopsThem) {
  zel::test::RecordingPlatform system;
  slSetCursorPos(POINT{-200, 100});
  EXPECT_EQ(system.sleeps, std::vector<std::uint32_t>(8, 2));
  system.cursor = {std::numeric_limits<std::int32_t>::min(), 0};
  slSetCursorPos(POINT{std::numeric_limits<std::int32_t>::max(), 0});
  EXPECT_EQ(system.moves.back().x, std::numeric_limits<std::int32_t>::max());
  const std::size_t moved = system.moves.size();
  system.shift = true;
  slSetCursorPos(POINT{0, 0});
  EXPECT_EQ(system.moves.size(), moved);
}

TEST(Desktop, zoomFollowsTheHorizontalDrag) {
  EXPECT_EQ(slGetScale({3, 4}, {77, 5}, {77, 900}), 1.0F);
  EXPECT_FLOAT_EQ(slGetScale({100, 0}, {100, 0}, {600, 0}), 2.0F);
  EXPECT_FLOAT_EQ(slGetScale({100, 0}, {600, 0}, {100, 0}), 0.5F);
  EXPECT_FLOAT_EQ(slGetScale({0, 0}, {0, 0}, {-600, 0}), 0.0001F);
  EXPECT_FLOAT_EQ(slGetScale({0, 0}, {-500, 0}, {0, 0}), 10000.0F);
  constexpr int kFar = std::numeric_limits<int>::max();
  EXPECT_FLOAT_EQ(slGetScale({-kFar, 0}, {-kFar, 0}, {kFar, 0}), 8589935.588F);
}

TEST(Desktop, panTurnsTheVerticalAxis) {
  float dx = 0;
  float dy = 0;
  slGetPanDistance({10, 20}, {60, 45}, &dx, &dy);
  EXPECT_FLOAT_EQ(dx, 1.0F);
  EXPECT_FLOAT_EQ(dy, -0.5F);
}

TEST(Desktop, positionsBecomeFractionsOfTheWindow) {
  const zel::test::FakeWindow window("", 640, 480);
  float fx = 0;
  float fy = 0;
  slGetRealPosM(&window, &fx, &fy, 160, -48);
  EXPECT_EQ(fx, 0.25F);
  EXPECT_EQ(fy, -0.1F);
  const zel::test::FakeWindow empty("");
  slGetRealPosM(&empty, &fx, &fy, 1, 0);
  EXPECT_TRUE(std::isinf(fx));
  EXPECT_TRUE(std::isnan(fy));
}

}  // namespace
