#include "zel/textfile/detail/plain_list.h"

#include "zel/textfile/detail/line_printer.h"
#include "zel/textfile/detail/text_scanner.h"

namespace zel {
namespace {

template <class Value>
bool readFields(FILE* file, Value* values, int count, Scans scans) {
  TextScanner scanner(soundOrNone(file), LookAhead::kLine);
  bool found = true;
  for (int i = 0; i < count; ++i) {
    const bool hasComma = i == 0 || (found && scanner.takeIf(','));
    if (scans == Scans::kOne && !(found && hasComma)) {
      return false;
    }
    found = scanner.number(values[i]);
  }
  if (found) {
    scanner.skipTrailingSpace();
  }
  return found;
}

}  // namespace

void PlainListWriter::writeLine(int number, const TagText& tag) {
  LinePrinter(file_)
      .addInt(number, kIntColumns)
      .add(",  ")
      .add(tag.head)
      .add(name_)
      .add(tag.tail)
      .add("\n")
      .finish();
}

void PlainListWriter::writeEnd(FILE* file, std::string_view name) {
  LinePrinter(file).add(kEndTag.head).add(name).add(kEndTag.tail).add("\n").finish();
}

bool readPlainTagLine(FILE* file, int* number, int maxColumns) {
  TextScanner scanner(soundOrNone(file), LookAhead::kLine);
  const bool found = scanner.number(*number, maxColumns);
  if (found) {
    scanner.takeIf(',');
  }
  if (scanner.word(nullptr)) {
    scanner.skipTrailingSpace();
  }
  return found && !scanner.failed();
}

bool readPlainFields(FILE* file, int* values, int count, Scans scans) {
  return readFields(file, values, count, scans);
}

bool readPlainFields(FILE* file, float* values, int count, Scans scans) {
  return readFields(file, values, count, scans);
}

void skipPlainEnd(FILE* file) {
  TextScanner scanner(soundOrNone(file), LookAhead::kLine);
  if (scanner.word(nullptr)) {
    scanner.skipTrailingSpace();
  }
}

}  // namespace zel
