// Any sequence of reads from one stream, by its own calls and by the line helpers of plain streams.
// The input ends, after a zero byte, with the operations.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "support/memory_file.h"
#include "zel/textfile/keyword_values.h"
#include "zel/textfile/kw_iocl.h"

namespace {

void readOne(KwIOCL& io, unsigned operation, std::vector<char>& text) {
  char c = 0;
  int n[4];
  float r[4];
  unsigned char pixel[4];
  switch (operation % 19) {
    case 0:
      io.InputCM(&c, &c, &c);
      break;
    case 1:
      io.InputDM(n, n + 1, nullptr, n + 2);
      break;
    case 2:
      io.InputDM(n, "%d");
      break;
    case 3:
      io.InputRM(r, r + 1, r + 2, r + 3);
      break;
    case 4:
      io.InputInt2DM(n);
      break;
    case 5:
      io.InputInt3DM(n);
      break;
    case 6:
      io.InputInt4DM(n);
      break;
    case 7:
      io.InputPoint3DM(r);
      break;
    case 8:
      io.InputPixel4DM(r);
      break;
    case 9:
      io.InputTexPixel4DM(pixel);
      break;
    case 10:
      io.InputSM(text.data(), 0, 1);
      break;
    case 11:
      io.InputGetsM(text.data(), static_cast<int>(text.size()));
      break;
    case 12:
      io.SkipLineM();
      break;
    case 13:
      io.SearchStrM("l_LIST_END");
      break;
    case 14:
      io.SetAutoNewLineM(1 - io.GetAutoNewLineM());
      break;
    case 15:
      io.InputSeparatorM();
      break;
    case 16:
      slFgets(io.GetFileDescriptM(), text.data(), static_cast<int>(text.size()));
      break;
    case 17:
      slSkipLine(io.GetFileDescriptM());
      break;
    default:
      slSearchStrM(io.GetFileDescriptM(), "l_LIST_END");
      break;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::size_t content = std::min(input.rfind('\0'), size);
  static const zel::test::MemoryFile file;
  if (!file.store(input.substr(0, content))) {
    std::abort();
  }
  std::vector<char> text(size + 1);
  KwIOCL io;
  io.OpenM(file.name(), size % 2 == 0 ? "r" : "rb");
  for (const char operation : input.substr(content)) {
    try {
      readOne(io, static_cast<unsigned char>(operation), text);
    } catch (int code) {
      if (code != 107) {
        std::abort();
      }
      io.SkipSomeLinesM(io.GetIoTypeM() == 0 ? 1 : 0);
    }
  }
  return 0;
}
