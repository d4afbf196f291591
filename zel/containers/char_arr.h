#pragma once

/// @file
/// The array of characters, which is also a text and byte buffer.

#include "zel/containers/slot_store.h"
#include "zel/core/api.h"
#include "zel/core/desktop_types.h"

class KwIOCL;

/// An IntArr of characters with the mark 0, and an editable text of bytes.
///
/// The content is the characters from 0 to the bound; it ends with a zero only if one was stored.
/// Lines end with carriage return (13) and line feed (10), or either. Characters of many bytes get
/// no special care.
///
/// Two views of what is live stand side by side. Writing and walking take every character for
/// live, zero included: SetItemM() raises the available count on every write, iteration visits
/// every slot below the bound. Deleting and purging take only the characters 1 to 127 for live:
/// the zero and the bytes 128 to 255 are not counted down and do not survive a purge.
///
/// Bytes that an operation is given may lie in the buffer itself.
class ZEL_API CharArr {
 public:
  // --- life, as IntArr ---
  /// An empty array of four slots, increment 10.
  CharArr();
  /// An empty array with room for `length` slots; 4 or fewer give 4.
  explicit CharArr(int length);
  /// A deep copy: every slot, the counters and the increment.
  CharArr(const CharArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  CharArr(CharArr&& other) noexcept;
  /// Copies every slot, the counters and the increment. Out of memory, this array stays as it was.
  CharArr& operator=(const CharArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  CharArr& operator=(CharArr&& other) noexcept;
  /// Releases the store.
  virtual ~CharArr();

  // --- capacity, as IntArr ---
  /// Adds `count` slots at the end of the store; below 1 nothing happens. @return 1.
  int AddSizeM(int count);
  /// Makes the store at least `length` slots long. @return 1.
  int InitialSizeM(int length);
  /// As IntArr::SetIncrementM(). @return 1.
  int SetIncrementM(int increment);
  /// @return the slots allocated.
  [[nodiscard]] int GetLengthM() const;
  /// @return one past the highest slot written.
  [[nodiscard]] int GetBoundM() const;
  /// @return the slots counted as live.
  [[nodiscard]] int GetAvailableNumM() const;
  /// @return number of slots after `index` and below the bound, zeros included.
  [[nodiscard]] int GetAvailableNumM(int index) const;
  /// @return the first slot of the store, GetLengthM() slots long; valid until it grows.
  [[nodiscard]] char* getCurrentItemPrtM();
  /// As getCurrentItemPrtM(), for reading.
  [[nodiscard]] const char* getCurrentItemPrtConstM() const;

  // --- writing, as IntArr ---
  /// Writes one character and raises the available count; grows as IntArr::SetItemM(). @return 1.
  int SetItemM(char value, int index);
  /// Writes a character at the bound. @return its index.
  int AddItemM(char value);
  /// Moves the slots from `position` (0 to the bound) up by one and writes the freed slot.
  /// @return 1.
  int InsertItemM(char value, int position);

  // --- reading, as IntArr ---
  /// Reads a character, zero or not.
  /// @param[out] value 0 when `index` is not in 0 to bound - 1.
  /// @return 1 in both cases.
  int GetItemM(char* value, int index) const;
  /// @return the character, zero or not; null when `index` is not in 0 to bound - 1.
  [[nodiscard]] char* GetItemPM(int index);
  /// As GetItemPM(), for reading.
  [[nodiscard]] const char* GetItemPM(int index) const;
  /// @return the store, GetLengthM() characters long.
  [[nodiscard]] char* GetContentPtrM();
  /// As GetContentPtrM(), for reading.
  [[nodiscard]] const char* GetContentConstPtrM() const;
  /// Finds the first slot below the bound that holds `value`.
  /// @param[out] index its index, -2147483647 on a miss. @return 1 found, 0 not.
  int FindItemM(char value, int* index) const;
  /// As IntArr::GetItemPosiM().
  [[nodiscard]] int GetItemPosiM(char value) const;
  /// Copies the content, holes included, and ends it with a zero.
  /// @param[out] out room for bound + 2 characters. @return 1.
  int GetCurStrM(char* out) const;
  /// Reads one line.
  /// @param start   where it begins.
  /// @param[out] out   the line, ended with a zero; room for what is left of the content and 1.
  /// @param[out] count its characters, without that zero.
  /// @param keepEnd not 0: the character 13 or 10 that ends the line is kept, and a 10 that follows
  ///                it, so the next line starts at `start` + `count`.
  /// @return 1; 0 with count 0 when `start` is not in 0 to bound - 1.
  int GetOneLineM(int start, char* out, int* count, int keepEnd) const;

  // --- walking the live slots, as IntArr ---
  /// First character of all; as GetNextM() after -1.
  int GetFirstM(char* value, int* index) const;
  /// The character after `after`, zero or not.
  /// @param[out] value, index 0 and -2147483647 at the bound.
  /// @return 1, or -1 at the bound.
  int GetNextM(char* value, int* index, int after) const;
  /// Last character, zero or not.
  /// @param[out] value, index 0 and -2147483647 when there is none.
  /// @return its index (unlike GetNextM()), or -1 when there is none.
  int GetLastM(char* value, int* index) const;

  // --- deleting, as IntArr ---
  /// Zeroes a character from 1 to 127 and lowers the available count; the bound drops by one when
  /// it was the last slot.
  /// @return 1.
  int DelItemM(int index);
  /// Deletes everything and returns to four slots inside the object. @return 1.
  int DelAllM();
  /// Deletes everything and keeps the store. @return 1.
  int DelAllVirtualM();
  /// Moves the characters 1 to 127 together, zeroes the slots they came from and lowers the bound
  /// to their number. When the bound was 5 or more and at most 4 are left, they return into the
  /// object and the length is 4 again. The available count stays. @return 1.
  int PurgeDeletedItemM();
  /// Empties the content and keeps the store as it is. @return 1.
  int DelContentM();

  // --- whole content: bound and available count become its number of characters ---
  /// Makes the content a text with its terminating zero. @return 1.
  int SetNewStrM(const char* text);
  /// Makes the content exactly `count` bytes; below 1 it becomes empty.
  void SetValueM(int count, const char* bytes);
  /// Copies the store of `other`, up to its length, and its bound and count; a longer store of
  /// this array keeps its length. @return 1.
  int CopyM(const CharArr& other);
  /// As IntArr::ImportArrM(), every character of `other` below its bound.
  int ImportArrM(const CharArr& other);
  /// Removes the blanks (32) at the beginning. @return 1.
  int TrimL();
  /// Removes the blanks (32) at the end, but never the first character. @return 1.
  int TrimR();

  // --- editing at a position ---
  /// Inserts bytes; at the bound of a content that ends with a zero, before that zero.
  /// @param position 0 to the bound; others are ignored.
  /// @return 0 when `count` is 0, otherwise 1.
  int InsertStringM(int position, const char* bytes, int count);
  /// Removes characters, and counts down those from 1 to 127. A range that does not lie within 0 to
  /// the bound is ignored. @return 1.
  int DelStringM(int position, int count);
  /// Puts a program number at the front: the letter O and the digits. The digits of a number that
  /// is already there are replaced; otherwise the header gets a line of its own, ended with
  /// 13 10. Ends with PurgeDeletedItemM() and its losses.
  void AddProgNoM(int number);

  // --- appending; bound and available count rise by the number of bytes ---
  /// Appends `count` bytes as they are. @return 1.
  int AddContentvcM(const char* bytes, int count);
  // --- appending one value: its bytes as they lie in memory, the lowest first ---
  /// One character. @return 1.
  int AddContentM(char value);
  /// A text without its zero. @return 1.
  int AddContentM(const char* text);
  /// The four bytes of an integer. @return 1.
  int AddContentM(int value);
  /// The four bytes of a float. @return 1.
  int AddContentM(float value);
  /// The eight bytes of a position: x, then y. @return 1.
  int AddContentM(POINT value);
  /// The four bytes of an unsigned integer. @return 1.
  int AddContentUM(unsigned int value);
  /// The twelve bytes of three floats. @return 1.
  int AddContent3vfM(const float* values);

  // --- files, as IntArr ---
  /// Writes the array as the list `name`. @throws int 108 when it cannot be written.
  void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  /// Reads the next list on top of the present content. @throws int 107 when it cannot be read.
  void FmInputZelLstM(KwIOCL* io);
  /// Loads a whole file, byte by byte, behind the first `offset` characters, which stay. Bound and
  /// available count become `offset` + its size.
  /// @return 1; 0, with nothing but the length changed, when the file cannot be opened or read, has
  ///         no size (a directory, a pipe), does not fit, memory is refused, or `offset` is
  ///         negative.
  int ReadFileM(const char* path, int offset);
  /// Saves the content, creating or replacing the file; a read-only file is replaced and stays
  /// read-only. A file with several hard links or of another owner is written over in place. Every
  /// other that cannot be saved keeps its old content, unless its directory allows no second file
  /// beside it. @throws int 108 when it cannot be saved.
  void SaveFileM(const char* path) const;

 protected:
  /// Removes the line end at `position`: 13, 10 or both in this order; otherwise nothing.
  /// @return 1.
  int delCarrageReturnM(int position);

 private:
  /// Appends a text and a line end, 13 10. @return 1.
  int addNewPosM(const char* text);
  template <class Value>
  int appendBytesOf(const Value& value);
  void setContentSize(int size);

  zel::SlotStore<char, zel::CharPolicy> slots_;
};
