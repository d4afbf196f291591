#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>

#include "tests/cli/run_program.h"
#include "tests/cli/sample_meshes.h"
#include "tests/support/temp_dir.h"

namespace zel::test {

namespace {

class MeshWork : public testing::Test {
 protected:
  [[nodiscard]] std::string file(const std::string& name) const { return dir_.file(name); }

  /// The counts of `zel check --json`, those that are not 0.
  [[nodiscard]] nlohmann::json defects(const std::string& obj) const {
    writeFile(file("checked.obj"), obj);
    const ProgramRun run = runProgram({"check", file("checked.obj"), "--json"});
    nlohmann::json found = nlohmann::json::object();
    const nlohmann::json answer = nlohmann::json::parse(run.out);
    for (const auto& [name, count] : answer.items()) {
      if (count.is_number() && count != 0) {
        found[name] = count;
      }
    }
    EXPECT_EQ(run.exitCode, found.empty() ? 0 : 1);
    return found;
  }

  TempDir dir_;
};

const std::string kClosed =
    "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\nf 1 3 2\nf 1 2 4\nf 2 3 4\nf 3 1 4\n";

}  // namespace

TEST_F(MeshWork, checkTellsEachClassOfDefectApart) {
  using Json = nlohmann::json;
  EXPECT_EQ(defects(kClosed), Json::object());
  EXPECT_EQ(defects(sheetObj(2, 3, true)), Json({{"openEdges", 10}}));
  EXPECT_EQ(defects(kClosed + "v 5 5 5\n"), Json({{"unusedNodes", 1}}));
  EXPECT_EQ(defects("v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\nf 1 3 2\nf 1 2 4\nf 2 4 3\nf 3 1 4\n"),
            Json({{"mixedEdges", 3}}));
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
  writeFile(file("sheet.obj"), sheetObj(2, 2, false));
  EXPECT_EQ(runProgram({"check", file("sheet.obj")}).exitCode, 1);
  EXPECT_EQ(runProgram({"check", file("sheet.obj"), "--ignore", "openEdges"}).exitCode, 0);
  EXPECT_EQ(runProgram({"check", file("sheet.obj"), "--ignore", "nonsense"}).exitCode, 2);
  writeFile(file("loose.obj"), sheetObj(2, 2, false) + "v 9 9 9\n");
  const std::vector<std::string> both = {"--ignore", "openEdges", "--ignore", "unusedNodes"};
  std::vector<std::string> arguments = {"check", both[0], both[1], file("loose.obj")};
  EXPECT_EQ(runProgram(arguments).exitCode, 1);
  arguments.insert(arguments.end(), both.begin() + 2, both.end());
  EXPECT_EQ(runProgram(arguments).exitCode, 0);
}

TEST_F(MeshWork, smoothNormalsOfASheetPointUpAndFlatOnesFollowTheFaces) {
  writeFile(file("roof.obj"),
            "v -1 0 0\nv 0 0 1\nv 1 0 0\nv -1 1 0\nv 0 1 1\nv 1 1 0\nf 1 2 5 4\nf 2 3 6 5\n");
  ASSERT_EQ(runProgram({"normals", file("roof.obj"), file("smooth.obj")}).exitCode, 0);
  const std::string smooth = readFile(file("smooth.obj"));
  EXPECT_NE(smooth.find("vn 0 0 1\n"), std::string::npos) << "the ridge lies between both slopes";
  EXPECT_NE(smooth.find("vn -0.70710677 0 0.70710677\n"), std::string::npos) << smooth;
  ASSERT_EQ(runProgram({"normals", file("roof.obj"), file("flat.obj"), "--flat"}).exitCode, 0);
  EXPECT_EQ(readFile(file("flat.obj")).find("vn 0 0 1\n"), std::string::npos);
  ASSERT_EQ(runProgram({"normals", file("roof.obj"), file("down.obj"), "--flip"}).exitCode, 0);
  EXPECT_NE(readFile(file("down.obj")).find("vn -0 -0 -1\n"), std::string::npos);
}

TEST_F(MeshWork, theInputChangesOnlyInPlace) {
  writeFile(file("a.obj"), kClosed);
  ASSERT_EQ(runProgram({"normals", file("a.obj"), file("b.obj")}).exitCode, 0);
  EXPECT_EQ(readFile(file("a.obj")), kClosed);
  EXPECT_EQ(runProgram({"normals", file("a.obj")}).exitCode, 2);
  EXPECT_EQ(runProgram({"normals", file("a.obj"), file("b.obj"), "--in-place"}).exitCode, 2);
  EXPECT_EQ(runProgram({"normals", "-", "--in-place"}, {.standardInput = kClosed}).exitCode, 2);
  std::filesystem::create_symlink(file("a.obj"), file("link.obj"));
  for (const char* sameFile : {"a.obj", "./a.obj", "link.obj"}) {
    EXPECT_EQ(runProgram({"normals", file("a.obj"), file(sameFile)}).exitCode, 2) << sameFile;
  }
  EXPECT_EQ(readFile(file("a.obj")), kClosed);
  ASSERT_EQ(runProgram({"normals", file("a.obj"), "--in-place"}).exitCode, 0);
  EXPECT_EQ(readFile(file("a.obj")), readFile(file("b.obj")));
}

TEST_F(MeshWork, weldTellsToleranceAndLargestMoveAndWritesTheMap) {
  writeFile(file("a.obj"),
            "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0.125 0 0\nv 1 0 0.0625\nv 1 1 0\nf 1 2 3\nf 4 5 6\n");
  const ProgramRun run = runProgram({"weld", file("a.obj"), file("b.obj"), "--tolerance", "0.125",
                                     "--map", file("map.txt"), "--json"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  const nlohmann::json report = nlohmann::json::parse(run.out);
  EXPECT_EQ(report["tolerance"], 0.125);
  EXPECT_EQ(report["largestMove"], 0.125);
  EXPECT_EQ(report["nodesMerged"], 2);
  EXPECT_EQ(readFile(file("map.txt")), "0 0\n1 1\n2 2\n3 0\n4 1\n5 3\n");
  EXPECT_EQ(readFile(file("b.obj")), "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\nf 1 2 3\nf 1 2 4\n");
}

TEST_F(MeshWork, aSecondOutputNeitherReplacesTheMeshNorLeavesItAlone) {
  writeFile(file("a.obj"), kClosed);
  const auto weld = [&](const std::string& output, const std::string& map) {
    return runProgram({"weld", file("a.obj"), output, "--map", map}).exitCode;
  };
  EXPECT_EQ(weld(file("b.obj"), file("a.obj")), 2);
  EXPECT_EQ(weld(file("b.obj"), file("./b.obj")), 2);
  EXPECT_EQ(weld("-", "-"), 2);
  EXPECT_EQ(weld(file("b.obj"), file("nowhere/map.txt")), 4);
  EXPECT_EQ(readFile(file("a.obj")), kClosed);
  EXPECT_FALSE(std::filesystem::exists(file("b.obj")));
  EXPECT_EQ(runProgram({"unfold", file("a.obj"), "--in-place", "--svg", file("a.obj")}).exitCode,
            2);
}

TEST_F(MeshWork, weldToleranceCanBeRelativeToTheBounds) {
  writeFile(file("a.obj"), "v 0 0 0\nv 3 4 0\nv 3 4 0.4\nv 0 0 0\n");
  const auto merged = [&](const char* relative) {
    const ProgramRun run =
        runProgram({"weld", file("a.obj"), file("b.zel"), "--relative", relative, "--json"});
    return nlohmann::json::parse(run.out)["nodesMerged"].get<int>();
  };
  EXPECT_EQ(merged("0"), 1);
  EXPECT_EQ(merged("0.079"), 1);
  EXPECT_EQ(merged("0.081"), 2);
}

TEST_F(MeshWork, weldTakesTextureCoordinatesAlongAndRefusesNaN) {
  writeFile(file("a.obj"),
            "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 0\nv 1 1 0\nvt 0.5 0.25\nvt 0.75 1\n"
            "f 1/1 4/1 2/1\nf 1/2 2/2 3/2\nf 4/1 2/1 5/2\n");
  ASSERT_EQ(runProgram({"weld", file("a.obj"), file("b.obj"), "-q"}).exitCode, 0);
  EXPECT_EQ(readFile(file("b.obj")),
            "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\nvt 0.75 1\nvt 0.75 1\nvt 0.75 1\n"
            "vt 0.5 0.25\nvt 0.5 0.25\nvt 0.75 1\nf 1/1 2/2 3/3\nf 1/4 2/5 4/6\n");
  writeFile(file("nan.obj"), "v 0 0 0\nv 0 nan 0\n");
  const ProgramRun run = runProgram({"weld", file("nan.obj"), file("c.obj")});
  EXPECT_EQ(run.exitCode, 3);
  EXPECT_NE(run.err.find("node 1"), std::string::npos) << run.err;
  EXPECT_FALSE(std::filesystem::exists(file("c.obj")));
}

TEST_F(MeshWork, orientTurnsTheOddFaceRound) {
  writeFile(file("a.obj"),
            "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\nf 1 3 2\nf 1 2 4\nf 2 4 3\nf 3 1 4\n");
  ASSERT_EQ(runProgram({"normals", file("a.obj"), file("b.obj"), "--orient"}).exitCode, 0);
  EXPECT_EQ(runProgram({"check", file("b.obj")}).exitCode, 0);
}

}  // namespace zel::test
