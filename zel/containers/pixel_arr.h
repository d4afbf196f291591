#pragma once

/// @file
/// The array of colours or texture pixels.

#include "zel/containers/slot_store.h"
#include "zel/core/api.h"

/// An IntArr of four floats with the mark -1e18 in the first; live when the first is greater than
/// -9.999e17. Items go in and out through a pointer to four floats. It has the common operations
/// only, and of those neither InitialSizeM(), DelAllVirtualM(), GetItemPM() nor GetLastM().
class ZEL_API PixelArr {
 public:
  // --- life, as IntArr ---
  /// An empty array of four slots, increment 10.
  PixelArr();
  /// An empty array with room for `length` slots; 4 or fewer give 4.
  explicit PixelArr(int length);
  /// A deep copy: every slot, the counters and the increment.
  PixelArr(const PixelArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  PixelArr(PixelArr&& other) noexcept;
  /// Copies every slot, the counters and the increment. Out of memory, this array stays as it was.
  PixelArr& operator=(const PixelArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  PixelArr& operator=(PixelArr&& other) noexcept;
  /// Releases the store.
  virtual ~PixelArr();

  // --- capacity, as IntArr ---
  /// Adds `count` slots at the end of the store; below 1 nothing happens. @return 1.
  int AddSizeM(int count);
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
  [[nodiscard]] float (*getCurrentItemPrtM())[4];
  /// As getCurrentItemPrtM(), for reading.
  [[nodiscard]] const float (*getCurrentItemPrtConstM() const)[4];

  // --- writing, as IntArr ---
  /// Writes one slot, growing as IntArr::SetItemM(). The available count rises when the slot was
  /// not live.
  /// @param item four floats.
  /// @return 1.
  int SetItemM(const float* item, int index);
  /// Writes a colour at the bound. @param item four floats. @return its index.
  int AddItemM(const float* item);
  /// Moves the slots from `position` (0 to the bound) up by one and writes the freed slot.
  /// @param item four floats.
  /// @return 1.
  int InsertItemM(const float* item, int position);

  // --- reading, as IntArr ---
  /// Reads a slot, live or not.
  /// @param[out] item four floats, all the mark when `index` is not in 0 to bound - 1.
  /// @return 1 in both cases.
  int GetItemM(float* item, int index) const;

  // --- walking the live slots, as IntArr ---
  /// First live slot of all; as GetNextM() after -1.
  int GetFirstM(float* item, int* index) const;
  /// First live slot above `after`.
  /// @param[out] item four floats, all the mark when there is none; `index` is then -2147483647.
  /// @return 1, or -1 when there is none.
  int GetNextM(float* item, int* index, int after) const;

  // --- deleting, as IntArr ---
  /// Marks a live slot deleted and lowers the available count; the bound drops by one when it was
  /// the last slot.
  /// @return 1.
  int DelItemM(int index);
  /// Deletes everything and returns to four slots inside the object. @return 1.
  int DelAllM();

 private:
  zel::SlotStore<zel::Float4, zel::FloatTuplePolicy> slots_;
};
