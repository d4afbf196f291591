#pragma once

/// @file
/// A heap that refuses, for tests of what becomes of an operation when memory runs out.
///
/// In a program of zel_add_fault_test() malloc(), calloc(), realloc() and operator new serve as
/// ever until a test asks for refusals:
///
///     refuseEachRequest("merge", [](RefusingHeap& heap) {
///       IntArr array = some();                      // made with a heap that grants everything
///       const Told told = heap.during([&] { array.MergeM(other); });
///       return whatIsWrong(told.anything() || isWhole(array), "lost entries");
///     });

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "zel/core/error.h"

namespace zel::test {

/// What a caller learned of a failure.
struct Told {
  int thrown = 0;          ///< the int thrown, 0 for none
  ErrorCode error{};       ///< of the zel::Error thrown, no code for none
  bool hasReport = false;  ///< kwErrorMessage(40) was called

  [[nodiscard]] bool anything() const { return thrown != 0 || error != ErrorCode{} || hasReport; }
};

/// @return "" when `isSound`, else `problem`: the result of an attempt.
inline std::string whatIsWrong(bool isSound, const char* problem) { return isSound ? "" : problem; }

/// The heap as the calling thread has it during one attempt.
class RefusingHeap {
 public:
  /// @param granted requests before the first refusal.
  /// @param forGood whether every further request is refused too, or only that one.
  RefusingHeap(long granted, bool forGood) : granted_(granted), forGood_(forGood) {}

  /// Does `work` with refusals; exceptions end here, and those that nothing may let out, such as
  /// std::bad_alloc, fail the test. Other threads' requests are granted.
  Told during(const std::function<void()>& work);
  /// @return whether during() was refused anything.
  [[nodiscard]] bool hasRefused() const { return hasRefused_; }

 private:
  long granted_;
  bool forGood_;
  bool hasRefused_ = false;
};

/// Makes `attempt` with a heap that refuses request 0, then request 1 ... until it asks for no
/// more, first each alone, then each with all that follow.
/// @param attempt makes what it needs, calls RefusingHeap::during() once and returns what is wrong
///                with the outcome, "" for nothing. The last attempt is refused nothing.
/// @return how often something was refused.
int refuseEachRequest(const std::string& name,
                      const std::function<std::string(RefusingHeap&)>& attempt);

}  // namespace zel::test
