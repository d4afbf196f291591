#include "zel/textfile/number_parse.h"

#include <cstdint>
#include <optional>
#include <string_view>

#include "zel/core/detail/number_scan.h"
#include "zel/textfile/detail/text_view.h"

int slStrToInt(int n, const char* text, int* value) {
  const std::string_view whole = zel::viewOf(text);
  if (n < 1 || static_cast<std::size_t>(n) > whole.size()) {
    return 0;
  }
  const bool hasSign = whole[0] == '+' || whole[0] == '-';
  std::uint32_t magnitude = 0;
  for (const char c :
       whole.substr(hasSign ? 1 : 0, static_cast<std::size_t>(hasSign ? n - 1 : n))) {
    if (c < '0' || c > '9') {
      return 0;
    }
    magnitude = magnitude * 10 + static_cast<std::uint32_t>(c - '0');
  }
  *value = static_cast<int>(whole[0] == '-' ? 0 - magnitude : magnitude);
  return 1;
}

int slSimpleIntParse(const char* text, int* value) {
  const std::optional<std::int32_t> scanned = zel::scanSigned(zel::viewOf(text).data());
  *value = scanned.value_or(*value);
  return scanned.has_value() ? 1 : 0;
}

int slSimpleFloatParse(const char* text, double* value) {
  const zel::RealScan scanned = zel::scanReal(zel::viewOf(text).data());
  *value = scanned.value;
  return scanned.accepted ? 1 : 0;
}

int slSimpleFloatParseF(const char* text, float* value) {
  double wide = 0;
  const int result = slSimpleFloatParse(text, &wide);
  *value = result == 1 ? static_cast<float>(wide) : 0.0F;
  return result;
}
