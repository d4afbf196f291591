#include <gtest/gtest.h>

#include <cstdlib>
#include <nlohmann/json.hpp>

#include "tests/cli/run_program.h"
#include "tests/cli/sample_meshes.h"
#include "tests/support/temp_dir.h"

namespace zel::test {

namespace {

class Conversion : public testing::Test {
 protected:
  [[nodiscard]] std::string file(const std::string& name) const { return dir_.file(name); }

  void convert(const std::string& from, const std::string& to,
               const std::vector<std::string>& options = {}) const {
    std::vector<std::string> arguments = {"convert", file(from), file(to)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProgramRun run = runProgram(arguments);
    EXPECT_EQ(run.exitCode, 0) << from << " to " << to << ": " << run.err;
  }

  [[nodiscard]] nlohmann::json info(const std::string& name) const {
    return nlohmann::json::parse(runProgram({"info", file(name), "--json"}).out);
  }

  void expectSame(const std::string& a, const std::string& b) const {
    EXPECT_EQ(runProgram({"diff", file(a), file(b)}).out, "same\n") << a << " " << b;
  }

  TempDir dir_;
};

}  // namespace

TEST_F(Conversion, aDocumentHasTheseBytes) {
  writeFile(file("a.obj"), "v 0 0 0\nv 1.5 0 0\nv 0 -0.1 1e-9\nf 1 2 3\n");
  convert("a.obj", "a.zel");
  const std::string zero = "  0.00000000e+00,   0.00000000e+00,   0.00000000e+00\n";
  EXPECT_EQ(readFile(file("a.zel")),
            "zel4.008\n"
            "3, NODE_LIST_BEGIN\n"
            "0, INDEX_OF_NODE_LIST\n   31\n" +
                zero + zero +
                "1, INDEX_OF_NODE_LIST\n   31\n"
                "  1.50000000e+00,   0.00000000e+00,   0.00000000e+00\n" +
                zero +
                "2, INDEX_OF_NODE_LIST\n   31\n"
                "  0.00000000e+00,  -1.00000001e-01,   9.99999972e-10\n" +
                zero +
                "NODE_LIST_END\n"
                "         1,  TRIANGLE_LIST_BEGIN\n"
                "         0,  INDEX_OF_TRIANGLE_LIST\n   31\n"
                "         0,           1,           2\n"
                "  0.00000000e+00,  0.00000000e+00,  0.00000000e+00\n0\n"
                "TRIANGLE_LIST_END\n"
                "         0,  QUAD_LIST_BEGIN\n"
                "QUAD_LIST_END\n");
}

TEST_F(Conversion, verticesKeepTheirNumbersWhateverTheFormat) {
  writeFile(file("a.obj"), tetrahedronObj());
  convert("a.obj", "a.zel");
  convert("a.zel", "b.ply");
  convert("b.ply", "c.zel");
  convert("c.zel", "d.obj");
  for (const char* copy : {"a.zel", "b.ply", "c.zel", "d.obj"}) {
    expectSame("a.obj", copy);
  }
  EXPECT_EQ(info("d.obj")["nodes"], 6) << "unused and repeated vertices stay";
}

TEST_F(Conversion, quadsStayQuadsAndBecomeTrianglesInStl) {
  writeFile(file("a.obj"), sheetObj(3, 4, true));
  convert("a.obj", "b.zel");
  convert("b.zel", "c.ply");
  expectSame("a.obj", "b.zel");
  expectSame("a.obj", "c.ply");
  EXPECT_EQ(info("c.ply")["quads"], 12);
  convert("c.ply", "d.stl");
  EXPECT_EQ(info("d.stl")["triangles"], 24);
}

TEST_F(Conversion, aSoupWeldsBackToItsSheet) {
  writeFile(file("sheet.obj"), sheetObj(5, 7, false));
  convert("sheet.obj", "soup.stl");
  convert("soup.stl", "welded.zel", {"--weld"});
  const nlohmann::json soup = info("soup.stl");
  const nlohmann::json welded = info("welded.zel");
  const nlohmann::json sheet = info("sheet.obj");
  EXPECT_EQ(soup["nodes"], 210);
  EXPECT_EQ(soup["boundaryEdges"], 210);
  for (const char* fact : {"nodes", "triangles", "edges", "boundaryEdges", "boundaryLoops",
                           "components", "oriented", "lowest", "highest", "area"}) {
    EXPECT_EQ(welded[fact], sheet[fact]) << fact;
  }
}

TEST_F(Conversion, normalsAndTextureCoordinatesComeBack) {
  writeFile(file("a.obj"),
            "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\nvt 0.1 0.2\nvt 1 0\nvt 0.25 1\n"
            "vn 0 0 1\nvn 0.6 0 0.8\nf 1/1/1 2/2/1 3/3/2\nf 2//1 4//1 3//2\n");
  convert("a.obj", "b.zel");
  convert("b.zel", "c.obj");
  convert("c.obj", "d.zel");
  expectSame("a.obj", "b.zel");
  expectSame("a.obj", "c.obj");
  EXPECT_EQ(readFile(file("b.zel")), readFile(file("d.zel")));
  EXPECT_EQ(info("d.zel")["textureCoords"], true);
}

TEST_F(Conversion, pipesCarryTheSameBytesAsFiles) {
  writeFile(file("a.obj"), tetrahedronObj());
  convert("a.obj", "a.zel");
  const std::string document = readFile(file("a.zel"));
  const ProgramRun out =
      runProgram({"convert", "-", "-", "--from", "obj"}, {.standardInput = tetrahedronObj()});
  EXPECT_EQ(out.out, document);
  const ProgramRun in = runProgram({"diff", "-", file("a.obj")}, {.standardInput = document});
  EXPECT_EQ(in.out, "same\n") << in.err;
  const ProgramRun info = runProgram({"info", "-"}, {.standardInput = document});
  EXPECT_EQ(info.exitCode, 0) << info.err;
}

TEST_F(Conversion, aNameCanBeOverruled) {
  writeFile(file("picture.png"), tetrahedronObj());
  const ProgramRun run = runProgram(
      {"convert", file("picture.png"), file("b.txt"), "--from", "OBJ", "--to", "obj", "-v"});
  EXPECT_EQ(run.exitCode, 0) << run.err;
  EXPECT_NE(run.err.find("6 nodes, 4 triangles"), std::string::npos) << run.err;
  EXPECT_EQ(readFile(file("b.txt")).substr(0, 2), "v ");
}

TEST_F(Conversion, aToleranceForgivesMovesUpToItself) {
  writeFile(file("a.obj"), "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
  writeFile(file("b.obj"), "v 0 0 0\nv 1 0 0\nv 0 1 0.25\nf 1 2 3\n");
  const auto diff = [&](const char* tolerance) {
    return runProgram({"diff", file("a.obj"), file("b.obj"), "--tolerance", tolerance, "--json"});
  };
  EXPECT_EQ(diff("0.25").exitCode, 0);
  EXPECT_EQ(diff("0.2499").exitCode, 1);
  EXPECT_EQ(nlohmann::json::parse(diff("0").out)["largestMove"], 0.25);
  writeFile(file("b.obj"), "v 0 0 0\nv 1 0 0\nv 0 1 nan\nf 1 2 3\n");
  EXPECT_EQ(diff("1e9").exitCode, 1) << "no tolerance forgives a number that is none";
}

TEST_F(Conversion, aDecimalCommaChangesNoByte) {
  const std::string locale = file("comma");
  if (std::system(("localedef -i de_DE -f UTF-8 " + locale + " >/dev/null 2>&1").c_str()) != 0) {
    GTEST_SKIP() << "localedef cannot make a locale here";
  }
  writeFile(file("a.obj"), sheetObj(3, 3, false));
  convert("a.obj", "a.zel");
  const ProgramSetup comma = {.environment = {"LOCPATH=" + dir_.path().string(), "LC_ALL=comma"}};
  for (const char* target : {"b.zel", "b.obj"}) {
    ASSERT_EQ(runProgram({"convert", file("a.zel"), file(target)}, comma).exitCode, 0);
  }
  EXPECT_EQ(readFile(file("a.zel")), readFile(file("b.zel")));
  expectSame("a.obj", "b.obj");
  EXPECT_EQ(runProgram({"info", file("a.zel"), "--json"}, comma).out,
            runProgram({"info", file("a.zel"), "--json"}).out);
}

TEST_F(Conversion, everyJsonAnswerParses) {
  writeFile(file("a.obj"), tetrahedronObj());
  const nlohmann::json facts = info("a.obj");
  EXPECT_EQ(facts["closed"], true);
  EXPECT_EQ(facts["lowest"], nlohmann::json({0, 0, -0.333333343F}));
  const auto formats = nlohmann::json::parse(runProgram({"formats", "--json"}).out);
  EXPECT_TRUE(std::ranges::any_of(formats, [](const auto& f) { return f["name"] == "off"; }));
  const auto same = runProgram({"diff", file("a.obj"), file("a.obj"), "--json"}).out;
  EXPECT_EQ(nlohmann::json::parse(same)["same"], true);
  writeFile(file("empty.obj"), "");
  EXPECT_TRUE(info("empty.obj")["lowest"].is_null());
}

}  // namespace zel::test
