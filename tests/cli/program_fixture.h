#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/cli/run_program.h"
#include "tests/support/temp_dir.h"

namespace zel::test {

using Json = nlohmann::json;

/// A folder of its own in which the program runs, so that arguments name its files.
class ProgramTest : public testing::Test {
 protected:
  using Arguments = std::vector<std::string>;

  [[nodiscard]] std::string file(const std::string& name) const { return dir_.file(name); }
  [[nodiscard]] std::string content(const std::string& name) const { return readFile(file(name)); }
  void write(const std::string& name, const std::string& bytes) const {
    writeFile(file(name), bytes);
  }
  [[nodiscard]] bool exists(const std::string& name) const {
    return std::filesystem::exists(file(name));
  }

  ProgramRun run(const Arguments& arguments, ProgramSetup setup = {}) const {
    setup.workingDirectory = dir_.path().string();
    return runProgram(arguments, setup);
  }
  int exitCode(const Arguments& arguments) const { return run(arguments).exitCode; }
  void expectSuccess(const Arguments& arguments) const {
    const ProgramRun done = run(arguments);
    EXPECT_EQ(done.exitCode, 0) << testing::PrintToString(arguments) << done.err;
  }
  /// What a command answers with --json.
  [[nodiscard]] Json answer(Arguments arguments) const {
    arguments.emplace_back("--json");
    const ProgramRun done = run(arguments);
    EXPECT_EQ(done.exitCode, 0) << testing::PrintToString(arguments) << done.err;
    return Json::parse(done.out);
  }

  TempDir dir_;
};

}  // namespace zel::test
