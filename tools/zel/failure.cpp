#include "tools/zel/failure.h"

#include <algorithm>
#include <system_error>

namespace zel::program {

std::string Failure::line() const {
  std::string text = file_ + ": " + what_ + ": " + why_;
  std::ranges::replace_if(text, isControlCharacter, '?');
  return text;
}

std::string lowerCase(std::string text) {
  std::ranges::transform(text, text.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return text;
}

std::string systemText(int errorNumber) { return std::generic_category().message(errorNumber); }

}  // namespace zel::program
