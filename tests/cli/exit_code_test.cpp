#include <algorithm>
#include <sstream>

#include "tests/cli/program_fixture.h"
#include "tests/cli/sample_meshes.h"

namespace zel::test {

namespace {

class ExitCodes : public ProgramTest {
 protected:
  /// Expects nothing but one line that names the program and the file, as `shownName`.
  void expectUnreadable(const std::string& name, const std::string& shownName) const {
    const ProgramRun done = run({"info", name});
    EXPECT_EQ(done.exitCode, 3) << name;
    EXPECT_EQ(done.out, "");
    EXPECT_EQ(std::ranges::count(done.err, '\n'), 1) << done.err;
    EXPECT_EQ(done.err.rfind("zel: " + shownName + ": ", 0), 0U) << done.err;
  }
};

}  // namespace

TEST_F(ExitCodes, helpAndGuideShowTheSameTable) {
  std::istringstream help(run({"--help"}).out);
  std::string table = "|---|---|\n";
  int code = 0;
  for (std::string line; std::getline(help, line);) {
    const std::string digit = std::to_string(code);
    if (line.rfind("  " + digit + "  ", 0) == 0) {
      table += "| " + digit + " | " + line.substr(5) + " |\n";
      ++code;
    }
  }
  EXPECT_EQ(code, 7);
  const std::string guide = readFile(ZEL_SOURCE_DIR "/docs/guide.md");
  EXPECT_NE(guide.find(table + "\n"), std::string::npos) << table;
}

TEST_F(ExitCodes, helpAndVersionAreNoFailures) {
  EXPECT_EQ(exitCode({"--help"}), 0);
  EXPECT_EQ(exitCode({"--version"}), 0);
  for (const char* command :
       {"info", "check", "convert", "diff", "weld", "normals", "unfold", "fit", "formats", "render",
        "report", "view", "demo", "help", "version", "completion"}) {
    const ProgramRun done = run({command, "--help"});
    EXPECT_EQ(done.exitCode, 0) << command;
    EXPECT_NE(done.out.find("Example: zel " + std::string(command)), std::string::npos) << done.out;
  }
}

TEST_F(ExitCodes, unreadableInputsGiveThreeAndOneLine) {
  std::filesystem::create_directory(file("folder.zel"));
  write("unknown.xyzzy", "words");
  write("noname", "words");
  for (const char* name : {"missing.zel", "missing.obj", "folder.zel", "unknown.xyzzy", "noname",
                           "noname/below.obj"}) {
    expectUnreadable(name, name);
    expectUnreadable(file(name), file(name));
  }
  expectUnreadable("no\nsuch\033file.obj", "no?such?file.obj");
}

TEST_F(ExitCodes, goesOnAfterABadFileAndEndsWithTheWorstCode) {
  write("good.obj", tetrahedronObj());
  const ProgramRun done = run({"info", "missing.obj", "good.obj", "worse.xyzzy"});
  EXPECT_EQ(done.exitCode, 3);
  EXPECT_NE(done.out.find("good.obj"), std::string::npos);
  EXPECT_EQ(std::ranges::count(done.err, '\n'), 2) << done.err;
}

TEST_F(ExitCodes, aDifferenceGivesOne) {
  write("a.obj", tetrahedronObj());
  write("b.obj", tetrahedronObj() + "v 1 1 1\n");
  EXPECT_EQ(exitCode({"diff", "a.obj", "a.obj"}), 0);
  const ProgramRun done = run({"diff", "a.obj", "b.obj"});
  EXPECT_EQ(done.exitCode, 1);
  EXPECT_EQ(done.out, "6 nodes against 7\ndifferent\n");
  EXPECT_EQ(run({"diff", "-q", "a.obj", "b.obj"}).out, "");
  EXPECT_EQ(exitCode({"diff", "a.obj", "none.obj"}), 3);
}

}  // namespace zel::test
