#pragma once

/// @file
/// Everything that reads a stream or writes one, as a table for the tests of faults.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include "faults/faulty_stream.h"
#include "zel/containers/int2d_arr.h"
#include "zel/textfile/keyword_lists.h"
#include "zel/textfile/kw_iocl.h"

namespace zel::test {

/// One operation under way: what it works on, and what became of that.
class OperationRun {
 public:
  OperationRun() = default;
  OperationRun(const OperationRun&) = delete;
  OperationRun& operator=(const OperationRun&) = delete;
  virtual ~OperationRun() = default;
  virtual void work(KwIOCL& io) = 0;
  /// All that was read, in lines; "" of a writer.
  [[nodiscard]] virtual std::string result() const = 0;
  /// @return whether a result told the caller of a failure.
  [[nodiscard]] virtual bool hasTold() const { return false; }
};

struct StreamOperation {
  std::string name;
  bool isBinary = false;
  bool isReader = false;
  /// A reader or writer of plain stdio streams, whose failures the stream's error flag tells.
  bool isPlain = false;
  std::string content = {};  ///< what a reader reads
  std::function<std::unique_ptr<OperationRun>()> start = {};

  friend void PrintTo(const StreamOperation& operation, std::ostream* out) {
    *out << operation.name;
  }
};

/// The name of a test's parameter as a part of the test's own.
template <class Named>
std::string testName(const testing::TestParamInfo<Named>& each) {
  std::string name = each.param.name;
  std::replace(name.begin(), name.end(), ' ', '_');
  return name;
}

/// @return the readers and writers of the classic interface.
const std::vector<StreamOperation>& streamOperations();

/// Hands `file` to the object, as a stream of text or of bytes.
void takeStream(KwIOCL& io, std::FILE* file, bool isBinary);

/// The counts and the slots of an array, in lines.
template <class Array>
std::string listingOf(const Array& array) {
  FaultyBytes bytes;
  KwIOCL io;
  takeStream(io, bytes.open("w", true), false);
  if constexpr (std::is_same_v<Array, Int2DArr>) {  // its tagged list would be binary
    slFprintfInt2dArr(io.GetFileDescriptM(), array, "l");
  } else {
    array.FmOutputZelLstM(&io, "l");
  }
  io.CloseM();
  return std::to_string(array.GetBoundM()) + " of " + std::to_string(array.GetLengthM()) + ", " +
         std::to_string(array.GetAvailableNumM()) + " live\n" + bytes.bytes();
}

/// What an operation that nothing disturbs makes of its content, or writes.
struct CleanRun {
  std::string result;
  std::string written;
};
CleanRun runCleanly(const StreamOperation& operation);

}  // namespace zel::test
