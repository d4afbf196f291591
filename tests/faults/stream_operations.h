#pragma once

/// @file
/// Everything that reads a stream or writes one, as a table for the tests of faults.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

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

/// An operation's name as a test's.
inline std::string testName(const testing::TestParamInfo<StreamOperation>& each) {
  std::string name = each.param.name;
  std::replace(name.begin(), name.end(), ' ', '_');
  return name;
}

/// @return the readers and writers of the classic interface.
const std::vector<StreamOperation>& streamOperations();

/// Hands `file` to the object, as a stream of text or of bytes.
void takeStream(KwIOCL& io, std::FILE* file, bool isBinary);

/// What an operation that nothing disturbs makes of its content, or writes.
struct CleanRun {
  std::string result;
  std::string written;
};
CleanRun runCleanly(const StreamOperation& operation);

}  // namespace zel::test
