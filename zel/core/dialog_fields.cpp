#include <algorithm>
#include <array>
#include <charconv>
#include <cstdarg>
#include <cstdio>
#include <limits>
#include <optional>

#include "zel/core/desktop.h"
#include "zel/core/detail/number_scan.h"

namespace {

constexpr int kFieldCharacters = 32;
constexpr int kFloatDigits = 6;
// No double has more significant digits, so larger requests print the same text.
constexpr int kMaxDigits = 767;

using FieldText = std::array<char, kFieldCharacters + 1>;

// What a field's format text says of its variable.
struct IntegerField {
  bool isSigned;
  bool isShort;
};

IntegerField parseFormat(const char* format) {
  if (format == nullptr || *format == '\0') {
    return {true, false};
  }
  const char* letter = format + 1;
  const bool isShort = *letter == 's';
  if (*letter == 'l' || isShort) {
    ++letter;
  }
  return {*letter == 'd', isShort};
}

FieldText readField(const CWnd& control) {
  FieldText text{};
  control.GetWindowText(text.data(), static_cast<int>(text.size()));
  text.back() = '\0';
  return text;
}

// Stores the field's number, or leaves the variable alone and answers false.
bool storeInteger(const FieldText& text, IntegerField field, void* variable) {
  std::optional<std::int64_t> value;
  if (field.isSigned) {
    value = zel::scanSigned(text.data());
  } else {
    value = zel::scanUnsigned(text.data());
  }
  if (!value) {
    return false;
  }
  if (!field.isShort) {
    *static_cast<std::uint32_t*>(variable) = static_cast<std::uint32_t>(*value);
    return true;
  }
  using Short = std::numeric_limits<std::int16_t>;
  if (*value < Short::min() || *value > Short::max()) {
    return false;
  }
  *static_cast<std::int16_t*>(variable) = static_cast<std::int16_t>(*value);
  return true;
}

FieldText formatInteger(std::int32_t value, IntegerField field) {
  FieldText text{};
  std::int64_t shown = value;
  if (field.isShort) {
    shown = static_cast<std::int16_t>(value);
  }
  if (!field.isSigned) {
    shown = field.isShort ? std::int64_t{static_cast<std::uint16_t>(value)}
                          : std::int64_t{static_cast<std::uint32_t>(value)};
  }
  std::to_chars(text.data(), text.data() + kFieldCharacters, shown);
  return text;
}

}  // namespace

void slDDX_TextWithFormat(CDataExchange* context, int control, const char* format,
                          unsigned int prompt, ...) {
  CWnd* edit = context->PrepareEditCtrl(control);
  if (edit == nullptr) {
    return;
  }
  const IntegerField field = parseFormat(format);
  std::va_list arguments;
  va_start(arguments, prompt);
  void* variable = context->m_bSaveAndValidate ? va_arg(arguments, void*) : nullptr;
  const std::int32_t value = context->m_bSaveAndValidate ? 0 : va_arg(arguments, std::int32_t);
  va_end(arguments);
  if (!context->m_bSaveAndValidate) {
    edit->SetWindowText(formatInteger(value, field).data());
  } else if (!storeInteger(readField(*edit), field, variable)) {
    context->Fail();
  }
}

void slTextFloatFormat(CDataExchange* context, int control, void* variable, double value,
                       int digits) {
  CWnd* edit = context->PrepareEditCtrl(control);
  if (edit == nullptr) {
    return;
  }
  if (!context->m_bSaveAndValidate) {
    // As printf: a negative precision counts as left out, which means 6.
    const int precision = digits < 0 ? kFloatDigits : std::min(digits, kMaxDigits);
    std::array<char, kMaxDigits + 32> text{};
    std::to_chars(text.data(), text.data() + text.size() - 1, value, std::chars_format::general,
                  precision);
    edit->SetWindowText(text.data());
    return;
  }
  const zel::RealScan scan = zel::scanReal(readField(*edit).data());
  if (!scan.accepted) {
    context->Fail();
  } else if (digits == kFloatDigits) {
    *static_cast<float*>(variable) = static_cast<float>(scan.value);
  } else {
    *static_cast<double*>(variable) = scan.value;
  }
}
