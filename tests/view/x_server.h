#pragma once

#include <signal.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace zel::test {

/// An X server of its own without a screen (Xvfb), the display of this process while it lives.
class XServer {
 public:
  // The shell becomes the server, which prints its number once it accepts clients; without Xvfb
  // there is none.
  XServer()
      : output_(popen("echo $$ && exec Xvfb -displayfd 1 -screen 0 800x600x24 -nolisten tcp "
                      "-noreset 2>/dev/null",
                      "r")) {
    int number = 0;
    isRunning_ = output_ != nullptr && std::fscanf(output_, "%d %d", &process_, &number) == 2;
    if (isRunning_) {
      setenv("DISPLAY", (":" + std::to_string(number)).c_str(), 1);
      setenv("SDL_VIDEODRIVER", "x11", 1);
    }
  }
  ~XServer() {
    if (isRunning_) {
      kill(process_, SIGTERM);
    }
    if (output_ != nullptr) {
      pclose(output_);
    }
  }
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

  /// Whether the server answered; false where Xvfb is not installed.
  [[nodiscard]] bool isRunning() const { return isRunning_; }

 private:
  std::FILE* output_;
  pid_t process_ = -1;
  bool isRunning_ = false;
};

/// Runs a command. @return what it printed.
inline std::string outputOf(const std::string& command) {
  std::string text;
  if (FILE* const stream = popen(command.c_str(), "r")) {
    for (int c = std::fgetc(stream); c != EOF; c = std::fgetc(stream)) {
      text += static_cast<char>(c);
    }
    pclose(stream);
  }
  return text;
}

}  // namespace zel::test
