#pragma once

/// @file
/// The string table.

#include "zel/containers/indexed_slots.h"
#include "zel/containers/kw_string.h"

namespace zel {
class TextIndex;
}

/// A growable row of texts with the bookkeeping of IntArr; live means delete tag 31.
///
/// A full store grows by its length, or to the slot asked for when that is more; the increment
/// plays no part. Copies are deep; a moved-from table is as newly constructed. Texts are given as
/// zero-terminated, or as a number of bytes. A text for which the heap has no room is not added;
/// the result is the same.
///
/// Several threads may read and search a const table at once; whoever changes it must be alone with
/// it.
class ZEL_API KwStringArr {
 public:
  // --- life ---
  /// Length 4, bound 0, count 0, increment 10; four slots inside the object.
  KwStringArr();
  /// Copies the slots below the bound, the counters and the increment.
  KwStringArr(const KwStringArr& other);
  /// Takes the content over; `other` is left as newly constructed.
  KwStringArr(KwStringArr&& other) noexcept;
  /// Copies the slots below the bound, the counters and the increment. The target's length becomes
  /// that of `other` and 4 more when `other` has outgrown its four inline slots, otherwise 4. Out
  /// of memory, the target stays as it was.
  KwStringArr& operator=(const KwStringArr& other);
  /// Takes the content over; `other` is left as newly constructed.
  KwStringArr& operator=(KwStringArr&& other) noexcept;

  /// Reads the next list: deletes what is there, then fills slots from 0 on. Lists carry delete
  /// tags, no texts. @throws int 107 when it cannot be read.
  virtual void FmInputZelLstM(KwIOCL* io);
  /// Writes the table as the list `name`. @throws int 108 when it cannot be written.
  virtual void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  /// Releases the store.
  virtual ~KwStringArr();

  // --- counters, as IntArr ---
  /// @return the slots allocated.
  [[nodiscard]] int GetLengthM() const;
  /// @return one past the highest slot written.
  [[nodiscard]] int GetBoundM() const;
  /// @return the slots counted as live.
  [[nodiscard]] int GetAvailableNumM() const;

  // --- writing ---
  /// Appends an element with tag 31 that holds exactly these bytes. @return its index.
  int AddStringM(int count, const char* bytes);
  /// Appends `text` with its zero unless FindStrM() finds it. @return the index found or new.
  int AddByCompM(const char* text);
  /// Overwrites the bytes of an element below the bound; its tag stays.
  void SetValueM(int index, int count, const char* bytes);

  // --- reading and searching ---
  /// Reads a live element below the bound. @param[out] count its bytes; 0 otherwise.
  /// @param[out] out the bytes, without a zero of their own; otherwise an empty text.
  void GetValueM(int index, int* count, char* out) const;
  /// @return the bytes of an element, live or not; 0 outside the store.
  [[nodiscard]] int GetLengthM(int index) const;
  /// Finds the first element below the bound, live or deleted, whose KwStringCL::CompareStrM() with
  /// `text` is 0; so stored bytes without a zero match every text that begins with them. Fast on
  /// large tables.
  /// @return its index, or -1.
  [[nodiscard]] int FindStrM(const char* text) const;
  /// @param count ignored.
  /// @return 1 when KwStringCL::CompareStrM() of an element below the bound is 0, otherwise 0: a
  ///         truth value, no ordering.
  [[nodiscard]] int StrCmpM(int index, int count, const char* text) const;

  // --- deleting ---
  /// Gives a live element tag 32 and lowers the available count; when it is the last slot, live or
  /// not, the bound drops by one. The text stays and still matches below the bound. @return 1.
  int DelItemM(int index);
  /// Deletes everything and returns to four slots inside the object. @return 1.
  int DelAllM();

 private:
  friend struct zel::IndexCheck;
  zel::IndexedSlots<KwStringCL, zel::ElementPolicy, zel::TextIndex> slots_;
};
