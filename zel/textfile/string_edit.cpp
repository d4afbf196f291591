#include "zel/textfile/string_edit.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "zel/core/memory.h"
#include "zel/textfile/detail/text_view.h"

namespace {

using zel::copyText;
using zel::viewOf;

bool isCutLength(int n, std::string_view text) {
  return n >= 1 && static_cast<std::size_t>(n) <= text.size();
}

}  // namespace

int slLeft(const char* text, int n, char* out) {
  const std::string_view whole = viewOf(text);
  if (!isCutLength(n, whole)) {
    return 0;
  }
  copyText(out, whole.substr(0, static_cast<std::size_t>(n)));
  return 1;
}

int slRight(const char* text, int n, char* out) {
  const std::string_view whole = viewOf(text);
  if (!isCutLength(n, whole)) {
    return 0;
  }
  copyText(out, whole.substr(whole.size() - static_cast<std::size_t>(n)));
  return 1;
}

char* slInsertStr(char* text, const char* prefix) {
  const std::string_view head = viewOf(prefix);
  if (text == nullptr || head.empty()) {
    return text;
  }
  const std::size_t size = std::strlen(text) + 1;
  auto* copy = static_cast<char*>(slMalloc(static_cast<std::uint32_t>(size)));
  if (copy == nullptr) {
    return text;
  }
  std::memcpy(copy, text, size);
  std::memmove(text, head.data(), head.size());
  std::memcpy(text + head.size(), copy, size);
  slFree(copy);
  return text;
}

char* slSpace(int n, char* out) {
  const auto count = static_cast<std::size_t>(std::max(n, 0));
  std::memset(out, ' ', count);
  out[count] = '\0';
  return out;
}

int slSkipSpace(const char* text, int* position) {
  if (text == nullptr || position == nullptr || *position < 0) {
    return 1;
  }
  while (text[*position] == ' ' || text[*position] == ',') {
    ++*position;
  }
  return 1;
}

int slInsStrBySeed(char* text, int capacity, const char* insert, char seed) {
  if (text == nullptr || seed == '\0') {
    return 1;
  }
  const std::string_view added = viewOf(insert);
  const auto length = static_cast<std::int64_t>(std::strlen(text));
  const auto step = static_cast<std::int64_t>(added.size());
  const auto wanted = static_cast<std::int64_t>(std::count(text, text + length, seed));
  // Insertion number k (from 0) fits when length + (k + 1) * step + 1 < capacity.
  const std::int64_t room = std::max<std::int64_t>(capacity - std::int64_t{2} - length, -1);
  const std::int64_t fitting = room < 0 ? 0 : step == 0 ? wanted : std::min(wanted, room / step);

  std::int64_t skipped = wanted - fitting;  // occurrences at the end that get nothing
  char* target = text + length + fitting * step;
  for (const char* source = text + length; source != target; --source, --target) {
    *target = *source;
    if (source == text || source[-1] != seed || skipped-- > 0) {
      continue;
    }
    target -= step;
    std::memcpy(target, added.data(), added.size());
  }
  return fitting == wanted ? 1 : 0;
}
