#pragma once

/// @file
/// Numbers as people type them into a field: blanks and tabs may stand around the number, and the
/// whole text must be one. Independent of the process locale.

#include <cstdint>
#include <optional>

namespace zel {

/// What scanReal() found.
struct RealScan {
  double value;   ///< the converted number, 0 when the text holds none
  bool accepted;  ///< whether the whole text is a number by the rule of scanReal()
};

/// Converts a decimal integer with an optional sign.
/// @param text zero-terminated.
/// @return the value, limited to 32 bits; nothing when other characters stand in the text or when
///         the value is 0 and the text does not begin with the digit 0 ("-0" and "+0" are refused).
[[nodiscard]] std::optional<std::int32_t> scanSigned(const char* text);

/// As scanSigned(), but refuses a leading minus sign.
[[nodiscard]] std::optional<std::uint32_t> scanUnsigned(const char* text);

/// Converts a decimal real number (no hexadecimal form, no infinity, no NaN).
///
/// A 0 is accepted only from text that begins with '0' or '-'. One '-' directly after the number
/// is tolerated, and a lone '-' counts as 0.
/// @param text zero-terminated.
/// @return the value also when the text is not accepted; too large a number gives infinity.
[[nodiscard]] RealScan scanReal(const char* text);

}  // namespace zel
