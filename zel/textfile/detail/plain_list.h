#pragma once

/// @file
/// The frame of lists on a plain stdio stream: the lines that carry a number and a tag.

#include <cstdio>
#include <string_view>

#include "zel/textfile/detail/platform_stdio.h"
#include "zel/textfile/detail/tag_texts.h"

namespace zel {

/// Writes the tag lines of one list: the number in ten columns, a comma, two blanks, the tag.
class PlainListWriter {
 public:
  /// @param name must live as long as the writer.
  PlainListWriter(FILE* file, std::string_view name) : file_(file), name_(name) {}
  void begin(int count) { writeLine(count, kBeginTag); }
  void index(int index) { writeLine(index, kIndexTag); }
  void end() { writeEnd(file_, name_); }
  /// Writes the end line of a list of another name.
  static void writeEnd(FILE* file, std::string_view name);

 private:
  void writeLine(int number, const TagText& tag);

  FILE* file_;
  std::string_view name_;
};

/// A stream that fails while it is read tells so by its error flag alone. From then on it counts as
/// ended, lest what follows the gap be read in place of what was lost. @return `file`; null, which
/// is an empty stream to all readers, when its error flag is set.
[[nodiscard]] inline FILE* soundOrNone(FILE* file) {
  return file != nullptr && !hasError(file) ? file : nullptr;
}

/// Reads a number, a comma behind it, and a word that is dropped.
/// @param maxColumns characters of the number at most.
/// @return whether there was a number and reading did not fail; the word is dropped in any case.
bool readPlainTagLine(FILE* file, int* number, int maxColumns = 0x7FFFFFFF);

/// How the fields of a row are scanned; this matters only where one of them is missing.
enum class Scans {
  kOne,          ///< all by one scan, which ends at the first field or comma that is not there
  kOnePerField,  ///< each by a scan of its own, behind which a comma may stand
};

/// Reads `count` numbers with commas between them and, when the last was read, the white space
/// behind it. @return whether the last was read; those before a missing one are stored.
bool readPlainFields(FILE* file, int* values, int count, Scans scans);
bool readPlainFields(FILE* file, float* values, int count, Scans scans);

/// Drops the word of the end line and the white space behind it.
void skipPlainEnd(FILE* file);

}  // namespace zel
