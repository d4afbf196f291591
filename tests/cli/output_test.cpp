#include <signal.h>
#include <sys/stat.h>

#include "tests/cli/program_fixture.h"
#include "tests/cli/sample_meshes.h"

namespace zel::test {

namespace {

/// A directory that holds one mesh to convert.
class Outputs : public ProgramTest {
 protected:
  Outputs() { write("source.obj", sheetObj(60, 60, false)); }

  [[nodiscard]] std::size_t fileCount() const {
    const auto entries = std::filesystem::directory_iterator(dir_.path());
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
  }
};

}  // namespace

TEST_F(Outputs, aFullDeviceGivesFour) {
  for (const char* format : {"zel", "obj", "ply", "stl"}) {
    const ProgramRun done = run({"convert", "source.obj", "/dev/full", "--to", format});
    EXPECT_EQ(done.exitCode, 4) << format;
    EXPECT_EQ(done.err.rfind("zel: /dev/full: cannot write: ", 0), 0U) << done.err;
  }
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(Outputs, aFullStandardOutputGivesFour) {
  const ProgramSetup full = {.outFile = "/dev/full"};
  EXPECT_EQ(run({"convert", "source.obj", "-"}, full).exitCode, 4);
  EXPECT_EQ(run({"info", "source.obj"}, full).exitCode, 4);
  EXPECT_EQ(run({"formats"}, full).exitCode, 4);
}

TEST_F(Outputs, targetsThatTakeNothingGiveFourAndStayAsTheyWere) {
  write("kept.zel", "kept");
  chmod(file("kept.zel").c_str(), 0444);
  std::filesystem::create_directory(file("folder.zel"));
  const std::size_t before = fileCount();
  for (const char* target :
       {"kept.zel", "folder.zel", "no/where.zel", "source.obj/below.zel", "/proc/none.zel"}) {
    const ProgramRun done = run({"convert", "source.obj", target});
    EXPECT_EQ(done.exitCode, 4) << target << done.err;
  }
  EXPECT_EQ(content("kept.zel"), "kept");
  EXPECT_EQ(fileCount(), before);
}

TEST_F(Outputs, aFailureHalfWayLeavesTheOldFileAndNothingBeside) {
  for (const char* format : {"zel", "obj", "ply", "stl"}) {
    const std::string target = std::string("old.") + format;
    write(target, "old content");
    const std::size_t before = fileCount();
    const ProgramRun done = run({"convert", "source.obj", target}, {.fileSizeLimit = 20'000});
    EXPECT_EQ(done.exitCode, 4) << format << done.err;
    EXPECT_EQ(content(target), "old content");
    EXPECT_EQ(fileCount(), before);
  }
}

TEST_F(Outputs, aKilledRunLeavesNoPartOfAnOutput) {
  expectSuccess({"convert", "source.obj", "whole.zel"});
  const std::size_t expected = content("whole.zel").size();
  for (const int signal : {SIGTERM, SIGKILL}) {
    for (int delay = 0; delay < 60; delay += 6) {
      run({"convert", "source.obj", "target.zel"}, {.killSignal = signal, .killDelay = delay});
      if (exists("target.zel")) {
        EXPECT_EQ(content("target.zel").size(), expected);
      }
      std::filesystem::remove(file("target.zel"));
      if (signal == SIGTERM) {
        EXPECT_EQ(fileCount(), 2U) << "a temporary file stayed behind";
      }
    }
  }
}

TEST_F(Outputs, aReplacedFileKeepsItsPermissionsAndItsLinks) {
  write("shared.zel", "old");
  chmod(file("shared.zel").c_str(), 0640);
  std::filesystem::create_symlink("shared.zel", file("link.zel"));
  expectSuccess({"convert", "source.obj", "link.zel"});
  EXPECT_TRUE(std::filesystem::is_symlink(file("link.zel")));
  EXPECT_EQ(content("shared.zel").substr(0, 8), "zel4.008");
  EXPECT_EQ(std::filesystem::status(file("shared.zel")).permissions(),
            std::filesystem::perms(0640));
}

TEST_F(Outputs, textsBesideTheMeshThatCannotBeWrittenLeaveTheMeshAlone) {
  write("target.zel", "as it was");
  const Arguments cases[] = {{"weld", "source.obj", "target.zel", "--map", "/dev/full"},
                             {"unfold", "source.obj", "target.zel", "--svg", "/dev/full"}};
  for (const Arguments& arguments : cases) {
    EXPECT_EQ(exitCode(arguments), 4) << arguments[0];
    EXPECT_EQ(content("target.zel"), "as it was");
  }
}

TEST_F(Outputs, closedStreamsTakeNoRemarkIntoAnOutput) {
  expectSuccess({"convert", "source.obj", "whole.zel"});
  for (const int stream : {0, 1, 2}) {
    const ProgramRun done = run({"convert", "-v", "source.obj", "t.zel"}, {.closedStream = stream});
    EXPECT_EQ(done.exitCode, 0) << stream;
    EXPECT_EQ(content("t.zel"), content("whole.zel")) << stream;
  }
  EXPECT_EQ(run({"info", "source.obj"}, {.closedStream = 1}).exitCode, 4);
  EXPECT_EQ(run({"info", "-"}, {.closedStream = 0}).exitCode, 3);
}

TEST_F(Outputs, aMissingDirectoryForTemporaryFilesIsSaid) {
  const std::vector<std::string> nowhere = {"TMPDIR=/no/where"};
  const ProgramRun read = run({"info", "-", "--from", "off"}, {.environment = nowhere});
  EXPECT_EQ(read.exitCode, 3);
  const ProgramRun written = run({"convert", "source.obj", "-"}, {.environment = nowhere});
  EXPECT_EQ(written.exitCode, 4);
  for (const std::string& line : {read.err, written.err}) {
    EXPECT_NE(line.find("no directory for temporary files"), std::string::npos) << line;
  }
}

TEST_F(Outputs, theTextFormIsWrittenWhenAskedFor) {
  expectSuccess({"convert", "source.obj", "text.stl", "--ascii", "-q"});
  EXPECT_EQ(content("text.stl").substr(0, 6), "solid ");
  expectSuccess({"convert", "source.obj", "text.ply", "--ascii", "-q"});
  EXPECT_NE(content("text.ply").find("format ascii 1.0"), std::string::npos);
}

}  // namespace zel::test
