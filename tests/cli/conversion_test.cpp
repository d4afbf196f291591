#include <cstdlib>

#include "tests/cli/program_fixture.h"
#include "tests/cli/sample_meshes.h"

namespace zel::test {

namespace {

class Conversion : public ProgramTest {
 protected:
  void convert(const std::string& from, const std::string& to) const {
    expectSuccess({"convert", from, to});
  }
  [[nodiscard]] Json info(const std::string& name) const { return answer({"info", name}); }
  void expectSame(const std::string& a, const std::string& b) const {
    EXPECT_EQ(run({"diff", a, b}).out, "same\n") << a << " " << b;
  }
  /// Converts each file to the next one and expects that all are the same as the first.
  void expectChainKeepsAll(const Arguments& names) const {
    for (std::size_t k = 1; k < names.size(); ++k) {
      convert(names[k - 1], names[k]);
      expectSame(names[0], names[k]);
    }
  }
};

}  // namespace

TEST_F(Conversion, aDocumentHasTheseBytes) {
  write("a.obj", "v 0 0 0\nv 1.5 0 0\nv 0 -0.1 1e-9\nf 1 2 3\n");
  convert("a.obj", "a.zel");
  const std::string zero = "  0.00000000e+00,   0.00000000e+00,   0.00000000e+00\n";
  EXPECT_EQ(content("a.zel"),
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
  write("a.obj", tetrahedronObj());
  expectChainKeepsAll({"a.obj", "a.zel", "b.ply", "c.zel", "d.obj"});
  EXPECT_EQ(info("d.obj")["nodes"], 6) << "unused and repeated vertices stay";
}

TEST_F(Conversion, quadsStayQuadsAndBecomeTrianglesInStl) {
  write("a.obj", sheetObj(3, 4, true));
  expectChainKeepsAll({"a.obj", "b.zel", "c.ply"});
  EXPECT_EQ(info("c.ply")["quads"], 12);
  convert("c.ply", "d.stl");
  EXPECT_EQ(info("d.stl")["triangles"], 24);
}

TEST_F(Conversion, aSoupWeldsBackToItsSheet) {
  write("sheet.obj", sheetObj(5, 7, false));
  convert("sheet.obj", "soup.stl");
  expectSuccess({"convert", "soup.stl", "welded.zel", "--weld"});
  const Json soup = info("soup.stl");
  const Json welded = info("welded.zel");
  const Json sheet = info("sheet.obj");
  EXPECT_EQ(soup["nodes"], 210);
  EXPECT_EQ(soup["boundaryEdges"], 210);
  for (const char* fact : {"nodes", "triangles", "edges", "boundaryEdges", "boundaryLoops",
                           "components", "oriented", "lowest", "highest", "area"}) {
    EXPECT_EQ(welded[fact], sheet[fact]) << fact;
  }
}

TEST_F(Conversion, normalsAndTextureCoordinatesComeBack) {
  write("a.obj",
        "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\nvt 0.1 0.2\nvt 1 0\nvt 0.25 1\n"
        "vn 0 0 1\nvn 0.6 0 0.8\nf 1/1/1 2/2/1 3/3/2\nf 2//1 4//1 3//2\n");
  expectChainKeepsAll({"a.obj", "b.zel", "c.obj", "d.zel"});
  EXPECT_EQ(content("b.zel"), content("d.zel"));
  EXPECT_EQ(info("d.zel")["textureCoords"], true);
}

TEST_F(Conversion, coloursFollowTheirNodesIntoFormatsThatHoldThem) {
  // The second triangle repeats two nodes of the first, so that welding moves its last one.
  write("a.obj",
        "v 0 0 0 1 0 0\nv 1 0 0 0 1 0\nv 0 1 0 0 0 1\nv 1 0 0 0 1 0\nv 0 1 0 0 0 1\n"
        "v 1 1 0 1 0.2 0.4\nf 1 2 3\nf 4 6 5\n");
  expectSuccess({"weld", "a.obj", "a.ply"});
  expectSuccess({"convert", "a.ply", "b.obj"});
  EXPECT_NE(content("b.obj").find("\nv 1 1 0 1 0.2 0.4\n"), std::string::npos) << content("b.obj");
  EXPECT_NE(run({"convert", "b.obj", "c.zel"}).err.find("left out 4 node colours"),
            std::string::npos);
}

TEST_F(Conversion, pipesCarryTheSameBytesAsFiles) {
  write("a.obj", tetrahedronObj());
  convert("a.obj", "a.zel");
  const std::string document = content("a.zel");
  const ProgramRun out =
      run({"convert", "-", "-", "--from", "obj"}, {.standardInput = tetrahedronObj()});
  EXPECT_EQ(out.out, document);
  const ProgramRun diff = run({"diff", "-", "a.obj"}, {.standardInput = document});
  EXPECT_EQ(diff.out, "same\n") << diff.err;
  const ProgramRun info = run({"info", "-"}, {.standardInput = document});
  EXPECT_EQ(info.exitCode, 0) << info.err;
}

TEST_F(Conversion, aNameCanBeOverruled) {
  write("picture.png", tetrahedronObj());
  const ProgramRun done =
      run({"convert", "picture.png", "b.txt", "--from", "OBJ", "--to", "obj", "-v"});
  EXPECT_EQ(done.exitCode, 0) << done.err;
  EXPECT_NE(done.err.find("6 nodes, 4 triangles"), std::string::npos) << done.err;
  EXPECT_EQ(content("b.txt").substr(0, 2), "v ");
}

TEST_F(Conversion, aToleranceForgivesMovesUpToItself) {
  write("a.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
  write("b.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0.25\nf 1 2 3\n");
  const auto diff = [&](const char* tolerance) {
    return run({"diff", "a.obj", "b.obj", "--tolerance", tolerance, "--json"});
  };
  EXPECT_EQ(diff("0.25").exitCode, 0);
  EXPECT_EQ(diff("0.2499").exitCode, 1);
  EXPECT_EQ(Json::parse(diff("0").out)["largestMove"], 0.25);
  write("b.obj", "v 0 0 0\nv 1 0 0\nv 0 1 nan\nf 1 2 3\n");
  EXPECT_EQ(diff("1e9").exitCode, 1) << "no tolerance forgives a number that is none";
}

TEST_F(Conversion, aDecimalCommaChangesNoByte) {
  const std::string makeLocale =
      "localedef -i de_DE -f UTF-8 " + file("comma") + " >/dev/null 2>&1";
  if (std::system(makeLocale.c_str()) != 0) {
    GTEST_SKIP() << "localedef cannot make a locale here";
  }
  write("a.obj", sheetObj(3, 3, false));
  convert("a.obj", "a.zel");
  const ProgramSetup comma = {.environment = {"LOCPATH=" + dir_.path().string(), "LC_ALL=comma"}};
  for (const char* target : {"b.zel", "b.obj"}) {
    ASSERT_EQ(run({"convert", "a.zel", target}, comma).exitCode, 0);
  }
  EXPECT_EQ(content("a.zel"), content("b.zel"));
  expectSame("a.obj", "b.obj");
  EXPECT_EQ(run({"info", "a.zel", "--json"}, comma).out, run({"info", "a.zel", "--json"}).out);
}

TEST_F(Conversion, everyJsonAnswerParses) {
  write("a.obj", tetrahedronObj());
  const Json facts = info("a.obj");
  EXPECT_EQ(facts["closed"], true);
  EXPECT_EQ(facts["lowest"], Json({0, 0, -0.333333343F}));
  const Json formats = answer({"formats"});
  EXPECT_TRUE(std::ranges::any_of(formats, [](const auto& f) { return f["name"] == "off"; }));
  EXPECT_EQ(answer({"diff", "a.obj", "a.obj"})["same"], true);
  write("empty.obj", "");
  EXPECT_TRUE(info("empty.obj")["lowest"].is_null());
}

}  // namespace zel::test
