// The services of Windows itself.

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cwctype>
#include <filesystem>
#include <string>
#include <thread>

#include "support/shown_message.h"
#include "support/temp_dir.h"
#include "support/wave_file.h"
#include "zel/core/desktop.h"
#include "zel/core/platform.h"

namespace {

namespace fs = std::filesystem;

TEST(WindowsClock, ticksAndSleepFollowTheSystem) {
  zel::Platform& system = zel::platform();
  const std::uint32_t before = GetTickCount();
  const std::uint32_t start = system.tickCount();
  EXPECT_LE(start - before, GetTickCount() - before);
  system.sleep(50);
  EXPECT_GE(slGetSystemTimeAndElapse(start), 30U);  // the ticks are about 16 ms apart
}

TEST(WindowsClock, timeIsUniversal) {
  SYSTEMTIME before;
  SYSTEMTIME after;
  zel::UtcTime now{};
  do {  // until no minute ends meanwhile
    GetSystemTime(&before);
    now = zel::platform().utcTime();
    GetSystemTime(&after);
  } while (before.wMinute != after.wMinute);
  const int seen[] = {now.year, now.month, now.day, now.hour, now.minute};
  const int system[] = {before.wYear, before.wMonth, before.wDay, before.wHour, before.wMinute};
  EXPECT_TRUE(std::ranges::equal(seen, system)) << testing::PrintToString(seen);
}

TEST(WindowsDesktop, cursorGlidesToTheTarget) {
  zel::Platform& system = zel::platform();
  system.setCursorPosition({30, 40});
  POINT seen{};
  ASSERT_NE(GetCursorPos(&seen), 0);
  EXPECT_EQ(seen.x, 30);
  EXPECT_EQ(seen.y, 40);
  slSetCursorPos(POINT{110, 87});
  EXPECT_EQ(system.cursorPosition().x, 110);
  EXPECT_EQ(system.cursorPosition().y, 87);
}

void press(DWORD flags) { keybd_event(VK_SHIFT, 0, flags, 0); }

TEST(WindowsDesktop, shiftHoldsTheCursor) {
  zel::Platform& system = zel::platform();
  system.shiftKeyPressed();  // forget what was pressed before
  EXPECT_FALSE(system.shiftKeyPressed());
  system.setCursorPosition({5, 5});
  press(0);
  EXPECT_TRUE(system.shiftKeyPressed());
  slSetCursorPos(POINT{50, 50});
  press(KEYEVENTF_KEYUP);
  EXPECT_EQ(system.cursorPosition().x, 5);
  system.shiftKeyPressed();
  EXPECT_FALSE(system.shiftKeyPressed());
}

TEST(WindowsDesktop, soundsAreNotWaitedFor) {
  const zel::test::TempDir dir;
  const std::string file = dir.file("silence.wav");
  zel::test::writeFile(file, zel::test::waveFile(8000, std::string(30 * 8000, '\x80')));
  const std::uint32_t start = kwGetMMTickCount();
  slPlayWavSoundM(file.c_str(), 2);
  slPlayWavSoundM(file.c_str(), 1);
  slPlayWavSoundM("none.wav", 2);
  slPlayWavSoundM("", 3);
  EXPECT_LT(slGetSystemTimeAndElapse(start), 20000U);
}

TEST(WindowsDesktop, messageIsCaptionedWithTheProgramsName) {
  std::wstring title(100, L'\0');
  std::jthread user([&title] {
    const HWND box = zel::test::messageBox();
    title.resize(static_cast<std::size_t>(GetWindowTextW(box, title.data(), 100)));
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  zel::platform().showMessage("text");
  user.join();
  wchar_t program[MAX_PATH];
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  EXPECT_EQ(title + L".exe", fs::path(program).filename().wstring());
}

TEST(WindowsFiles, presentDrivesAreTheSystems) {
  const std::string root = fs::current_path().root_name().string();
  ASSERT_EQ(root.size(), 2U);
  const std::uint32_t drives = zel::platform().presentDrives();
  EXPECT_EQ(drives, GetLogicalDrives());
  EXPECT_EQ(drives >> (root[0] - 'A') & 1U, 1U);
}

// A letter beyond ASCII in the code page that the system takes narrow names in.
std::wstring foreignName() {
  for (const wchar_t* name : {L"\u6A21\u578B", L"\u00E9\u00FC", L"\u043C\u0438"}) {
    BOOL isReplaced = FALSE;
    char narrow[32];
    const bool isUtf8 = GetACP() == CP_UTF8;
    const int length = WideCharToMultiByte(CP_ACP, 0, name, -1, narrow, sizeof narrow, nullptr,
                                           isUtf8 ? nullptr : &isReplaced);
    if (length > 0 && isReplaced == FALSE) {
      return name;
    }
  }
  return L"plain";
}

std::string narrowed(const std::wstring& name) {
  char narrow[2 * MAX_PATH] = "";
  WideCharToMultiByte(CP_ACP, 0, name.c_str(), -1, narrow, sizeof narrow, nullptr, nullptr);
  return narrow;
}

TEST(WindowsFiles, narrowNamesAreInTheSystemsCodePage) {
  const zel::test::TempDir dir;
  zel::Platform& system = zel::platform();
  const fs::path folder = dir.path() / foreignName();
  const fs::path file = folder / (foreignName() + L".bmp");
  EXPECT_TRUE(system.createDirectory(narrowed(folder.wstring()).c_str()));
  EXPECT_TRUE(fs::is_directory(folder));
  zel::test::writeFile(dir.file("source"), "text");
  const std::string name = narrowed(file.wstring());
  EXPECT_TRUE(system.copyFile(dir.file("source").c_str(), name.c_str()));
  EXPECT_EQ(fs::file_size(file), 4U);
  EXPECT_EQ(system.findPath(name.c_str()), zel::PathKind::kFile);
  EXPECT_TRUE(system.setFileAccess(name.c_str(), zel::FileAccess::kReadOnly));
  EXPECT_NE(GetFileAttributesW(file.c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
  EXPECT_TRUE(system.setFileAccess(name.c_str(), zel::FileAccess::kWritable));
}

}  // namespace
