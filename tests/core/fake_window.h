#pragma once

#include <cstring>
#include <string>

#include "zel/core/desktop_types.h"

namespace zel::test {

/// A window, or an edit field, of some size and text.
class FakeWindow : public CWnd {
 public:
  explicit FakeWindow(std::string shown, int width = 0, int height = 0)
      : text(std::move(shown)), width_(width), height_(height) {}
  void GetClientRect(RECT* rect) const override { *rect = RECT{0, 0, width_, height_}; }
  int GetWindowText(char* buffer, int capacity) const override {
    std::strncpy(buffer, text.c_str(), static_cast<std::size_t>(capacity));
    buffer[capacity - 1] = '\0';
    return static_cast<int>(std::strlen(buffer));
  }
  void SetWindowText(const char* shown) override { text = shown; }

  std::string text;

 private:
  int width_;
  int height_;
};

}  // namespace zel::test
