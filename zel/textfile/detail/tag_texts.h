#pragma once

/// @file
/// What surrounds a list's name in its tags.

#include <string_view>

namespace zel {

struct TagText {
  std::string_view head;
  std::string_view tail;
};

inline constexpr TagText kBeginTag{"", "_LIST_BEGIN"};
inline constexpr TagText kIndexTag{"INDEX_OF_", "_LIST"};
inline constexpr TagText kEndTag{"", "_LIST_END"};

}  // namespace zel
