#include "zel/core/platform.h"

#include <string_view>

#include "zel/core/detail/text_code.h"

namespace zel {
namespace {

Platform* replacement = nullptr;

}  // namespace

Platform::Platform() = default;
Platform::~Platform() = default;

Platform& platform() {
  static Platform standard;
  return replacement != nullptr ? *replacement : standard;
}

void setPlatform(Platform* services) { replacement = services; }

std::string noticeInUtf8(const char* gbkText) {
  const std::string_view notice = gbkText != nullptr ? gbkText : "";
  // Neither ':' nor ' ' is ever the second byte of a GBK character.
  const std::size_t colon = notice.find(": ");
  if (colon == std::string_view::npos) {
    return utf8FromGbk(notice);
  }
  const std::string_view name = notice.substr(colon);
  return utf8FromGbk(notice.substr(0, colon)) +
         (isUtf8(name) ? std::string(name) : utf8FromGbk(name));
}

}  // namespace zel
