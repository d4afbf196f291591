#include "tools/zel/console.h"

#include <unistd.h>

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

bool Console::showsProgress() const { return !quiet && isatty(STDERR_FILENO) == 1; }

}  // namespace zel::program
