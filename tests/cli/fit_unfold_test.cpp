#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/cli/run_program.h"
#include "tests/cli/sample_meshes.h"
#include "tests/support/temp_dir.h"

namespace zel::test {

namespace {

using Json = nlohmann::json;

class FitUnfold : public testing::Test {
 protected:
  [[nodiscard]] std::string file(const std::string& name) const { return dir_.file(name); }

  /// What the program answers with --json.
  [[nodiscard]] Json answer(std::vector<std::string> arguments) const {
    arguments.emplace_back("--json");
    const ProgramRun run = runProgram(arguments);
    EXPECT_EQ(run.exitCode, 0) << run.err;
    return Json::parse(run.out);
  }

  /// Points on a circle of radius 3 about (10, -4, 2) in a plane tilted about the x axis.
  static std::string circleObj() {
    std::ostringstream text;
    text.precision(9);
    for (int i = 0; i < 40; ++i) {
      const double angle = 0.13 * i;
      text << "v " << 10.0 + 3.0 * std::cos(angle) << " " << -4.0 + 3.0 * std::sin(angle) * 0.8
           << " " << 2.0 + 3.0 * std::sin(angle) * 0.6 << "\n";
    }
    return text.str() + "f 1 2 3\n";
  }

  TempDir dir_;
};

TEST_F(FitUnfold, circleIsRecoveredFromATiltedArc) {
  writeFile(file("arc.obj"), circleObj());
  const Json fits = answer({"fit", file("arc.obj")});
  const Json& circle = fits["circle"];
  EXPECT_NEAR(circle["radius"].get<double>(), 3.0, 1e-3);
  EXPECT_NEAR(circle["centre"][0].get<double>(), 10.0, 1e-3);
  EXPECT_NEAR(circle["centre"][1].get<double>(), -4.0, 1e-3);
  EXPECT_NEAR(circle["centre"][2].get<double>(), 2.0, 1e-3);
  EXPECT_NEAR(std::fabs(fits["plane"]["normal"][1].get<double>()), 0.6, 1e-4);
  EXPECT_NEAR(std::fabs(fits["plane"]["normal"][2].get<double>()), 0.8, 1e-4);
  EXPECT_LT(fits["plane"]["shapeError"].get<double>(), 1e-4);
}

TEST_F(FitUnfold, pointsOnALineHaveALineButNoPlane) {
  writeFile(file("line.obj"), "v 1 1 1\nv 2 3 1\nv 3 5 1\nv 7 7 7\nf 1 2 3\n");
  const Json fits = answer({"fit", file("line.obj"), "--points", "0,1,2"});
  EXPECT_EQ(fits["points"], 3);
  EXPECT_TRUE(fits["plane"].is_null());
  EXPECT_TRUE(fits["circle"].is_null());
  EXPECT_NEAR(std::fabs(fits["line"]["direction"][1].get<double>()), 2.0 / std::sqrt(5.0), 1e-5);
  EXPECT_EQ(fits["farthestPoints"], Json({0, 2}));
  EXPECT_EQ(runProgram({"fit", file("line.obj"), "--points", "0,4"}).exitCode, 3);
  EXPECT_EQ(runProgram({"fit", file("line.obj"), "--points", "-1"}).exitCode, 2);
  EXPECT_TRUE(answer({"fit", file("line.obj"), "--points", "2"})["line"].is_null());
  writeFile(file("empty.obj"), "");
  EXPECT_TRUE(answer({"fit", file("empty.obj")})["extents"].is_null());
}

TEST_F(FitUnfold, foldedSheetUnfoldsWithoutErrorAndIntoTheDocument) {
  std::string roof;
  for (int i = 0; i <= 6; ++i) {
    const std::string place = std::to_string(i) + " " + (i % 2 == 0 ? "0" : "1");
    roof += "v 0 " + place + "\nv 2 " + place + "\n";
  }
  for (int i = 0; i < 6; ++i) {
    const auto corner = [&](int k) { return std::to_string(2 * i + k); };
    roof += "f " + corner(1) + " " + corner(2) + " " + corner(4) + "\nf " + corner(1) + " " +
            corner(4) + " " + corner(3) + "\n";
  }
  writeFile(file("roof.obj"), roof);
  const Json report =
      answer({"unfold", file("roof.obj"), file("roof.zel"), "--svg", file("roof.svg")});
  EXPECT_EQ(report["unfoldedFaces"], 12);
  EXPECT_EQ(report["components"], 1);
  EXPECT_EQ(report["flippedFaces"], 0);
  EXPECT_EQ(report["overlappingFaces"], 0);
  EXPECT_LT(report["worstLengthError"].get<double>(), 1e-5);
  EXPECT_EQ(answer({"info", file("roof.zel")})["textureCoords"], true);
  EXPECT_EQ(answer({"info", file("roof.zel")})["triangles"], 12);
  const std::string svg = readFile(file("roof.svg"));
  std::size_t paths = 0;
  for (std::size_t at = svg.find("<path"); at != std::string::npos;
       at = svg.find("<path", at + 1)) {
    ++paths;
  }
  EXPECT_EQ(paths, 12U);
}

TEST_F(FitUnfold, overlapsAndComponentsAreTold) {
  // Eight triangles about one node, of 60 degrees each: flat, they cover more than a full turn.
  std::ostringstream star;
  star.precision(9);
  star << "v 0 0 0\n";
  for (int i = 0; i < 9; ++i) {
    // A saddle curve on the unit sphere whose neighbours lie one apart.
    const double turn = 3.14159265358979 * i / 4.0;
    const double height = (i % 2 == 0 ? 1.0 : -1.0) * 0.4616;
    const double across = std::sqrt(1.0 - height * height);
    star << "v " << across * std::cos(turn) << " " << across * std::sin(turn) << " " << height
         << "\n";
  }
  for (int i = 0; i < 8; ++i) {
    star << "f 1 " << i + 2 << " " << i + 3 << "\n";
  }
  star << "v 9 9 9\nv 10 9 9\nv 9 10 9\nf 11 12 13\n";
  writeFile(file("star.obj"), star.str());
  const Json report = answer({"unfold", file("star.obj"), file("star.zel")});
  EXPECT_EQ(report["components"], 2);
  EXPECT_EQ(report["unfoldedFaces"], 9);
  EXPECT_GT(report["overlappingFaces"].get<int>(), 1);
  EXPECT_EQ(report["unreachedFaces"], 0);
}

TEST_F(FitUnfold, facesThatCannotBeLaidOutAreCountedNotLost) {
  writeFile(file("odd.obj"), "v 0 0 0\nv 1 0 0\nv 0 1 0\nv nan 0 0\nf 1 2 3\nf 1 1 2\nf 1 2 4\n");
  const Json report = answer({"unfold", file("odd.obj"), file("odd.zel")});
  EXPECT_EQ(report["unfoldedFaces"], 1);
  EXPECT_EQ(report["unreachedFaces"], 2);
  EXPECT_EQ(answer({"info", file("odd.zel")})["triangles"], 3);
}

}  // namespace

}  // namespace zel::test
