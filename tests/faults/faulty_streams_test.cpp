// Every reader and writer on streams whose n-th read or write fails: all of it is there, or the
// caller has been told.

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

#include "faults/faulty_stream.h"
#include "faults/stream_operations.h"
#include "support/thrown_by.h"

namespace zel::test {
namespace {

using Kind = Fault::Kind;

/// What came of an operation on a stream with a fault.
struct Outcome {
  bool hasHappened;
  bool hasTold;
  std::string result;
  std::string written;
};

Outcome runWith(const StreamOperation& operation, Fault fault, bool canSeek) {
  FaultyBytes bytes(fault, operation.content);
  KwIOCL io;
  takeStream(io, bytes.open(operation.isReader ? "r" : "w", canSeek), operation.isBinary);
  const auto run = operation.start();
  const int thrown = thrownBy([&] { run->work(io); });
  EXPECT_TRUE(thrown == 0 || thrown == (operation.isReader ? 107 : 108)) << thrown;
  const bool isFlagged = operation.isPlain && std::ferror(io.GetFileDescriptM()) != 0;
  const int closing = thrownBy([&] { io.CloseM(); });
  EXPECT_TRUE(closing == 0 || !operation.isReader) << "closing a stream that was only read";
  EXPECT_TRUE(closing != 0 || !isFlagged || operation.isReader) << "a loss that CloseM() hides";
  return {bytes.hasHappened(), thrown != 0 || isFlagged || closing != 0 || run->hasTold(),
          run->result(), operation.isReader ? "" : bytes.bytes()};
}

/// The lines of a text without those that count.
std::set<std::string> linesOf(const std::string& text) {
  std::istringstream in(text);
  std::set<std::string> lines;
  std::string line;
  for (std::getline(in, line); std::getline(in, line);) {
    if (line.find("BEGIN") == std::string::npos) {
      lines.insert(line);
    }
  }
  return lines;
}

/// Lines of slots that hold nothing.
const std::set<std::string> kFreshLines = {"    0",
                                           "   30",
                                           "-2147483647",
                                           "-2147483647,  -2147483647",
                                           "-2147483647, -2147483647, -2147483647",
                                           "-2147483647, -2147483647, -2147483647, -2147483647",
                                           "  0.00000000e+00,   0.00000000e+00,   0.00000000e+00",
                                           " -9.99999984e+17,  -9.99999984e+17"};

class FaultyStreams : public testing::TestWithParam<StreamOperation> {};

TEST_P(FaultyStreams, giveAllOrSaySo) {
  const StreamOperation& operation = GetParam();
  const CleanRun clean = runCleanly(operation);
  for (const bool canSeek : {true, false}) {
    for (const Kind kind : {Kind::kError, Kind::kInterrupted, Kind::kGone, Kind::kShort}) {
      int faults = 0;
      for (bool goesOn = true; goesOn && !HasFailure();) {
        SCOPED_TRACE("fault " + std::to_string(static_cast<int>(kind)) + " at " +
                     std::to_string(faults) + (canSeek ? "" : " of a pipe"));
        const Outcome outcome = runWith(operation, {kind, faults}, canSeek);
        EXPECT_TRUE(outcome.hasTold || outcome.result == clean.result) << outcome.result;
        EXPECT_TRUE(outcome.hasTold || outcome.written == clean.written) << outcome.written;
        EXPECT_TRUE(outcome.hasHappened || !outcome.hasTold) << "told of what was not";
        EXPECT_TRUE(kind != Kind::kShort || !operation.isReader || !outcome.hasTold)
            << "a short read is none that fails";
        goesOn = outcome.hasHappened;
        ++faults;
      }
      EXPECT_GT(faults, 1);
    }
  }
}

// Nothing stands in an array that is not in the file: no number cut off, none in another's place.
TEST(FaultyPlainLists, makeUpNoNumbers) {
  for (const StreamOperation& operation : streamOperations()) {
    if (!operation.isPlain || operation.content.find("BEGIN") == std::string::npos) {
      continue;
    }
    std::set<std::string> known = linesOf(runCleanly(operation).result);
    known.insert(kFreshLines.begin(), kFreshLines.end());
    for (const bool canSeek : {true, false}) {
      for (int at = 0; at < 120; ++at) {
        const Outcome outcome = runWith(operation, {Kind::kError, at}, canSeek);
        for (const std::string& line : linesOf(outcome.result)) {
          EXPECT_TRUE(known.contains(line))
              << operation.name << ", fault at " << at << ": " << line;
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, FaultyStreams, testing::ValuesIn(streamOperations()),
                         testName<StreamOperation>);

}  // namespace
}  // namespace zel::test
