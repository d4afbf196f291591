#pragma once

#include <functional>
#include <string>
#include <vector>

namespace zel::test {

/// What a run of the program left behind.
struct ProgramRun {
  int exitCode = -1;  ///< -1 when a signal ended it
  int signal = 0;     ///< the signal that ended it, or 0
  std::string out;
  std::string err;
};

/// How to run the program.
struct ProgramSetup {
  std::string standardInput = {};             ///< bytes for standard input
  std::vector<std::string> environment = {};  ///< "NAME=value", added to the test's own
  std::string workingDirectory = {};          ///< empty: the test's own
  std::string outFile = {};  ///< where standard output goes; empty: into ProgramRun
  long memoryLimit = 0;      ///< bytes of address space that it may use; 0: no limit
  int closedStream = -1;     ///< the standard stream that is closed when it starts; -1: none
  long fileSizeLimit = 0;    ///< largest file it may write; 0: no limit
  int killSignal = 0;        ///< sent after killDelay milliseconds, 0: never
  int killDelay = 0;
};

/// Runs the built program to its end.
ProgramRun runProgram(const std::vector<std::string>& arguments, const ProgramSetup& setup = {});

}  // namespace zel::test
