#include <cmath>

#include "tests/cli/program_fixture.h"
#include "tests/cli/sample_meshes.h"

namespace zel::test {

namespace {

class MeshWork : public ProgramTest {
 protected:
  /// The counts of `zel check --json`, those that are not 0.
  [[nodiscard]] Json defects(const std::string& obj) const {
    write("checked.obj", obj);
    const ProgramRun done = run({"check", "checked.obj", "--json"});
    Json found = Json::object();
    const Json counts = Json::parse(done.out);
    for (const auto& [name, count] : counts.items()) {
      if (count.is_number() && count != 0) {
        found[name] = count;
      }
    }
    EXPECT_EQ(done.exitCode, found.empty() ? 0 : 1);
    return found;
  }
};

const std::string kClosed =
    "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\nf 1 3 2\nf 1 2 4\nf 2 3 4\nf 3 1 4\n";
const std::string kOneFaceTurned =
    "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\nf 1 3 2\nf 1 2 4\nf 2 4 3\nf 3 1 4\n";

}  // namespace

TEST_F(MeshWork, checkTellsEachClassOfDefectApart) {
  EXPECT_EQ(defects(kClosed), Json::object());
  EXPECT_EQ(defects(sheetObj(2, 3, true)), Json({{"openEdges", 10}}));
  EXPECT_EQ(defects(kClosed + "v 5 5 5\n"), Json({{"unusedNodes", 1}}));
  EXPECT_EQ(defects(kOneFaceTurned), Json({{"mixedEdges", 3}}));
  EXPECT_EQ(defects(kClosed + "f 2 3 1\n"), Json({{"crowdedEdges", 3}, {"duplicateFaces", 1}}));
  EXPECT_EQ(defects("v 0 0 0\nv 1 0 0\nv 2 0 0\nf 1 2 3\n"),
            Json({{"degenerateFaces", 1}, {"openEdges", 3}}));
  EXPECT_EQ(defects(kClosed + "f 1 2 2\n"), Json({{"degenerateFaces", 1}}));
  EXPECT_EQ(defects("v 0 0 0\nv 1 0 0\nv 0 1 0\nv -1 0 0\nv 0 -1 0\nf 1 2 3\nf 1 4 5\n"),
            Json({{"bowTieNodes", 1}, {"openEdges", 6}}));
  EXPECT_EQ(defects("v 0 0 0\nv nan 0 0\nv 0 1 0\nf 1 2 3\n"),
            Json({{"nonFiniteNodes", 1}, {"openEdges", 3}}));
}

TEST_F(MeshWork, checkCanBeToldWhatToIgnore) {
  write("sheet.obj", sheetObj(2, 2, false));
  EXPECT_EQ(exitCode({"check", "sheet.obj"}), 1);
  EXPECT_EQ(exitCode({"check", "sheet.obj", "--ignore", "openEdges"}), 0);
  EXPECT_EQ(exitCode({"check", "sheet.obj", "--ignore", "nonsense"}), 2);
  write("loose.obj", sheetObj(2, 2, false) + "v 9 9 9\n");
  EXPECT_EQ(exitCode({"check", "--ignore", "openEdges", "loose.obj"}), 1);
  EXPECT_EQ(exitCode({"check", "--ignore", "openEdges", "loose.obj", "--ignore", "unusedNodes"}),
            0);
}

TEST_F(MeshWork, smoothNormalsOfASheetPointUpAndFlatOnesFollowTheFaces) {
  write("roof.obj",
        "v -1 0 0\nv 0 0 1\nv 1 0 0\nv -1 1 0\nv 0 1 1\nv 1 1 0\nf 1 2 5 4\nf 2 3 6 5\n");
  ASSERT_EQ(exitCode({"normals", "roof.obj", "smooth.obj"}), 0);
  const std::string smooth = content("smooth.obj");
  EXPECT_NE(smooth.find("vn 0 0 1\n"), std::string::npos) << "the ridge lies between both slopes";
  EXPECT_NE(smooth.find("vn -0.70710677 0 0.70710677\n"), std::string::npos) << smooth;
  ASSERT_EQ(exitCode({"normals", "roof.obj", "flat.obj", "--flat"}), 0);
  EXPECT_EQ(content("flat.obj").find("vn 0 0 1\n"), std::string::npos);
  ASSERT_EQ(exitCode({"normals", "roof.obj", "down.obj", "--flip"}), 0);
  EXPECT_NE(content("down.obj").find("vn -0 -0 -1\n"), std::string::npos);
}

TEST_F(MeshWork, theInputChangesOnlyInPlace) {
  write("a.obj", kClosed);
  ASSERT_EQ(exitCode({"normals", "a.obj", "b.obj"}), 0);
  EXPECT_EQ(content("a.obj"), kClosed);
  EXPECT_EQ(exitCode({"normals", "a.obj"}), 2);
  EXPECT_EQ(exitCode({"normals", "a.obj", "b.obj", "--in-place"}), 2);
  EXPECT_EQ(run({"normals", "-", "--in-place"}, {.standardInput = kClosed}).exitCode, 2);
  std::filesystem::create_symlink("a.obj", file("link.obj"));
  for (const char* sameFile : {"a.obj", "./a.obj", "link.obj"}) {
    EXPECT_EQ(exitCode({"normals", "a.obj", sameFile}), 2) << sameFile;
  }
  EXPECT_EQ(content("a.obj"), kClosed);
  ASSERT_EQ(exitCode({"normals", "a.obj", "--in-place"}), 0);
  EXPECT_EQ(content("a.obj"), content("b.obj"));
}

TEST_F(MeshWork, weldTellsToleranceAndLargestMoveAndWritesTheMap) {
  write("a.obj",
        "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0.125 0 0\nv 1 0 0.0625\nv 1 1 0\nf 1 2 3\nf 4 5 6\n");
  const Json report =
      answer({"weld", "a.obj", "b.obj", "--tolerance", "0.125", "--map", "map.txt"});
  EXPECT_EQ(report["tolerance"], 0.125);
  EXPECT_EQ(report["largestMove"], 0.125);
  EXPECT_EQ(report["nodesMerged"], 2);
  EXPECT_EQ(content("map.txt"), "0 0\n1 1\n2 2\n3 0\n4 1\n5 3\n");
  EXPECT_EQ(content("b.obj"), "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\nf 1 2 3\nf 1 2 4\n");
}

TEST_F(MeshWork, aSecondOutputNeitherReplacesTheMeshNorLeavesItAlone) {
  write("a.obj", kClosed);
  const auto weld = [&](const std::string& output, const std::string& map) {
    return exitCode({"weld", "a.obj", output, "--map", map});
  };
  EXPECT_EQ(weld("b.obj", "a.obj"), 2);
  EXPECT_EQ(weld("b.obj", "./b.obj"), 2);
  EXPECT_EQ(weld("-", "-"), 2);
  EXPECT_EQ(weld("b.obj", "nowhere/map.txt"), 4);
  EXPECT_EQ(content("a.obj"), kClosed);
  EXPECT_FALSE(exists("b.obj"));
  EXPECT_EQ(exitCode({"unfold", "a.obj", "--in-place", "--svg", "a.obj"}), 2);
}

TEST_F(MeshWork, weldToleranceCanBeRelativeToTheBounds) {
  write("a.obj", "v 0 0 0\nv 3 4 0\nv 3 4 0.4\nv 0 0 0\n");
  const auto merged = [&](const char* relative) {
    return answer({"weld", "a.obj", "b.zel", "--relative", relative})["nodesMerged"].get<int>();
  };
  EXPECT_EQ(merged("0"), 1);
  EXPECT_EQ(merged("0.079"), 1);
  EXPECT_EQ(merged("0.081"), 2);
}

TEST_F(MeshWork, weldTakesTextureCoordinatesAlongAndRefusesNaN) {
  write("a.obj",
        "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 0\nv 1 1 0\nvt 0.5 0.25\nvt 0.75 1\n"
        "f 1/1 4/1 2/1\nf 1/2 2/2 3/2\nf 4/1 2/1 5/2\n");
  ASSERT_EQ(exitCode({"weld", "a.obj", "b.obj", "-q"}), 0);
  EXPECT_EQ(content("b.obj"),
            "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\nvt 0.75 1\nvt 0.75 1\nvt 0.75 1\n"
            "vt 0.5 0.25\nvt 0.5 0.25\nvt 0.75 1\nf 1/1 2/2 3/3\nf 1/4 2/5 4/6\n");
  write("nan.obj", "v 0 0 0\nv 0 nan 0\n");
  const ProgramRun done = run({"weld", "nan.obj", "c.obj"});
  EXPECT_EQ(done.exitCode, 3);
  EXPECT_NE(done.err.find("node 1"), std::string::npos) << done.err;
  EXPECT_FALSE(exists("c.obj"));
}

TEST_F(MeshWork, orientTurnsTheOddFaceRound) {
  write("a.obj", kOneFaceTurned);
  ASSERT_EQ(exitCode({"normals", "a.obj", "b.obj", "--orient", "consistent"}), 0);
  EXPECT_EQ(exitCode({"check", "b.obj"}), 0);
}

}  // namespace zel::test
