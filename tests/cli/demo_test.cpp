#include "tests/cli/program_fixture.h"

namespace zel::test {

using Demo = ProgramTest;

TEST_F(Demo, weldsTheSoupBackToTheTubeAndSavesIt) {
  const ProgramRun done = run({"demo", "--triangles", "3000"});
  EXPECT_EQ(done.exitCode, 0) << done.out << done.err;
  EXPECT_NE(done.out.find("none, to the last bit"), std::string::npos) << done.out;
  EXPECT_EQ(content("out/demo.png").substr(0, 4), "\x89PNG");
  const Json facts = answer({"info", "out/trefoil.zel"});
  EXPECT_GE(facts["triangles"], 3000);
  EXPECT_EQ(facts["components"], 1);
  EXPECT_EQ(facts["boundaryLoops"], 2);
  EXPECT_EQ(facts["oriented"], true);
  // A tube has as many edges as nodes and faces together: its Euler number is 0.
  EXPECT_EQ(facts["edges"].get<int>(), facts["nodes"].get<int>() + facts["triangles"].get<int>());
  EXPECT_EQ(facts["nodeNormals"], true);
}

TEST_F(Demo, theSameNumberGivesTheSameDocument) {
  for (const char* name : {"a.zel", "b.zel"}) {
    expectSuccess({"demo", "--triangles", "1000", "--output", name});
  }
  EXPECT_EQ(content("a.zel"), content("b.zel"));
}

TEST_F(Demo, anUnwritableTargetGivesFour) {
  write("file", "");
  EXPECT_EQ(exitCode({"demo", "--triangles", "1000", "--output", "file/x.zel"}), 4);
}

}  // namespace zel::test
