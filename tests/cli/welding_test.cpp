// Soups of triangles, tolerances, winding: what the program says and does about real meshes.

#include "tests/cli/program_fixture.h"
#include "tests/cli/sample_meshes.h"

namespace zel::test {

namespace {

using Welding = ProgramTest;

/// A closed tetrahedron of edges 1 and up; wound inward unless it is turned.
std::string solidObj(bool outward) {
  const std::string nodes = "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\n";
  return nodes + (outward ? "f 1 3 2\nf 1 2 4\nf 2 3 4\nf 3 1 4\n"
                          : "f 1 2 3\nf 1 4 2\nf 2 4 3\nf 3 4 1\n");
}

bool says(const std::string& text, const std::string& what) {
  return text.find(what) != std::string::npos;
}

}  // namespace

TEST_F(Welding, joinsASoupWhereverItIsAskedForAndIsOfferedElsewhere) {
  write("a.obj", solidObj(true));
  expectSuccess({"convert", "a.obj", "a.stl"});
  for (const Arguments& line : {Arguments{"info", "a.stl"},
                                {"check", "a.stl"},
                                {"normals", "a.stl", "n.obj"},
                                {"unfold", "a.stl", "u.zel"},
                                {"convert", "a.stl", "c.ply"}}) {
    SCOPED_TRACE(line.front());
    EXPECT_TRUE(says(run(line).err, "a.stl: the faces share no nodes"));
    for (const Arguments& asked :
         {Arguments{"--weld"}, {"--tolerance", "0.01"}, {"--relative", "1e-3"}}) {
      Arguments welding = line;
      welding.insert(welding.end(), asked.begin(), asked.end());
      const ProgramRun done = run(welding);
      EXPECT_EQ(done.exitCode, 0) << asked.front() << done.err;
      EXPECT_EQ(done.err, "") << asked.front();
    }
  }
  EXPECT_EQ(answer({"info", "a.stl", "--weld"})["nodes"], 4);
  EXPECT_EQ(answer({"info", "n.obj"})["closed"], true);
  EXPECT_EQ(answer({"info", "u.zel"})["nodes"], 4);
  EXPECT_EQ(exitCode({"info", "a.stl", "--tolerance", "1", "--relative", "1"}), 2);
  // Faces that lie apart have nothing to weld; one face has no other.
  for (const char* apart :
       {"v 0 0 0\nv 1 0 0\nv 0 1 0\nv 5 0 0\nv 6 0 0\nv 5 1 0\nf 1 2 3\nf 4 5 6\n",
        "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"}) {
    write("b.obj", apart);
    EXPECT_EQ(run({"info", "b.obj"}).err, "");
  }
}

TEST_F(Welding, tellsWhatItCostAndThatStlCannotHoldIt) {
  write("a.obj", solidObj(true));
  expectSuccess({"convert", "a.obj", "a.stl"});
  struct Case {
    Arguments line;
    const char* err;
    const char* out;
  };
  for (const Case& each :
       {Case{{"weld", "a.stl", "b.stl"}, "an STL file cannot hold", "merged    8\n"},
        {{"convert", "a.stl", "-", "--to", "stl", "--weld"}, "an STL file cannot hold", ""},
        {{"convert", "a.stl", "b.obj", "--weld"}, "", "merged    8\n"},
        {{"convert", "a.stl", "b.obj", "--tolerance", "0.6"},
         "passes half the shortest edge, 1",
         "nodes merged    8\n"},
        {{"weld", "a.stl", "b.obj", "--tolerance", "1"}, "4 faces collapsed", "collapsed 4\n"},
        {{"check", "a.stl", "--tolerance", "1.1"}, "4 faces collapsed", ""}}) {
    const ProgramRun done = run(each.line);
    EXPECT_TRUE(says(done.err, each.err)) << each.line.front() << ": " << done.err;
    EXPECT_EQ(done.err.empty(), *each.err == '\0') << done.err;
    EXPECT_TRUE(says(done.out, each.out)) << each.line.front() << ": " << done.out;
  }
}

TEST_F(Welding, facesAreTurnedTheWayThatIsAsked) {
  write("in.obj", solidObj(false));
  write("out.obj", solidObj(true));
  struct Case {
    const char* input;
    Arguments options;
    double volume;  ///< times 6
  };
  for (const Case& each : {Case{"in.obj", {}, -1},
                           {"in.obj", {"--orient", "consistent"}, -1},
                           {"in.obj", {"--orient", "outward"}, 1},
                           {"out.obj", {"--orient", "outward"}, 1},
                           {"in.obj", {"--reverse"}, 1},
                           {"in.obj", {"--orient", "outward", "--reverse"}, -1}}) {
    Arguments line = {"normals", each.input, "n.obj"};
    line.insert(line.end(), each.options.begin(), each.options.end());
    expectSuccess(line);
    EXPECT_NEAR(answer({"info", "n.obj"})["volume"].get<double>() * 6, each.volume, 1e-6)
        << testing::PrintToString(line);
  }
  EXPECT_EQ(exitCode({"normals", "in.obj", "n.obj", "--orient", "sideways"}), 2);
}

TEST_F(Welding, anAngleDoesNotDependOnHowAFaceIsCut) {
  // Two walls that meet at node 1; the one in z = 0 is cut into two triangles there.
  write("a.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 0 0 4\nf 1 2 3\nf 1 3 4\nf 1 4 5\n");
  const auto normalOfNode0 = [&](const Arguments& options) {
    Arguments line = {"normals", "a.obj", "n.obj"};
    line.insert(line.end(), options.begin(), options.end());
    expectSuccess(line);
    const std::string text = content("n.obj");
    return text.substr(text.find("vn "), text.find('\n', text.find("vn ")) - text.find("vn "));
  };
  EXPECT_EQ(normalOfNode0({"--weight", "angle"}), "vn 0.70710677 0 0.70710677");
  EXPECT_EQ(normalOfNode0({"--weight", "area"}), "vn 0.8944272 0 0.4472136");
  EXPECT_EQ(normalOfNode0({"--weight", "flat"}), normalOfNode0({"--flat"}));
  for (const char* other : {"--flat", "--smooth"}) {
    EXPECT_EQ(exitCode({"normals", "a.obj", "n.obj", "--weight", "angle", other}), 2);
  }
}

TEST_F(Welding, convertCutsQuadsAndCentres) {
  // The diagonal from the second to the fourth corner is the one inside.
  write("a.obj", "v 1000 0 2\nv 1004 1 2\nv 1000 4 2\nv 1001 1 2\nf 1 2 3 4\n");
  const ProgramRun done = run({"convert", "a.obj", "b.obj", "--centre", "--triangulate"});
  ASSERT_EQ(done.exitCode, 0) << done.err;
  EXPECT_EQ(done.err, "a.obj: moved by -1002 -2 -2\n");
  EXPECT_EQ(content("b.obj"), "v -2 -2 0\nv 2 -1 0\nv -2 2 0\nv -1 -1 0\nf 1 2 4\nf 2 3 4\n");
  write("nan.obj", "v 1 nan 3\nv 3 4 5\n");
  expectSuccess({"convert", "nan.obj", "n.obj", "--centre"});
  EXPECT_EQ(content("n.obj"), "v -2 nan -2\nv 0 0 0\n");
}

TEST_F(Welding, nothingAndPointsAreCalledWhatTheyAre) {
  write("nothing.obj", "");
  write("points.obj", "v 0 0 0\nv 1 2 3\n");
  for (const auto& [name, text] :
       {std::pair{"nothing", "an empty mesh"}, {"points", "a point cloud"}}) {
    const std::string file = std::string(name) + ".obj";
    for (const char* command : {"info", "check"}) {
      EXPECT_TRUE(says(run({command, file}).out, text)) << command << file;
      EXPECT_EQ(Json::parse(run({command, file, "--json"}).out)["contents"], name) << command;
    }
  }
  EXPECT_EQ(answer({"check", "nothing.obj"})["sound"], true);
  const ProgramRun done = run({"render", "nothing.obj", "-o", "a.png"});
  EXPECT_EQ(done.exitCode, 3);
  EXPECT_TRUE(says(done.err, "nothing to draw")) << done.err;
  EXPECT_FALSE(exists("a.png"));
}

}  // namespace zel::test
