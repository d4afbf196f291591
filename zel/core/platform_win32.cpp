#include <windows.h>

#include <mmsystem.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "zel/core/detail/file_name.h"
#include "zel/core/detail/text_code.h"
#include "zel/core/platform.h"

namespace zel {
namespace {

constexpr UINT kGbkCodePage = 936;

std::wstring wideText(std::string_view text, UINT codePage) {
  const int bytes = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(codePage, 0, text.data(), bytes, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(codePage, 0, text.data(), bytes, wide.data(), length);
  return wide;
}

std::string narrowText(std::wstring_view text, UINT codePage) {
  const int units = static_cast<int>(text.size());
  const int length =
      WideCharToMultiByte(codePage, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(codePage, 0, text.data(), units, narrow.data(), length, nullptr, nullptr);
  return narrow;
}

// The application's title as message boxes show it: the program file's name without ".exe".
std::wstring programTitle() {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  const std::size_t nameStart = path.find_last_of(L'\\') + 1;
  return path.substr(nameStart, path.find_last_of(L'.') - nameStart);
}

// The system gives bytes without a meaning code points of private use.
bool isPrivate(wchar_t unit) { return unit >= 0xE000 && unit <= 0xF8FF; }

bool isDirectory(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

}  // namespace

std::uint32_t Platform::tickCount() { return GetTickCount(); }

UtcTime Platform::utcTime() {
  SYSTEMTIME now;
  GetSystemTime(&now);
  return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute};
}

void Platform::sleep(std::uint32_t milliseconds) { Sleep(milliseconds); }

bool Platform::shiftKeyPressed() { return GetAsyncKeyState(VK_SHIFT) != 0; }

ScreenPosition Platform::cursorPosition() {
  POINT position{};
  GetCursorPos(&position);
  return {position.x, position.y};
}

void Platform::setCursorPosition(ScreenPosition position) { SetCursorPos(position.x, position.y); }

void Platform::playSound(const char* file, SoundMode mode) {
  switch (mode) {
    case SoundMode::kStop:
      sndPlaySoundA(nullptr, 0);
      break;
    case SoundMode::kOnce:
      sndPlaySoundA(file, SND_ASYNC);
      break;
    case SoundMode::kLooped:
      sndPlaySoundA(file, SND_ASYNC | SND_LOOP);
      break;
  }
}

void Platform::showMessage(const char* gbkText) {
  const std::wstring text = wideText(noticeInUtf8(gbkText), CP_UTF8);
  MessageBoxW(nullptr, text.c_str(), programTitle().c_str(), MB_OK | MB_TASKMODAL);
}

PathKind Platform::findPath(const char* path) {
  WIN32_FIND_DATAA found;
  const HANDLE search = FindFirstFileA(path != nullptr ? path : "", &found);
  if (search == INVALID_HANDLE_VALUE) {
    return PathKind::kNothing;
  }
  FindClose(search);
  return isDirectory(found.dwFileAttributes) ? PathKind::kDirectory : PathKind::kFile;
}

FileAccess Platform::fileAccess(const char* path) {
  const DWORD attributes = GetFileAttributesA(path != nullptr ? path : "");
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    return FileAccess::kNoFile;
  }
  return (attributes & FILE_ATTRIBUTE_READONLY) != 0 ? FileAccess::kReadOnly
                                                     : FileAccess::kWritable;
}

bool Platform::setFileAccess(const char* path, FileAccess access) {
  const DWORD attributes = GetFileAttributesA(path != nullptr ? path : "");
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    return false;
  }
  const DWORD wanted = access == FileAccess::kReadOnly
                           ? attributes | FILE_ATTRIBUTE_READONLY
                           : attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY);
  return SetFileAttributesA(path, wanted) != 0;
}

bool Platform::createDirectory(const char* path) { return CreateDirectoryA(path, nullptr) != 0; }

bool Platform::copyFile(const char* source, const char* target) {
  return CopyFileA(source, target, FALSE) != 0;
}

std::uint32_t Platform::presentDrives() { return GetLogicalDrives(); }

std::string utf8FromGbk(std::string_view gbk) {
  std::wstring wide = wideText(gbk, kGbkCodePage);
  std::replace_if(wide.begin(), wide.end(), isPrivate, L'?');
  return narrowText(wide, CP_UTF8);
}

std::filesystem::path pathOfName(const std::string& name) { return wideText(name, CP_ACP); }

std::string nameOfPath(const std::filesystem::path& path) {
  return narrowText(path.native(), CP_ACP);
}

}  // namespace zel
