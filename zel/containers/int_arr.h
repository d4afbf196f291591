#pragma once

/// @file
/// The array of integers; it states the contract that all slot arrays share.

#include "zel/containers/slot_store.h"
#include "zel/core/api.h"

class KwIOCL;

/// A growable row of integers in which deletion moves nothing.
///
/// Deleting writes a mark (-2147483647) into the slot; iteration skips such holes, and an explicit
/// purge squeezes them out. So an index stays valid while other slots are deleted.
///
/// - Length: the slots allocated. An array of length 4 keeps them inside the object and uses no
///   heap. Every slot never written holds the mark.
/// - Bound: one past the highest slot written; searches and walks stop there.
/// - Available count: slots counted as live, kept by the operations, never recounted.
/// - A slot is live when its value is greater than the mark: -2147483648 is not live either.
///
/// Positions that no operation can serve (negative, or beyond what it names) are ignored with the
/// operation's normal result. When the heap is exhausted, or a store would exceed 2^31 - 1 bytes,
/// kwErrorMessage(40) is called, the content stays and the write is dropped. Nothing throws
/// except the file operations. Copies are deep; a moved-from array is as newly constructed.
/// Pointers and references into the store are valid until the array next grows, shrinks to
/// four slots, is assigned to or destroyed.
class ZEL_API IntArr {
 public:
  // --- life ---
  /// Length 4, bound 0, count 0, increment 10.
  IntArr();
  /// As the default constructor, with room for `length` slots.
  /// @param length slots; 4 or fewer give 4.
  explicit IntArr(int length);
  /// Copies every slot, the counters and the increment.
  IntArr(const IntArr& other);
  /// Takes the content over in constant time, as move assignment does.
  IntArr(IntArr&& other) noexcept;
  /// Copies every slot, the length, the counters and the increment. Out of memory, the target
  /// stays as it was.
  IntArr& operator=(const IntArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  IntArr& operator=(IntArr&& other) noexcept;
  /// Releases the store.
  virtual ~IntArr();

  // --- capacity ---
  /// Adds `count` slots at the end of the store; below 1 nothing happens. @return 1.
  int AddSizeM(int count);
  /// Makes the store at least `length` slots long. @return 1.
  int InitialSizeM(int length);
  /// Sets the slots added beyond the one asked for when a write grows the store.
  /// @param increment ignored below 1. @return 1.
  int SetIncrementM(int increment);
  /// @return the slots allocated.
  [[nodiscard]] int GetLengthM() const;
  /// @return one past the highest slot written.
  [[nodiscard]] int GetBoundM() const;
  /// @return the slots counted as live.
  [[nodiscard]] int GetAvailableNumM() const;
  /// @return number of live slots after `index` and below the bound.
  [[nodiscard]] int GetAvailableNumM(int index) const;
  /// @return the first slot of the store, GetLengthM() slots long.
  [[nodiscard]] int* getCurrentItemPrtM();
  /// As getCurrentItemPrtM(), for reading.
  [[nodiscard]] const int* getCurrentItemPrtConstM() const;

  // --- writing ---
  /// Writes one slot. Beyond the length the store grows to the larger of twice its length and
  /// `index` + 1 + increment. The available count rises when the slot held exactly the mark, even
  /// if `value` is the mark; the bound rises to `index` + 1. @return 1.
  int SetItemM(int value, int index);
  /// Writes the slot at the bound. @return its index.
  int AddItemM(int value);
  /// Moves the slots from `position` (0 to the bound) up by one and writes the freed slot. Bound
  /// and available count rise by one. @return 1.
  int InsertItemM(int value, int position);
  /// Overwrites many slots.
  /// @param all true: every slot up to the length, and the bound becomes the length; false: the
  ///            slots below the bound that do not hold exactly the mark.
  /// The available count stays in both cases. @return 1.
  int SetAllSameValueM(int value, bool all);
  /// Replaces the first `oldIndex` below the bound by `newIndex`; later ones stay.
  void ChangeNodeIdxM(int oldIndex, int newIndex);

  // --- reading ---
  /// Reads a slot, live or not. @param[out] value the mark when `index` is not in 0 to bound - 1.
  /// @return 1 in both cases.
  int GetItemM(int* value, int index) const;
  /// @return the slot, live or not; null when `index` is not in 0 to bound - 1.
  [[nodiscard]] int* GetItemPM(int index);
  /// As GetItemPM(), for reading.
  [[nodiscard]] const int* GetItemPM(int index) const;
  /// @return the slot; outside 0 to length - 1 a spare one that holds the mark and whose content
  ///         is not kept.
  [[nodiscard]] int& ElementAtM(int index);
  /// As ElementAtM(), for reading.
  [[nodiscard]] const int& ElementAtM(int index) const;
  /// As ElementAtM().
  [[nodiscard]] int& operator[](int index);
  /// As ElementAtM(), for reading.
  [[nodiscard]] const int& operator[](int index) const;
  /// Finds the first slot below the bound that holds `value`, holes included.
  /// @param[out] index its index, -2147483647 on a miss. @return 1 found, 0 not.
  int FindItemM(int value, int* index) const;
  /// Tells how often `value` occurs, not where.
  /// @return occurrences below the bound minus one, at most 2: -1 absent, 0 once, 1 twice, 2 more.
  [[nodiscard]] int GetItemPosiM(int value) const;

  // --- walking the live slots ---
  /// First live slot of all; as GetNextM() after -1.
  int GetFirstM(int* value, int* index) const;
  /// First live slot above `after`. @param[out] value, index both -2147483647 when there is none.
  /// @return 1, or -1 when there is none.
  int GetNextM(int* value, int* index, int after) const;
  /// Last live slot. @param[out] value, index both -2147483647 when there is none.
  /// @return its index (unlike GetNextM()), or -1 when there is none.
  int GetLastM(int* value, int* index) const;

  // --- deleting ---
  /// Marks a live slot deleted and lowers the available count; when it is the last slot, live or
  /// not, the bound drops by one (by one only, even if holes precede it). @return 1.
  int DelItemM(int index);
  /// Deletes everything and returns to four slots inside the object. @return 1.
  int DelAllM();
  /// Deletes everything and keeps the store. @return 1.
  int DelAllVirtualM();
  /// Moves the slots that do not hold exactly the mark together and lowers the bound to their
  /// number. The slots above the new bound keep their stale values and the available count stays,
  /// so later writes there do not raise it. @return 1.
  int PurgeDeletedItemM();

  // --- combining ---
  /// Appends the live values of `other`; when the heap refuses the room, none. @return the bound
  /// before.
  int MergeM(const IntArr& other);
  /// Grows by the available count of `other`, room or not, then appends its live values, all or
  /// (heap refused) none. @return the available count of `other`.
  int ImportArrM(const IntArr& other);
  /// Inserts into an ascending array without holes, unless the value is there. Searching takes
  /// log n steps, inserting moves what lies behind.
  /// @return the index of an equal value (the last slot first, then slot 0, then halving), or 1
  ///         after an insertion.
  int AddItemByCompareM(int value);
  /// Turns a closed ring (the last value repeats the first) so that it begins at `start`.
  /// @param start     slot in 0 to bound - 1.
  /// @param direction 1 forward, otherwise backward.
  /// Start 0 with direction 1 changes nothing; otherwise length, count and increment become those
  /// of a new array holding the ring. @return 1.
  int ChangeArrangeM(int start, int direction);

  // --- files ---
  /// Writes the array as the list `name`. @throws int 108 when it cannot be written.
  void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  /// Reads the next list on top of the present content. @throws int 107 when it cannot be read.
  void FmInputZelLstM(KwIOCL* io);

 private:
  zel::SlotStore<int, zel::IntPolicy> slots_;
};
