#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace zel::test {

/// An X server of its own without a screen (Xvfb), the display of this process while it lives.
class XServer {
 public:
  XServer() {
    int numberPipe[2];
    if (pipe(numberPipe) != 0) {
      return;
    }
    process_ = fork();
    if (process_ == 0) {
      const std::string descriptor = std::to_string(numberPipe[1]);
      const int nowhere = open("/dev/null", O_WRONLY);
      dup2(nowhere, STDOUT_FILENO);
      dup2(nowhere, STDERR_FILENO);
      execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", "800x600x24",
             "-nolisten", "tcp", "-noreset", static_cast<char*>(nullptr));
      _exit(127);
    }
    close(numberPipe[1]);
    readNumber(numberPipe[0]);
    close(numberPipe[0]);
    if (isRunning()) {
      setenv("DISPLAY", display_.c_str(), 1);
      setenv("SDL_VIDEODRIVER", "x11", 1);
    }
  }
  ~XServer() {
    if (process_ > 0) {
      kill(process_, SIGTERM);
      waitpid(process_, nullptr, 0);
    }
  }
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

  /// Whether the server answered; false where Xvfb is not installed.
  [[nodiscard]] bool isRunning() const { return !display_.empty(); }

 private:
  // The server writes its number once it accepts clients; without Xvfb the pipe just ends.
  void readNumber(int descriptor) {
    std::string number;
    for (char c = 0; read(descriptor, &c, 1) == 1 && c != '\n';) {
      number += c;
    }
    if (!number.empty()) {
      display_ = ":" + number;
    }
  }

  pid_t process_ = -1;
  std::string display_;
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
