#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include "tests/cli/run_program.h"
#include "tests/cli/sample_meshes.h"
#include "tests/support/temp_dir.h"

namespace zel::test {

namespace {

/// A directory that holds one mesh to convert.
class Outputs : public testing::Test {
 protected:
  Outputs() { writeFile(source(), sheetObj(60, 60, false)); }

  [[nodiscard]] std::string source() const { return dir_.file("source.obj"); }

  [[nodiscard]] std::size_t fileCount() const {
    const auto entries = std::filesystem::directory_iterator(dir_.path());
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
  }

  TempDir dir_;
};

}  // namespace

TEST_F(Outputs, aFullDeviceGivesFour) {
  for (const char* format : {"zel", "obj", "ply", "stl"}) {
    const ProgramRun run = runProgram({"convert", source(), "/dev/full", "--to", format});
    EXPECT_EQ(run.exitCode, 4) << format;
    EXPECT_EQ(run.err.rfind("zel: /dev/full: cannot write: ", 0), 0U) << run.err;
  }
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(Outputs, aFullStandardOutputGivesFour) {
  const ProgramSetup full = {.outFile = "/dev/full"};
  EXPECT_EQ(runProgram({"convert", source(), "-"}, full).exitCode, 4);
  EXPECT_EQ(runProgram({"info", source()}, full).exitCode, 4);
  EXPECT_EQ(runProgram({"formats"}, full).exitCode, 4);
}

TEST_F(Outputs, targetsThatTakeNothingGiveFourAndStayAsTheyWere) {
  const std::string readOnly = dir_.file("kept.zel");
  writeFile(readOnly, "kept");
  chmod(readOnly.c_str(), 0444);
  std::filesystem::create_directory(dir_.file("folder.zel"));
  const std::size_t before = fileCount();
  for (const std::string& target : {readOnly, dir_.file("folder.zel"), dir_.file("no/where.zel"),
                                    source() + "/below.zel", std::string("/proc/none.zel")}) {
    const ProgramRun run = runProgram({"convert", source(), target});
    EXPECT_EQ(run.exitCode, 4) << target << run.err;
  }
  EXPECT_EQ(readFile(readOnly), "kept");
  EXPECT_EQ(fileCount(), before);
}

TEST_F(Outputs, aFailureHalfWayLeavesTheOldFileAndNothingBeside) {
  for (const char* format : {"zel", "obj", "ply", "stl"}) {
    const std::string target = dir_.file(std::string("old.") + format);
    writeFile(target, "old content");
    const std::size_t before = fileCount();
    const ProgramRun run = runProgram({"convert", source(), target}, {.fileSizeLimit = 20'000});
    EXPECT_EQ(run.exitCode, 4) << format << run.err;
    EXPECT_EQ(readFile(target), "old content");
    EXPECT_EQ(fileCount(), before);
  }
}

TEST_F(Outputs, aKilledRunLeavesNoPartOfAnOutput) {
  const std::string whole = dir_.file("whole.zel");
  ASSERT_EQ(runProgram({"convert", source(), whole}).exitCode, 0);
  const std::string expected = readFile(whole);
  for (const int signal : {SIGTERM, SIGKILL}) {
    for (int delay = 0; delay < 60; delay += 6) {
      const std::string target = dir_.file("target.zel");
      std::filesystem::remove(target);
      runProgram({"convert", source(), target}, {.killSignal = signal, .killDelay = delay});
      if (std::filesystem::exists(target)) {
        EXPECT_EQ(readFile(target).size(), expected.size());
      }
      if (signal == SIGTERM) {
        std::filesystem::remove(target);
        EXPECT_EQ(fileCount(), 2U) << "a temporary file stayed behind";
      }
    }
  }
}

TEST_F(Outputs, aReplacedFileKeepsItsPermissionsAndItsLinks) {
  const std::string target = dir_.file("shared.zel");
  const std::string link = dir_.file("link.zel");
  writeFile(target, "old");
  chmod(target.c_str(), 0640);
  std::filesystem::create_symlink(target, link);
  ASSERT_EQ(runProgram({"convert", source(), link}).exitCode, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(readFile(target).substr(0, 8), "zel4.008");
  EXPECT_EQ(std::filesystem::status(target).permissions(), std::filesystem::perms(0640));
}

}  // namespace zel::test
