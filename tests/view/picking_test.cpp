#include "tools/view/picking.h"

#include <gtest/gtest.h>

#include "scene_shapes.h"

namespace {

using zel::test::Shape;
using zel::view::Picker;
using zel::view::SceneMesh;

constexpr zel::view::ViewSize kSize{400, 300};

// The cube of the tests, moved to (10, 0, 0), seen from the front.
class Picking : public testing::Test {
 protected:
  Picking() {
    for (int slot = 0; slot < 8; ++slot) {
      const auto [x, y, z] = cube.point(slot);
      cube.nodes.SetItemM(zel::test::nodeAt({x + 10, y, z}), slot);
    }
  }

  std::string textAt(const Shape& shape, double x, double y, bool parallel = false) {
    const SceneMesh scene(shape.nodes, shape.triangles, shape.quads, shape.textureCoords);
    camera.setOrthographic(parallel);
    camera.frame(scene.shownPoints(), kSize);
    const auto picked = Picker(scene).pick(camera.rayThrough(x, y, kSize));
    return picked ? picked->text : "nothing";
  }

  Shape cube = zel::test::makeCube();
  zel::view::Camera camera;
};

TEST_F(Picking, tellsFacesNodesAndEmptyGround) {
  for (const bool parallel : {false, true}) {
    // From the front one sees quad 0 of nodes 4, 5, 7 and 6; its upper left corner is node 6.
    EXPECT_EQ(textAt(cube, 200, 150, parallel),
              "quad 0 of nodes 4, 5, 7, 6 at (10, 0, 1), beside quad 2, quad 3, quad 4, quad 5");
    EXPECT_EQ(textAt(cube, 67, 17, parallel), "node 6 at (9, 1, 1), neighbours 2, 4, 7");
    EXPECT_EQ(textAt(cube, 5, 5, parallel), "nothing");
  }
}

TEST_F(Picking, findsLonePoints) {
  Shape points;
  points.addNode(0, 0, 0);
  points.addNode(4, 2, 0);
  EXPECT_EQ(textAt(points, 200, 150), "nothing");
  camera.setAngles(0, 0);
  EXPECT_EQ(textAt(points, 385, 57), "node 1 at (4, 2, 0), neighbours none");
}

}  // namespace
