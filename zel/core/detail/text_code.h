#pragma once

/// @file
/// Text codes of messages.

#include <string>
#include <string_view>

namespace zel {

/// Converts GBK to UTF-8 by the system's tables; bytes that are no GBK become '?'.
[[nodiscard]] std::string utf8FromGbk(std::string_view gbk);

/// @return whether every byte belongs to a well-formed UTF-8 sequence.
[[nodiscard]] bool isUtf8(std::string_view text);

}  // namespace zel
