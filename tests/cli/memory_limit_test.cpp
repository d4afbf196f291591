#include "tests/cli/program_fixture.h"
#include "tests/cli/sample_meshes.h"

// Sanitizers take more addresses than any limit here allows.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

namespace zel::test {

namespace {

constexpr long kMebibyte = 1 << 20;

class LittleMemory : public ProgramTest {
 protected:
  LittleMemory() {
    write("sheet.obj", sheetObj(150, 150, false));
    expectSuccess({"convert", "sheet.obj", "sheet.zel"});
    expectSuccess({"convert", "sheet.obj", "sheet.stl", "-q"});
    write("part.obj", sheetObj(50, 50, false));
    std::string points = "OFF\n60000 1 0\n";
    for (int k = 0; k < 20'000; ++k) {
      points += "0 0 0\n1 0 0\n0 1 0\n";
    }
    write("points.off", points + "3 0 1 2\n");
  }

  /// Runs a command with ever more memory. Whatever it has, the answer is that of a free run, with
  /// the output whole, or code 5 in one line, with the output as it was.
  /// @return how often it was code 5.
  int sweep(const Arguments& arguments, const std::string& output) const {
    const ProgramRun free = run(arguments);
    const std::string whole = output.empty() ? "" : content(output);
    int refused = 0;
    int done = 0;
    for (const long limit : {36, 40, 44, 52, 68, 100, 512}) {
      if (!output.empty()) {
        write(output, "as it was");
      }
      const ProgramRun limited = run(arguments, {.memoryLimit = limit * kMebibyte});
      const std::string written = output.empty() ? "" : content(output);
      SCOPED_TRACE(testing::PrintToString(arguments) + " with " + std::to_string(limit) +
                   " MiB: " + limited.err);
      constexpr int kNotLoaded = 127;  // of the system, before the program begins
      if (limited.exitCode == 5) {
        ++refused;
        EXPECT_EQ(std::ranges::count(limited.err, '\n'), 1);
      } else if (limited.exitCode != kNotLoaded) {
        ++done;
        EXPECT_EQ(limited.exitCode, free.exitCode) << limited.signal;
        EXPECT_EQ(limited.out, free.out);
      }
      const bool isDone = limited.exitCode == free.exitCode;
      EXPECT_EQ(written == whole, isDone || output.empty());
      EXPECT_TRUE(isDone || output.empty() || written == "as it was");
    }
    EXPECT_GT(done, 0) << arguments[0];
    return refused;
  }
};

}  // namespace

TEST_F(LittleMemory, givesTheWholeResultOrCodeFive) {
  const struct {
    Arguments arguments;
    const char* output;
  } cases[] = {{{"info", "sheet.zel"}, ""},
               {{"check", "sheet.obj"}, ""},
               {{"diff", "sheet.zel", "sheet.obj"}, ""},
               {{"fit", "sheet.zel"}, ""},
               {{"convert", "points.off", "points.zel", "-q"}, "points.zel"},
               {{"weld", "sheet.stl", "welded.zel", "-q"}, "welded.zel"},
               {{"convert", "sheet.zel", "sheet.ply", "-q"}, "sheet.ply"},
               {{"normals", "sheet.zel", "normals.zel", "-q"}, "normals.zel"},
               {{"unfold", "part.obj", "unfolded.zel", "-q"}, "unfolded.zel"}};
  int refused = 0;
  for (const auto& [arguments, output] : cases) {
    refused += sweep(arguments, output);
  }
  EXPECT_GT(refused, 0);
}

TEST_F(LittleMemory, ofAForeignReadingIsToldAsSuch) {
  const ProgramRun done = run({"info", "points.off", "--max-memory", "36"});
  EXPECT_EQ(done.exitCode, 5);
  EXPECT_EQ(done.err,
            "zel: points.off: too large: reading it takes more than 36 MiB of memory; "
            "--max-memory may allow more\n");
  expectSuccess({"info", "points.off", "--max-memory", "400"});
}

}  // namespace zel::test

#endif
