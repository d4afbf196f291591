#include "tools/zel/console.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>

#include "tools/zel/failure.h"

namespace zel::program {

void Console::result(const std::string& text) const {
  errno = 0;
  const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (!written || std::fflush(stdout) != 0) {
    throw unwritable("standard output", systemText(errno));
  }
}

void Console::remark(const std::string& text) const {
  if (verbose && !quiet) {
    std::fprintf(stderr, "%s\n", text.c_str());
  }
}

void Console::note(const std::string& text) const {
  if (!quiet) {
    std::fprintf(stderr, "%s\n", text.c_str());
  }
}

void Console::complain(const Failure& failure) const {
  std::fprintf(stderr, "zel: %s\n", failure.line().c_str());
}

void Console::complainOfMemory(const char* file) const noexcept {
  std::array<char, 1024> line{};
  const int printed =
      std::snprintf(line.data(), line.size(), "zel: %s: too large: out of memory", file);
  const std::size_t length =
      std::min(line.size() - 1, static_cast<std::size_t>(std::max(printed, 0)));
  std::replace_if(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(length),
                  isControlCharacter, '?');
  line[length] = '\n';
  (void)!write(STDERR_FILENO, line.data(), length + 1);
}

bool Console::showsProgress() const { return !quiet && isatty(STDERR_FILENO) == 1; }

}  // namespace zel::program
