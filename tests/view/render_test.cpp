#include "tools/view/pictures/render.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

#include "blob.h"
#include "scene_shapes.h"
#include "tools/view/pictures/scene_looks.h"

namespace {

using zel::test::blobOf;
using zel::test::makeCube;
using zel::test::Shape;
using zel::view::Colour;
using zel::view::DrawOptions;
using zel::view::Picture;
using zel::view::SceneMesh;

constexpr zel::view::ViewSize kSize{120, 90};
constexpr Colour kBlue{0, 0, 255, 255};

bool near(const Colour& a, const Colour& b) {
  return std::abs(a.red - b.red) <= 2 && std::abs(a.green - b.green) <= 2 &&
         std::abs(a.blue - b.blue) <= 2;
}

bool isCovered(const Colour& colour) { return !near(colour, kBlue); }

DrawOptions onBlue() {
  DrawOptions options;
  options.backgroundTop = options.backgroundBottom = kBlue;
  options.occlusion = options.shadow = false;
  return options;
}

Picture render(const Shape& shape, const DrawOptions& options, double yaw = 30, double pitch = 20,
               const zel::view::TextureImage& texture = {}) {
  const SceneMesh scene(shape.nodes, shape.triangles, shape.quads, shape.textureCoords);
  zel::view::Camera camera;
  camera.setAngles(yaw, pitch);
  camera.frame(scene.shownPoints(), kSize);
  return renderPicture(scene, texture, camera, options, kSize);
}

TEST(Render, cubeStandsFramedBeforeItsBackground) {
  const Picture picture = render(makeCube(), onBlue());
  EXPECT_EQ(picture.width, kSize.width);
  EXPECT_EQ(picture.height, kSize.height);
  EXPECT_TRUE(near(picture.at(1, 1), kBlue));
  EXPECT_TRUE(near(picture.at(118, 88), kBlue));
  EXPECT_FALSE(near(picture.at(60, 45), kBlue));
  const int covered = blobOf(picture, isCovered).count;
  EXPECT_GT(covered, kSize.width * kSize.height * 2 / 10);
  EXPECT_LT(covered, kSize.width * kSize.height * 6 / 10);
}

TEST(Render, facesOfOneCubeAreLitDifferently) {
  const Picture picture = render(makeCube(), onBlue(), 45, 35);
  const Colour top = picture.at(60, 22);
  const Colour left = picture.at(45, 55);
  const Colour right = picture.at(75, 55);
  EXPECT_FALSE(near(top, left));
  EXPECT_FALSE(near(left, right));
  EXPECT_GT(left.red, right.red);  // the key light stands on the left
}

int brightest(const Colour& c) { return std::max({c.red, c.green, c.blue}); }

// The right side of the cube was one grey of the same value from edge to edge.
TEST(Render, noFaceIsOneFlatShade) {
  for (const double yaw : {30.0, -30.0, 150.0}) {
    const Picture picture = render(makeCube(), onBlue(), yaw, 20);
    // Down the left and the right side that are seen.
    for (const int x : {45, 85}) {
      int darkest = 255;
      int lightest = 0;
      for (int y = 38; y <= 58; ++y) {
        darkest = std::min(darkest, brightest(picture.at(x, y)));
        lightest = std::max(lightest, brightest(picture.at(x, y)));
      }
      EXPECT_GT(lightest - darkest, 2) << yaw << " " << x;
      EXPECT_GT(darkest, 60);
      EXPECT_LT(lightest, 255);  // else it is the ground
    }
  }
}

int difference(const Picture& a, const Picture& b) {
  int most = 0;
  for (std::size_t i = 0; i < a.rgba.size(); ++i) {
    most = std::max(most, std::abs(a.rgba[i] - b.rgba[i]));
  }
  return most;
}

TEST(Render, sameSceneGivesTheSamePicture) {
  DrawOptions options;
  options.axes = options.grid = options.features = true;
  options.colouring = zel::view::Colouring::kFaceArea;
  EXPECT_LE(difference(render(makeCube(true), options), render(makeCube(true), options)), 2);
}

TEST(Render, hollowsAndTheGroundAreShaded) {
  DrawOptions options = onBlue();
  const Picture plain = render(makeCube(true), options, 30, 60);
  options.occlusion = true;
  const Picture shaded = render(makeCube(true), options, 30, 60);
  EXPECT_LT(brightest(shaded.at(60, 40)), brightest(plain.at(60, 40)) - 15);
  options.shadow = true;
  const auto isShadow = [](const Colour& c) { return c.red == 0 && c.green == 0 && c.blue < 215; };
  EXPECT_GT(blobOf(render(makeCube(), options, 30, 20), isShadow).count, 150);
  EXPECT_EQ(blobOf(render(makeCube(), options, 30, -20), isShadow).count, 0);
}

TEST(Render, featureEdgesAreThoseOfTheAngleAsked) {
  DrawOptions options = onBlue();
  options.features = true;
  const auto isDark = [](const Colour& c) { return c.red < 90 && c.blue < 90; };
  const int withEdges = blobOf(render(makeCube(), options), isDark).count;
  options.featureAngle = 91;
  EXPECT_GT(withEdges, blobOf(render(makeCube(), options), isDark).count + 150);
}

TEST(Render, coloursTellNumbers) {
  Shape shape = makeCube(true);
  shape.addTriangle(4, 5, 0);  // much smaller than the cube's faces, and so another colour
  DrawOptions options = onBlue();
  for (const auto colouring :
       {zel::view::Colouring::kEdgeLength, zel::view::Colouring::kFaceArea}) {
    options.colouring = colouring;
    const Picture picture = render(shape, options);
    const auto isYellow = [](const Colour& c) {
      return c.red > 150 && c.green > 130 && c.blue < 90;
    };
    const auto isViolet = [](const Colour& c) { return c.blue > 1.3 * c.green && c.red > 30; };
    EXPECT_GT(blobOf(picture, isYellow).count, 30);
    EXPECT_GT(blobOf(picture, isViolet).count, 30);
  }
}

TEST(Render, boundaryEdgesAppearOnlyWhereThereAreAny) {
  DrawOptions options = onBlue();
  options.boundary = true;
  const auto isOrange = [](const Colour& c) { return c.red > 180 && c.green < 120 && c.blue < 90; };
  EXPECT_EQ(blobOf(render(makeCube(), options), isOrange).count, 0);
  EXPECT_GT(blobOf(render(makeCube(true), options), isOrange).count, 60);
}

TEST(Render, wireframeLeavesTheFacesOpen) {
  DrawOptions options = onBlue();
  options.faces = false;
  options.edges = true;
  const Picture picture = render(makeCube(), options, 0, 0);
  EXPECT_TRUE(near(picture.at(60, 45), kBlue));
  const int lines = blobOf(picture, isCovered).count;
  EXPECT_GT(lines, 300);
  EXPECT_LT(lines, 2000);
}

TEST(Render, transparentGroundKeepsColoursClean) {
  DrawOptions options = onBlue();
  options.backgroundTop = options.backgroundBottom = Colour{0, 0, 0, 0};
  const Picture picture = render(makeCube(), options);
  EXPECT_EQ(picture.at(1, 1).alpha, 0);
  EXPECT_EQ(picture.at(60, 45).alpha, 255);
  const auto isDark = [](const Colour& c) { return c.alpha > 0 && c.red < 30; };
  EXPECT_EQ(blobOf(picture, isDark).count, 0);
}

TEST(Render, textureLiesUprightOnItsFace) {
  Shape shape{{zel::test::nodesAt({{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0}}),
               zel::test::trianglesOf({{0, 1, 2}, {0, 2, 3}})}};
  const float coords[6][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 0}, {1, 1}, {0, 1}};
  for (const auto& coord : coords) {
    shape.textureCoords.AddItemM(coord);
  }
  // Bottom row red and green, top row black and white.
  const zel::view::TextureImage texture{
      2, 2, {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 0, 255, 255, 255, 255, 255}};
  DrawOptions options = onBlue();
  options.textured = true;
  const Picture picture = render(shape, options, 0, 0, texture);
  const Colour lowerLeft = picture.at(32, 66);
  const Colour lowerRight = picture.at(88, 66);
  EXPECT_GT(lowerLeft.red, 3 * lowerLeft.green);
  EXPECT_GT(lowerRight.green, 3 * lowerRight.red);
  EXPECT_LT(picture.at(32, 24).red, 60);
  EXPECT_GT(picture.at(88, 24).blue, 150);
}

TEST(Render, texturedFacesAreFlatUnlessAskedToBeSmooth) {
  Shape roof = zel::test::makeRoof();
  const float coord[2] = {0.5F, 0.5F};
  for (int entry = 0; entry < 6; ++entry) {
    roof.textureCoords.AddItemM(coord);
  }
  const zel::view::TextureImage white{1, 1, {255, 255, 255, 255}};
  DrawOptions options = onBlue();
  options.textured = true;
  const auto stepAtRidge = [&] {
    const Picture picture = render(roof, options, 0, 0, white);
    return std::abs(picture.at(58, 45).red - picture.at(61, 45).red);
  };
  EXPECT_GT(stepAtRidge(), 14);
  options.smooth = true;
  EXPECT_LT(stepAtRidge(), 7);
}

// Faces that were pushed back to keep lines free let the inside shine through at the outline.
TEST(Render, outlineOfAClosedMeshShowsNothingOfItsInside) {
  Shape ball;
  constexpr int kRings = 12;
  for (int i = 0; i <= kRings; ++i) {
    for (int k = 0; k < kRings; ++k) {
      const double theta = std::numbers::pi * i / kRings;
      const double phi = 2 * std::numbers::pi * k / kRings;
      ball.addNode(static_cast<float>(std::sin(theta) * std::cos(phi)),
                   static_cast<float>(std::cos(theta)),
                   static_cast<float>(-std::sin(theta) * std::sin(phi)));
      if (i > 0) {
        const int right = (k + 1) % kRings;
        const int row = i * kRings;
        ball.addQuad(row - kRings + k, row + k, row + right, row - kRings + right);
      }
    }
  }
  const auto isInside = [](const Colour& c) { return c.red > 20 && c.red > 1.25 * c.green; };
  for (const bool withLines : {false, true}) {
    DrawOptions options = onBlue();
    options.boundary = withLines;
    const Picture picture = render(ball, options);
    EXPECT_EQ(blobOf(picture, isInside).count, 0) << withLines;
    EXPECT_GT(picture.at(60, 45).red, 100);
  }
}

TEST(Render, materialsPicturesAndNodeColoursAreThoseOfTheMesh) {
  zel::Mesh mesh;
  mesh.nodes = zel::test::nodesAt({{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0}});
  mesh.addTriangle({0, 1, 2});
  mesh.addTriangle({0, 2, 3});
  for (int corner = 0; corner < 6; ++corner) {
    zel::setTextureCoord(mesh.triangleTexture, corner, {0.5F, 0.5F});
  }
  zel::Appearance looks;
  looks.materials = {
      {.name = "green", .diffuse = {0, 255, 0, 255}, .texture = "", .textureBytes = {}},
      {.name = "painted", .texture = "red.png", .textureBytes = {}}};
  looks.setTriangleMaterial(0, 0);
  looks.setTriangleMaterial(1, 1);
  std::vector<std::string> asked;
  const auto load = [&asked](const zel::Material& material) {
    asked.push_back(material.texture);
    return zel::view::TextureImage{1, 1, {255, 0, 0, 255}};
  };
  const auto draw = [&](const zel::Appearance& worn) {
    SceneMesh scene(mesh);
    giveLooks(scene, worn, load);
    DrawOptions options = onBlue();
    options.textured = true;
    zel::view::Camera camera;
    camera.frame(scene.shownPoints(), kSize);
    return renderPicture(scene, {}, camera, options, kSize);
  };
  const Picture painted = draw(looks);
  EXPECT_EQ(asked, std::vector<std::string>{"red.png"});
  EXPECT_GT(painted.at(85, 65).green, 3 * painted.at(85, 65).red);
  EXPECT_GT(painted.at(35, 25).red, 3 * painted.at(35, 25).green);
  zel::Appearance colours;
  for (int node = 0; node < 4; ++node) {
    colours.setColour(node, node < 2 ? zel::Colour{255, 0, 0, 255} : zel::Colour{0, 255, 0, 255});
  }
  mesh.triangleTexture = Point2DArr();
  const Picture blended = draw(colours);
  EXPECT_GT(blended.at(60, 78).red, 2 * blended.at(60, 78).green);
  EXPECT_GT(blended.at(60, 12).green, 2 * blended.at(60, 12).red);
}

TEST(Render, sheetShowsSixSidesAtOneScale) {
  Shape flat = makeCube();
  for (int slot = 0; slot < 8; ++slot) {
    const auto [x, y, z] = flat.point(slot);
    flat.nodes.SetItemM(zel::test::nodeAt({x, y / 4, z / 2}), slot);
  }
  const SceneMesh scene(flat.nodes, flat.triangles, flat.quads, flat.textureCoords);
  constexpr zel::view::ViewSize kSheet{301, 200};
  const Picture sheet = renderSheet(scene, {}, zel::view::UpAxis::kY, onBlue(), kSheet);
  ASSERT_EQ(sheet.width, kSheet.width);
  EXPECT_EQ(sheet.at(300, 199).alpha, 255);
  // Front 2 x 0.5, right 1 x 0.5, above 2 x 1, the lower row alike: areas in one unit.
  const auto areaAt = [&sheet](int column, int row) {
    const Colour ground = sheet.at(column * 101 + 50, row * 100 + 96);
    int count = 0;
    for (int y = row * 100 + 30; y < row * 100 + 100; ++y) {
      for (int x = column * 101; x < std::min(column * 101 + 101, 301); ++x) {
        count += near(sheet.at(x, y), ground) ? 0 : 1;
      }
    }
    return static_cast<double>(count);
  };
  for (const int row : {0, 1}) {
    EXPECT_NEAR(areaAt(1, row) / areaAt(0, row), 0.5, 0.06);
    EXPECT_NEAR(areaAt(2, row) / areaAt(0, row), 2, 0.2);
  }
}

TEST(Render, turntableKeepsTheSceneInSight) {
  const Shape shape = makeCube();
  const SceneMesh scene(shape.nodes, shape.triangles, shape.quads, shape.textureCoords);
  for (const auto up : {zel::view::UpAxis::kY, zel::view::UpAxis::kZ}) {
    zel::view::Camera camera(up);
    camera.setAngles(10, 25);
    camera = turntableCamera(scene, camera, kSize);
    zel::view::Renderer renderer(scene, {}, onBlue(), up, kSize);
    for (const double yaw : {0.0, 45.0, 200.0}) {
      camera.setAngles(yaw, 25);
      const Picture picture = renderer.draw(camera);
      EXPECT_GT(blobOf(picture, isCovered).count, kSize.width * kSize.height / 6);
      for (int x = 0; x < kSize.width; ++x) {
        EXPECT_TRUE(near(picture.at(x, 1), kBlue) && near(picture.at(x, kSize.height - 2), kBlue));
      }
    }
  }
}

TEST(Render, emptySceneAndPointsGiveAPicture) {
  EXPECT_TRUE(near(render(Shape(), onBlue()).at(60, 45), kBlue));
  Shape points;
  points.addNode(0, 0, 0);
  EXPECT_FALSE(near(render(points, onBlue()).at(60, 45), kBlue));
}

}  // namespace
