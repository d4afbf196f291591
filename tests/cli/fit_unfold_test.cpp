#include <cmath>
#include <regex>
#include <sstream>

#include "tests/cli/program_fixture.h"
#include "tests/cli/sample_meshes.h"

namespace zel::test {

namespace {

using FitUnfold = ProgramTest;

/// Points on a circle of radius 3 about (10, -4, 2) in a plane tilted about the x axis.
std::string circleObj() {
  std::ostringstream text;
  text.precision(9);
  for (int i = 0; i < 40; ++i) {
    const double angle = 0.13 * i;
    text << "v " << 10.0 + 3.0 * std::cos(angle) << " " << -4.0 + 3.0 * std::sin(angle) * 0.8 << " "
         << 2.0 + 3.0 * std::sin(angle) * 0.6 << "\n";
  }
  return text.str() + "f 1 2 3\n";
}

TEST_F(FitUnfold, circleIsRecoveredFromATiltedArc) {
  write("arc.obj", circleObj());
  const Json fits = answer({"fit", "arc.obj"});
  const Json& circle = fits["circle"];
  EXPECT_NEAR(circle["radius"].get<double>(), 3.0, 1e-3);
  const double centre[3] = {10.0, -4.0, 2.0};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    EXPECT_NEAR(circle["centre"][axis].get<double>(), centre[axis], 1e-3);
  }
  EXPECT_NEAR(std::fabs(fits["plane"]["normal"][1].get<double>()), 0.6, 1e-4);
  EXPECT_NEAR(std::fabs(fits["plane"]["normal"][2].get<double>()), 0.8, 1e-4);
  EXPECT_LT(fits["plane"]["shapeError"].get<double>(), 1e-4);
}

TEST_F(FitUnfold, pointsOnALineHaveALineButNoPlane) {
  write("line.obj", "v 1 1 1\nv 2 3 1\nv 3 5 1\nv 7 7 7\nf 1 2 3\n");
  const Json fits = answer({"fit", "line.obj", "--points", "0,1,2"});
  EXPECT_EQ(fits["points"], 3);
  EXPECT_TRUE(fits["plane"].is_null());
  EXPECT_TRUE(fits["circle"].is_null());
  EXPECT_NEAR(std::fabs(fits["line"]["direction"][1].get<double>()), 2.0 / std::sqrt(5.0), 1e-5);
  EXPECT_EQ(fits["farthestPoints"], Json({0, 2}));
  EXPECT_EQ(exitCode({"fit", "line.obj", "--points", "0,4"}), 3);
  EXPECT_EQ(exitCode({"fit", "line.obj", "--points", "-1"}), 2);
  EXPECT_TRUE(answer({"fit", "line.obj", "--points", "2"})["line"].is_null());
  write("empty.obj", "");
  EXPECT_TRUE(answer({"fit", "empty.obj"})["extents"].is_null());
}

TEST_F(FitUnfold, foldedSheetUnfoldsWithoutErrorAndIntoTheDocument) {
  write("roof.obj",
        "v 0 0 0\nv 2 0 0\nv 0 1 1\nv 2 1 1\nv 0 2 0\nv 2 2 0\nv 0 3 1\nv 2 3 1\n"
        "f 1 2 4\nf 1 4 3\nf 3 4 6\nf 3 6 5\nf 5 6 8\nf 5 8 7\n");
  const Json report = answer({"unfold", "roof.obj", "roof.zel", "--svg", "roof.svg"});
  EXPECT_EQ(report["unfoldedFaces"], 6);
  EXPECT_EQ(report["components"], 1);
  EXPECT_EQ(report["flippedFaces"], 0);
  EXPECT_EQ(report["overlappingFaces"], 0);
  EXPECT_LT(report["worstLengthError"].get<double>(), 1e-5);
  EXPECT_EQ(answer({"info", "roof.zel"})["textureCoords"], true);
  EXPECT_EQ(answer({"info", "roof.zel"})["triangles"], 6);
  const std::string svg = content("roof.svg");
  const std::regex path("<path");
  EXPECT_EQ(std::distance(std::sregex_iterator(svg.begin(), svg.end(), path), {}), 6);
}

TEST_F(FitUnfold, overlapsAndComponentsAreTold) {
  // Eight triangles about one node, of 60 degrees each: more than a full turn.
  std::ostringstream star;
  star << "v 0 0 0\n";
  for (int i = 0; i < 9; ++i) {
    star << "v " << std::cos(1.04719755 * i) << " " << std::sin(1.04719755 * i) << " 0\n";
  }
  for (int i = 0; i < 8; ++i) {
    star << "f 1 " << i + 2 << " " << i + 3 << "\n";
  }
  star << "v 9 9 9\nv 10 9 9\nv 9 10 9\nf 11 12 13\n";
  write("star.obj", star.str());
  const Json report = answer({"unfold", "star.obj", "star.zel"});
  EXPECT_EQ(report["components"], 2);
  EXPECT_EQ(report["unfoldedFaces"], 9);
  EXPECT_GT(report["overlappingFaces"].get<int>(), 1);
  EXPECT_EQ(report["unreachedFaces"], 0);
}

TEST_F(FitUnfold, facesThatCannotBeLaidOutAreCountedNotLost) {
  write("odd.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nv nan 0 0\nf 1 2 3\nf 1 1 2\nf 1 2 4\n");
  const Json report = answer({"unfold", "odd.obj", "odd.zel"});
  EXPECT_EQ(report["unfoldedFaces"], 1);
  EXPECT_EQ(report["unreachedFaces"], 2);
  EXPECT_EQ(answer({"info", "odd.zel"})["triangles"], 3);
}

}  // namespace

}  // namespace zel::test
