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
  /// @name Life, as IntArr
  /// @{
  CharArr();
  explicit CharArr(int length);
  CharArr(const CharArr& other);
  CharArr(CharArr&& other) noexcept;
  CharArr& operator=(const CharArr& other);
  CharArr& operator=(CharArr&& other) noexcept;
  virtual ~CharArr();
  /// @}

  /// @name Capacity, as IntArr
  /// @{
  int AddSizeM(int count);
  int InitialSizeM(int length);
  int SetIncrementM(int increment);
  [[nodiscard]] int GetLengthM() const;
  [[nodiscard]] int GetBoundM() const;
  [[nodiscard]] int GetAvailableNumM() const;
  [[nodiscard]] int GetAvailableNumM(int index) const;
  [[nodiscard]] char* getCurrentItemPrtM();
  [[nodiscard]] const char* getCurrentItemPrtConstM() const;
  /// @}

  /// @name Writing, as IntArr
  /// Except: SetItemM() raises the available count on every write.
  /// @{
  int SetItemM(char value, int index);
  int AddItemM(char value);
  int InsertItemM(char value, int position);
  /// @}

  /// @name Reading, as IntArr
  /// @{
  int GetItemM(char* value, int index) const;
  [[nodiscard]] char* GetItemPM(int index);
  [[nodiscard]] const char* GetItemPM(int index) const;
  /// @}
  /// @return the store, GetLengthM() characters long.
  [[nodiscard]] char* GetContentPtrM();
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

  /// @name Walking the live slots, as IntArr
  /// Except: every slot below the bound is visited.
  /// @{
  int GetFirstM(char* value, int* index) const;
  int GetNextM(char* value, int* index, int after) const;
  int GetLastM(char* value, int* index) const;
  /// @}

  /// @name Deleting, as IntArr
  /// Except: characters 1 to 127 only are marked and counted down.
  /// @{
  int DelItemM(int index);
  int DelAllM();
  int DelAllVirtualM();
  /// @}
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
  /// @name Append one value
  /// A character, a text without its zero, or the bytes of a number in memory order
  /// (little-endian): four, for a POINT x and then y, for AddContent3vfM() three floats. @return 1.
  /// @{
  int AddContentM(char value);
  int AddContentM(const char* text);
  int AddContentM(int value);
  int AddContentM(float value);
  int AddContentM(POINT value);
  int AddContentUM(unsigned int value);
  int AddContent3vfM(const float* values);
  /// @}

  /// @name Files, as IntArr
  /// @{
  void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  void FmInputZelLstM(KwIOCL* io);
  /// @}
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
