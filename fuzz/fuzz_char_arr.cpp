// A whole text file, its lines, and the edits that look at its content.

#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "support/memory_file.h"
#include "zel/containers/char_arr.h"

namespace {

void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

// Lines taken with their ends are the content, none of it lost or taken twice.
void readLines(const CharArr& text, std::string_view content) {
  std::vector<char> line(content.size() + 2);
  int count = 0;
  std::size_t at = 0;
  while (text.GetOneLineM(static_cast<int>(at), line.data(), &count, 1) == 1) {
    const auto length = static_cast<std::size_t>(count);
    require(length > 0 && content.substr(at, length) == std::string_view(line.data(), length));
    at += length;
  }
  require(at == content.size());
}

void edit(CharArr& text) {
  text.TrimL();
  text.TrimR();
  text.AddProgNoM(-25);
  text.InsertStringM(text.GetBoundM() / 2, "25", 2);
  text.DelStringM(text.GetBoundM() / 3, 3);
  text.PurgeDeletedItemM();
  require(text.GetBoundM() >= 0 && text.GetBoundM() <= text.GetLengthM());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const zel::test::MemoryFile file;
  const std::string_view content(reinterpret_cast<const char*>(data), size);
  require(file.store(content));
  CharArr text;
  require(text.ReadFileM(file.name(), 0) == 1 && text.GetBoundM() == static_cast<int>(size));
  readLines(text, content);
  edit(text);
  return 0;
}
