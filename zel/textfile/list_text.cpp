#include "zel/textfile/detail/list_text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <new>

#include "zel/core/constants.h"
#include "zel/core/memory.h"
#include "zel/textfile/detail/line_printer.h"
#include "zel/textfile/detail/platform_stdio.h"
#include "zel/textfile/detail/text_scanner.h"
#include "zel/textfile/detail/text_view.h"

namespace zel {
namespace {

// Room for the number and the longest tag around an empty name.
constexpr std::size_t kRoomBesideName = 32;

// What GetFmtStrM() puts between the number and the tag, as it is printed.
std::string separatorOf(const KwIOCL& io) {
  char format[110];
  io.GetFmtStrM(format);
  std::string text(viewOf(format));
  const std::size_t numberEnd = text.find('d') + 1;
  text = text.substr(numberEnd, text.size() - numberEnd - 2);
  for (std::size_t at = text.find("%%"); at != std::string::npos; at = text.find("%%", at + 1)) {
    text.erase(at, 1);
  }
  return text;
}

}  // namespace

ListWriter::ListWriter(KwIOCL& io, const char* name, Layout layout)
    : io_(io), name_(viewOf(name)), layout_(layout) {
  try {
    separator_ = layout == Layout::kColumns ? separatorOf(io) : ", ";
    line_.reserve(kRoomBesideName + separator_.size() + name_.size());
  } catch (const std::bad_alloc&) {
    kwErrorMessage(kOutOfMemory);
    throw kWriteFailure;
  }
}

void ListWriter::writeLine(int number, const TagText& tag) {
  char digits[kRoomBesideName];
  const auto size =
      static_cast<std::size_t>(std::to_chars(digits, digits + sizeof digits, number).ptr - digits);
  const std::size_t columns = layout_ == Layout::kColumns ? kIntColumns : 0;
  line_.assign(columns > size ? columns - size : 0, ' ');
  line_.append(digits, size).append(separator_);
  line_.append(tag.head).append(name_).append(tag.tail);
  io_.OutputSM(line_.c_str(), -1, 1);
}

void ListWriter::end() {
  line_.assign(kEndTag.head).append(name_).append(kEndTag.tail);
  io_.OutputSM(line_.c_str(), -1, 1);
}

ListSource::ListSource(FILE* file, int leastEntryBytes)
    : left_(file != nullptr ? bytesLeft(file) : 0),
      length_(left_),
      takenBefore_(charactersTaken()),
      isMeasured_(left_ != std::numeric_limits<std::int64_t>::max()),
      leastEntryBytes_(leastEntryBytes) {
  if (file != nullptr && isMeasured_) {
    length_ += tell(file);
  }
}

std::int64_t ListSource::read() const { return charactersTaken() - takenBefore_; }

bool ListSource::mayHold(int count) const {
  return count >= 0 && count <= left_ / leastEntryBytes_;
}

int ListSource::mostOf(int count) const {
  const std::int64_t bytes = isMeasured_ ? left_ : read();
  return static_cast<int>(std::min<std::int64_t>(count, bytes / leastEntryBytes_));
}

bool ListSource::mayName(int index) const {
  return index >= 0 && index < (isMeasured_ ? length_ : read());
}

int ListSource::roomFor(int count, int done) const {
  const std::int64_t room = std::max<std::int64_t>(kFirstRoom, 2 * std::int64_t{done});
  return isMeasured_ ? count : static_cast<int>(std::min<std::int64_t>(count, room));
}

FILE* streamOf(KwIOCL* io, int failure) {
  FILE* file = io != nullptr ? io->GetFileDescriptM() : nullptr;
  if (file == nullptr) {
    throw failure;
  }
  return file;
}

int readCount(KwIOCL& io, const ListSource& source) {
  int count = 0;
  io.InputDM(&count);
  if (!source.mayHold(count)) {
    throw kReadFailure;
  }
  return count;
}

void readEndLine(KwIOCL& io) {
  TextScanner scanner(streamOf(&io, kReadFailure), LookAhead::kLine);
  if (!scanner.word(nullptr)) {
    throw kReadFailure;
  }
  scanner.skipLine();
}

void writeRaw(FILE* file, const void* bytes, std::size_t size) {
  if (size != 0 && std::fwrite(bytes, 1, size, file) != size) {
    throw kWriteFailure;
  }
}

}  // namespace zel
