#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/cli/run_program.h"
#include "tests/support/temp_dir.h"

namespace zel::test {

TEST(Demo, weldsTheSoupBackToTheTubeAndSavesIt) {
  const TempDir dir;
  const ProgramRun run =
      runProgram({"demo", "--triangles", "3000"}, {.workingDirectory = dir.path().string()});
  EXPECT_EQ(run.exitCode, 0) << run.out << run.err;
  EXPECT_NE(run.out.find("none, to the last bit"), std::string::npos) << run.out;
  const ProgramRun info = runProgram({"info", dir.file("out/trefoil.zel"), "--json"});
  EXPECT_EQ(readFile(dir.file("out/demo.png")).substr(0, 4), "\x89PNG");
  const nlohmann::json facts = nlohmann::json::parse(info.out);
  EXPECT_GE(facts["triangles"], 3000);
  EXPECT_EQ(facts["components"], 1);
  EXPECT_EQ(facts["boundaryLoops"], 2);
  EXPECT_EQ(facts["oriented"], true);
  // A tube has as many edges as nodes and faces together: its Euler number is 0.
  EXPECT_EQ(facts["edges"].get<int>(), facts["nodes"].get<int>() + facts["triangles"].get<int>());
  EXPECT_EQ(facts["nodeNormals"], true);
}

TEST(Demo, theSameNumberGivesTheSameDocument) {
  const TempDir dir;
  for (const char* name : {"a.zel", "b.zel"}) {
    ASSERT_EQ(runProgram({"demo", "--triangles", "1000", "--output", dir.file(name)}).exitCode, 0);
  }
  EXPECT_EQ(readFile(dir.file("a.zel")), readFile(dir.file("b.zel")));
}

TEST(Demo, anUnwritableTargetGivesFour) {
  const TempDir dir;
  writeFile(dir.file("file"), "");
  EXPECT_EQ(
      runProgram({"demo", "--triangles", "1000", "--output", dir.file("file/x.zel")}).exitCode, 4);
}

}  // namespace zel::test
