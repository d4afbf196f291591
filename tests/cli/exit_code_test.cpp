#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "tests/cli/run_program.h"
#include "tests/cli/sample_meshes.h"
#include "tests/support/temp_dir.h"

namespace zel::test {

namespace {

/// The lines of a text that begin with a code, reduced to "code meaning".
std::vector<std::string> exitCodeLines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    std::erase(line, '|');
    std::istringstream words(line);
    std::string all;
    for (std::string word; words >> word;) {
      all += (all.empty() ? "" : " ") + word;
    }
    if (all.size() > 2 && all[0] >= '0' && all[0] <= '6' && all[1] == ' ') {
      lines.push_back(all);
    }
  }
  return lines;
}

/// One line that names the program and the file.
void expectOneErrorLine(const ProgramRun& run, const std::string& file) {
  EXPECT_EQ(std::ranges::count(run.err, '\n'), 1) << run.err;
  EXPECT_EQ(run.err.rfind("zel: " + file + ": ", 0), 0U) << run.err;
}

}  // namespace

TEST(ExitCodes, helpAndGuideShowTheSameTable) {
  const std::vector<std::string> help = exitCodeLines(runProgram({"--help"}).out);
  const std::vector<std::string> guide = exitCodeLines(readFile(ZEL_SOURCE_DIR "/docs/guide.md"));
  ASSERT_EQ(help.size(), 7U);
  EXPECT_EQ(help, guide);
  EXPECT_EQ(help[3], "3 an input cannot be read or is malformed");
}

TEST(ExitCodes, helpAndVersionAreNoFailures) {
  EXPECT_EQ(runProgram({"--help"}).exitCode, 0);
  EXPECT_EQ(runProgram({"--version"}).exitCode, 0);
  for (const char* command : {"info", "check", "convert", "diff", "weld", "normals", "unfold",
                              "fit", "formats", "render", "view", "demo"}) {
    const ProgramRun run = runProgram({command, "--help"});
    EXPECT_EQ(run.exitCode, 0) << command;
    EXPECT_NE(run.out.find("Example: zel " + std::string(command)), std::string::npos) << run.out;
  }
}

TEST(ExitCodes, wrongUsageGivesTwo) {
  const TempDir dir;
  writeFile(dir.file("a.obj"), tetrahedronObj());
  const std::vector<std::vector<std::string>> wrong = {
      {},
      {"nonsense"},
      {"info"},
      {"info", dir.file("a.obj"), "--nonsense"},
      {"info", dir.file("a.obj"), "--from", "nonsense"},
      {"convert", dir.file("a.obj")},
      {"convert", dir.file("a.obj"), dir.file("b.zel"), "--to", "off"},
      {"diff", dir.file("a.obj"), dir.file("a.obj"), "--tolerance", "-1"},
      {"diff", dir.file("a.obj"), dir.file("a.obj"), "--tolerance", "1,5"},
      {"diff", dir.file("a.obj"), dir.file("a.obj"), "--tolerance", "nan"},
      {"weld", dir.file("a.obj"), dir.file("b.zel"), "--tolerance", "nan"},
      {"weld", dir.file("a.obj"), dir.file("b.zel"), "--relative", "inf"},
      {"demo", "--triangles", "5"}};
  for (const auto& arguments : wrong) {
    const ProgramRun run = runProgram(arguments);
    EXPECT_EQ(run.exitCode, 2) << testing::PrintToString(arguments) << run.err;
    EXPECT_FALSE(run.err.empty());
  }
  EXPECT_EQ(runProgram({"nonsense"}).err, "zel: nonsense: wrong usage: no such subcommand\n");
  EXPECT_FALSE(std::filesystem::exists(dir.file("b.zel")));
}

TEST(ExitCodes, unreadableInputsGiveThreeAndOneLine) {
  const TempDir dir;
  std::filesystem::create_directory(dir.file("folder.zel"));
  writeFile(dir.file("unknown.xyzzy"), tetrahedronObj());
  writeFile(dir.file("noname"), tetrahedronObj());
  for (const char* name : {"missing.zel", "missing.obj", "folder.zel", "unknown.xyzzy", "noname",
                           "noname/below.obj"}) {
    const std::string file = dir.file(name);
    const ProgramRun run = runProgram({"info", file});
    EXPECT_EQ(run.exitCode, 3) << name;
    EXPECT_EQ(run.out, "");
    expectOneErrorLine(run, file);
  }
}

TEST(ExitCodes, goesOnAfterABadFileAndEndsWithTheWorstCode) {
  const TempDir dir;
  writeFile(dir.file("good.obj"), tetrahedronObj());
  const ProgramRun run =
      runProgram({"info", dir.file("missing.obj"), dir.file("good.obj"), dir.file("worse.xyzzy")});
  EXPECT_EQ(run.exitCode, 3);
  EXPECT_NE(run.out.find("good.obj"), std::string::npos);
  EXPECT_EQ(std::ranges::count(run.err, '\n'), 2) << run.err;
}

TEST(ExitCodes, aNameWithALineBreakStaysOneLine) {
  const ProgramRun run = runProgram({"info", "no\nsuch\033file.obj"});
  EXPECT_EQ(run.exitCode, 3);
  expectOneErrorLine(run, "no?such?file.obj");
}

TEST(ExitCodes, aDifferenceGivesOne) {
  const TempDir dir;
  writeFile(dir.file("a.obj"), tetrahedronObj());
  writeFile(dir.file("b.obj"), tetrahedronObj() + "v 1 1 1\n");
  EXPECT_EQ(runProgram({"diff", dir.file("a.obj"), dir.file("a.obj")}).exitCode, 0);
  const ProgramRun run = runProgram({"diff", dir.file("a.obj"), dir.file("b.obj")});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.out, "6 nodes against 7\ndifferent\n");
  EXPECT_EQ(runProgram({"diff", "-q", dir.file("a.obj"), dir.file("b.obj")}).out, "");
  EXPECT_EQ(runProgram({"diff", dir.file("a.obj"), dir.file("none.obj")}).exitCode, 3);
}

}  // namespace zel::test
