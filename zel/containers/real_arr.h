#pragma once

/// @file
/// The array of single-precision numbers.

#include "zel/containers/slot_store.h"
#include "zel/core/api.h"

class KwIOCL;

/// An IntArr of floats with the mark -1e18. A slot is live when its value is greater than the mark;
/// SetItemM() alone draws the line a little higher.
class ZEL_API RealArr {
 public:
  // --- life, as IntArr ---
  /// An empty array of four slots, increment 10.
  RealArr();
  /// An empty array with room for `length` slots; 4 or fewer give 4.
  explicit RealArr(int length);
  /// A deep copy: every slot, the counters and the increment.
  RealArr(const RealArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  RealArr(RealArr&& other) noexcept;
  /// Copies every slot, the counters and the increment. Out of memory, this array stays as it was.
  RealArr& operator=(const RealArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  RealArr& operator=(RealArr&& other) noexcept;
  /// Releases the store.
  virtual ~RealArr();

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
  /// @return number of live slots after `index` and below the bound. Walks them.
  [[nodiscard]] int GetAvailableNumM(int index) const;
  /// @return the first slot of the store, GetLengthM() slots long; valid until it grows.
  [[nodiscard]] float* getCurrentItemPrtM();
  /// As getCurrentItemPrtM(), for reading.
  [[nodiscard]] const float* getCurrentItemPrtConstM() const;

  // --- writing, as IntArr ---
  /// Writes one slot, growing as IntArr::SetItemM(). The available count rises when the slot held
  /// -9.999e17 or less.
  /// @return 1.
  int SetItemM(float value, int index);
  /// Writes a number at the bound. @return its index.
  int AddItemM(float value);
  /// Moves the slots from `position` (0 to the bound) up by one and writes the freed slot.
  /// @return 1.
  int InsertItemM(float value, int position);

  // --- reading, as IntArr ---
  /// Reads a slot, live or not.
  /// @param[out] value the mark when `index` is not in 0 to bound - 1.
  /// @return 1 in both cases.
  int GetItemM(float* value, int index) const;
  /// @return the slot, live or not; null when `index` is not in 0 to bound - 1.
  [[nodiscard]] float* GetItemPM(int index);
  /// As GetItemPM(), for reading.
  [[nodiscard]] const float* GetItemPM(int index) const;
  /// Finds the first slot below the bound, live or not, less than 0.0001 away from `value`.
  /// @param[out] index its index, -2147483647 on a miss. @return 1 found, 0 not.
  int FindItemM(float value, int* index) const;
  /// Finds the slot below the bound nearest to `value`; the earlier of two equally near. Holes
  /// take part as -1e18.
  /// @param[out] index its index, -2147483647 when the array is empty.
  /// @return its value, -1e18 when the array is empty.
  float FindNearItemM(float value, int* index) const;
  /// As IntArr::GetItemPosiM(), by exact equality.
  [[nodiscard]] int GetItemPosiM(float value) const;

  // --- walking the live slots, as IntArr ---
  /// First live slot of all; as GetNextM() after -1.
  int GetFirstM(float* value, int* index) const;
  /// First live slot above `after`.
  /// @param[out] value the mark when there is none; `index` is then -2147483647.
  /// @return 1, or -1 when there is none.
  int GetNextM(float* value, int* index, int after) const;
  /// Last live slot.
  /// @param[out] value the mark when there is none; `index` is then -2147483647.
  /// @return its index (unlike GetNextM()), or -1 when there is none.
  int GetLastM(float* value, int* index) const;

  // --- deleting, as IntArr ---
  /// Marks a live slot deleted and lowers the available count; the bound drops by one when it was
  /// the last slot.
  /// @return 1.
  int DelItemM(int index);
  /// Deletes everything and returns to four slots inside the object. @return 1.
  int DelAllM();
  /// Deletes everything and keeps the store. @return 1.
  int DelAllVirtualM();
  /// Moves the live slots together and lowers the bound to their number. When the bound was
  /// 5 or more and at most 4 are left, they return into the object and the length is 4 again;
  /// otherwise the slots above the new bound keep their stale values. The available count stays.
  void PurgeDeletedItemM();

  // --- combining ---
  /// As IntArr::ImportArrM().
  int ImportArrM(const RealArr& other);

  // --- files, as IntArr ---
  /// Writes the array as the list `name`. @throws int 108 when it cannot be written.
  void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  /// Reads the next list on top of the present content. @throws int 107 when it cannot be read.
  void FmInputZelLstM(KwIOCL* io);

 private:
  zel::SlotStore<float, zel::RealPolicy> slots_;
};
