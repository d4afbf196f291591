#pragma once

/// @file
/// The frame that all tagged lists share: the lines that carry a number and a tag, the counts, and
/// the checks that keep a hostile file from doing harm.

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "zel/textfile/detail/tag_texts.h"
#include "zel/textfile/kw_iocl.h"

namespace zel {

/// Writes the tag lines of one list to a formatted stream. Failures throw 108.
class ListWriter {
 public:
  enum class Layout {
    kColumns,  ///< the number in ten columns, the stream's separator, the tag
    kPlain,    ///< the number as it is, ", ", the tag
  };

  ListWriter(KwIOCL& io, const char* name, Layout layout);
  /// Writes the begin line with the number of entries.
  void begin(int count) { writeLine(count, kBeginTag); }
  /// Writes the line before entry `index`.
  void index(int index) { writeLine(index, kIndexTag); }
  /// Writes the end line.
  void end();

 private:
  void writeLine(int number, const TagText& tag);

  KwIOCL& io_;
  std::string_view name_;
  Layout layout_;
  std::string separator_;
  std::string line_;
};

/// What is known about a stream before a list is read from it.
class ListSource {
 public:
  /// @param file null counts as an empty file.
  /// @param leastEntryBytes the fewest bytes that an entry takes in the file.
  ListSource(FILE* file, int leastEntryBytes);

  /// @return whether the stream has a length. Otherwise only what has been read of a text vouches
  ///         for what the list says, and more of it the more was read.
  [[nodiscard]] bool isMeasured() const { return isMeasured_; }
  /// @return whether the rest of the file can hold `count` entries, and `count` is no negative.
  ///         A stream without a length may hold any number.
  [[nodiscard]] bool mayHold(int count) const;
  /// @return `count`, or the number of entries that the rest of the file can hold if it is less;
  ///         that what has been read can have held, without a length.
  [[nodiscard]] int mostOf(int count) const;
  /// @return whether an entry may be meant for slot `index`: files may leave slots out, but no more
  ///         of them than the whole file, or what has been read, has bytes.
  [[nodiscard]] bool mayName(int index) const;
  /// @return for how many of `count` entries, which come in their order, to make room when `done`
  ///         have been read: all, unless the stream has no length.
  [[nodiscard]] int roomFor(int count, int done) const;

 private:
  /// Entries for which room is made unseen.
  static constexpr int kFirstRoom = 1024;

  [[nodiscard]] std::int64_t read() const;

  std::int64_t left_;
  std::int64_t length_;
  std::int64_t takenBefore_;
  bool isMeasured_;
  int leastEntryBytes_;
};

/// @return the stream behind `io`. @throws int `failure` without one.
FILE* streamOf(KwIOCL* io, int failure);

/// Reads the number of entries. @throws int 107 when it is negative or beyond the file's end.
int readCount(KwIOCL& io, const ListSource& source);

/// Reads the end line: a word, not compared, and the rest of its line. @throws int 107.
void readEndLine(KwIOCL& io);

/// Writes raw bytes whatever kind of stream it is. @throws int 108.
void writeRaw(FILE* file, const void* bytes, std::size_t size);

}  // namespace zel
