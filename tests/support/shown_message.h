#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#if defined(_WIN32)
#include <windows.h>

#include <thread>
#endif

namespace zel::test {

#if defined(_WIN32)

constexpr int kMessageText = 0xFFFF;  // the control of a message box that holds its text

/// @return the message box of this process, once it shows its text; null after ten seconds.
inline HWND messageBox() {
  for (int i = 0; i < 1000; ++i) {
    HWND box = nullptr;
    while ((box = FindWindowExW(nullptr, box, L"#32770", nullptr)) != nullptr) {
      DWORD owner = 0;
      GetWindowThreadProcessId(box, &owner);
      if (owner == GetCurrentProcessId() && IsWindowVisible(box) != 0) {
        return box;
      }
    }
    Sleep(10);
  }
  return nullptr;
}

/// The text of the modal message that `work` shows, in UTF-8, and a line feed.
inline std::string shownMessage(const std::function<void()>& work) {
  std::string text;
  std::jthread user([&text] {
    const HWND box = messageBox();
    wchar_t shown[400] = L"";
    char utf8[1200] = "";
    GetWindowTextW(GetDlgItem(box, kMessageText), shown, 400);
    WideCharToMultiByte(CP_UTF8, 0, shown, -1, utf8, sizeof utf8, nullptr, nullptr);
    text = std::string(utf8) + "\n";
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  work();
  user.join();
  return text;
}

#else

/// The text of the message that `work` shows where there is no desktop: a line on standard error.
inline std::string shownMessage(const std::function<void()>& work) {
  testing::internal::CaptureStderr();
  work();
  return testing::internal::GetCapturedStderr();
}

#endif

}  // namespace zel::test
