#pragma once

#include <clocale>
#include <cstdlib>
#include <locale>
#include <string>

#include "support/temp_dir.h"

namespace zel::test {

/// The process has a decimal-comma locale, for C and for C++, while such an object lives. The
/// system's may lack one, so a German one is compiled where `localedef` and its sources are there.
class CommaLocale {
 public:
  CommaLocale()
      : previous_(std::locale::global(std::locale(std::locale::classic(), new CommaPoint))),
        hasC_(setGerman()) {}
  ~CommaLocale() {
    std::locale::global(previous_);
    std::setlocale(LC_ALL, "C");
#if !defined(_WIN32)
    unsetenv("LOCPATH");
#endif
  }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;
  /// Whether printf and strtod of the C library have the comma too.
  [[nodiscard]] bool reachesC() const { return hasC_ && *std::localeconv()->decimal_point == ','; }

 private:
  class CommaPoint : public std::numpunct<char> {
   protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };

#if defined(_WIN32)
  static bool setGerman() { return std::setlocale(LC_ALL, "German") != nullptr; }
#else
  [[nodiscard]] bool setGerman() const {
    const std::string compile =
        "localedef -i de_DE -f ISO-8859-1 '" + compiled_.file("de_DE") + "' >/dev/null 2>&1";
    setenv("LOCPATH", compiled_.path().c_str(), 1);
    return std::system(compile.c_str()) == 0 && std::setlocale(LC_ALL, "de_DE") != nullptr;
  }
  TempDir compiled_;
#endif
  std::locale previous_;
  bool hasC_;
};

}  // namespace zel::test
