#include "tools/view/view_controller.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tools/view/pictures/offscreen_context.h"

namespace {

using zel::view::Action;
using zel::view::UpAxis;
using zel::view::ViewController;

constexpr zel::view::ViewSize kSize{600, 400};

using Vector4 = std::array<double, 4>;

// The product of the current matrix of that name and a vector.
Vector4 moved(GLenum matrixName, const Vector4& v) {
  double m[16];
  glGetDoublev(matrixName, m);
  Vector4 result{};
  for (std::size_t r = 0; r < 4; ++r) {
    for (std::size_t c = 0; c < 4; ++c) {
      result[r] += m[4 * c + r] * v[c];
    }
  }
  return result;
}

// Where OpenGL itself puts a point: pixels from the lower left corner, and depth.
std::array<double, 3> project(const ViewController& view, const std::array<double, 3>& point,
                              zel::view::ViewSize size = kSize) {
  view.camera().loadProjection(size);
  view.camera().loadModelView();
  const Vector4 eye = moved(GL_MODELVIEW_MATRIX, {point[0], point[1], point[2], 1});
  const Vector4 clip = moved(GL_PROJECTION_MATRIX, eye);
  return {(clip[0] / clip[3] + 1) * size.width / 2, (clip[1] / clip[3] + 1) * size.height / 2,
          clip[2] / clip[3]};
}

class View : public testing::Test {
 protected:
  View() : view(UpAxis::kY, {}) {
    view.resize(kSize);
    view.setScene(kBox, UpAxis::kY);
  }

  const std::vector<std::array<float, 3>> kBox{
      {-0.8F, -0.2F, -0.3F}, {0.8F, -0.2F, 0.3F}, {0.1F, 0.2F, -0.3F}, {-0.5F, 0.1F, 0.3F}};
  const zel::view::OffscreenContext context{8, 8};
  ViewController view;
};

TEST_F(View, framedPointsFillTheViewToTheMargin) {
  for (const bool orthographic : {false, true}) {
    for (const Action side : {Action::kViewFront, Action::kViewRight, Action::kViewTop}) {
      view.camera().setOrthographic(orthographic);
      view.perform(side);
      view.perform(Action::kFrameAll);
      double reach = 0;
      for (const auto& p : kBox) {
        const auto at = project(view, {p[0], p[1], p[2]});
        reach = std::max(
            {reach, std::abs(at[0] / kSize.width * 2 - 1), std::abs(at[1] / kSize.height * 2 - 1)});
        EXPECT_LT(std::abs(at[2]), 1.0);
      }
      EXPECT_NEAR(reach, 1 / 1.08, 1e-5);
    }
  }
}

TEST_F(View, standardViewsLookAlongTheAxes) {
  const struct {
    Action action;
    std::array<double, 3> near;
    std::array<double, 3> right;
  } kCases[] = {{Action::kViewFront, {0, 0, 0.5}, {0.5, 0, 0}},
                {Action::kViewRight, {0.5, 0, 0}, {0, 0, -0.5}},
                {Action::kViewTop, {0, 0.5, 0}, {0.5, 0, 0}}};
  for (const auto& expected : kCases) {
    view.perform(expected.action);
    const auto origin = project(view, {0, 0, 0});
    EXPECT_LT(project(view, expected.near)[2], origin[2]);
    EXPECT_GT(project(view, expected.right)[0], origin[0] + 1);
    view.perform(Action::kViewOpposite);
    EXPECT_GT(project(view, expected.near)[2], project(view, {0, 0, 0})[2]);
  }
}

// A view of another side and a window of another shape used to keep the shift and zoom of before.
TEST_F(View, changingViewAndSizeKeepsTheSceneFramed) {
  const auto reach = [this](zel::view::ViewSize size) {
    double most = 0;
    for (const auto& p : kBox) {
      const auto at = project(view, {p[0], p[1], p[2]}, size);
      most = std::max(
          {most, std::abs(at[0] / size.width * 2 - 1), std::abs(at[1] / size.height * 2 - 1)});
    }
    return most;
  };
  for (const Action side :
       {Action::kViewFront, Action::kViewBack, Action::kViewLeft, Action::kViewRight,
        Action::kViewTop, Action::kViewBottom, Action::kViewIsometric, Action::kViewOpposite}) {
    view.resize(kSize);
    view.perform(side);
    EXPECT_NEAR(reach(kSize), 1 / 1.08, 1e-5);
    view.resize({150, 400});
    EXPECT_NEAR(reach({150, 400}), 1 / 1.08, 1e-5);
  }
  // What a person has zoomed stays as large as the narrow window allows.
  view.resize(kSize);
  view.perform(Action::kFrameAll);
  view.turnWheel(-3);
  const double before = reach(kSize);
  view.resize({200, 400});
  EXPECT_LT(reach({200, 400}), before * 1.6);
  view.resize(kSize);
  EXPECT_NEAR(reach(kSize), before, 1e-9);
}

TEST_F(View, raysGoThroughWhatIsDrawnThere) {
  view.centreOn({0.2F, -0.1F, 0.3F});
  view.beginDrag(Action::kOrbit, {0, 0});
  view.drag({70, 30});
  for (const bool orthographic : {false, true}) {
    view.camera().setOrthographic(orthographic);
    const auto centre = project(view, {0.2, -0.1, 0.3});
    EXPECT_NEAR(centre[0], kSize.width / 2.0, 1e-3);
    EXPECT_NEAR(centre[1], kSize.height / 2.0, 1e-3);
    const auto ray = view.camera().rayThrough(412, 77, kSize);
    for (const float far : {2.0F, 3.5F}) {
      std::array<double, 3> p{};
      for (std::size_t k = 0; k < 3; ++k) {
        p[k] = static_cast<double>(ray.origin[k] + far * ray.direction[k]);
      }
      const auto at = project(view, p);
      EXPECT_NEAR(at[0], 412, 0.1);
      EXPECT_NEAR(kSize.height - at[1], 77, 0.1);
    }
  }
}

TEST_F(View, aPressThatHardlyMovesIsAClick) {
  view.beginDrag(Action::kOrbit, {100, 100});
  EXPECT_FALSE(view.drag({102, 99}));
  EXPECT_TRUE(view.endDrag());
  EXPECT_FALSE(view.endDrag());
  view.beginDrag(Action::kOrbit, {100, 100});
  EXPECT_TRUE(view.drag({110, 100}));
  EXPECT_TRUE(view.drag({101, 100}));
  EXPECT_FALSE(view.endDrag());
}

TEST_F(View, zPointsUpWhenAsked) {
  ViewController standing(UpAxis::kZ, {});
  standing.resize(kSize);
  standing.perform(Action::kViewFront);
  EXPECT_GT(project(standing, {0, 0, 0.5})[1], project(standing, {0, 0, 0})[1] + 1);
  EXPECT_LT(project(standing, {0, -0.5, 0})[2], project(standing, {0, 0, 0})[2]);
}

TEST_F(View, pixelShiftsMoveThePictureExactly) {
  for (const bool orthographic : {false, true}) {
    view.camera().setOrthographic(orthographic);
    view.camera().shiftPixels(0, 0);
    const auto before = project(view, {0.3, 0.2, -0.4});
    view.camera().shiftPixels(0.25, -0.5);
    const auto after = project(view, {0.3, 0.2, -0.4});
    EXPECT_NEAR(after[0] - before[0], 0.25, 1e-3);
    EXPECT_NEAR(after[1] - before[1], -0.5, 1e-3);
  }
}

TEST_F(View, panningFollowsTheMouse) {
  for (const bool orthographic : {false, true}) {
    view.camera().setOrthographic(orthographic);
    const auto before = project(view, {0, 0, 0});
    view.beginDrag(Action::kPan, {100, 100});
    EXPECT_TRUE(view.drag({117, 100}));
    EXPECT_TRUE(view.drag({130, 80}));
    view.endDrag();
    EXPECT_FALSE(view.drag({0, 0}));
    const auto after = project(view, {0, 0, 0});
    EXPECT_NEAR(after[0] - before[0], 30, 0.5);
    EXPECT_NEAR(after[1] - before[1], 20, 0.5);
  }
}

TEST_F(View, draggingRightTurnsTheFrontToTheRight) {
  view.perform(Action::kViewFront);
  view.perform(Action::kFrameAll);
  const double before = project(view, {0, 0, 0.5})[0];
  view.beginDrag(Action::kOrbit, {100, 100});
  view.drag({150, 130});
  EXPECT_GT(project(view, {0, 0, 0.5})[0], before + 5);
  EXPECT_GT(view.camera().pitch(), 0);
  view.drag({150, 100000});
  EXPECT_EQ(view.camera().pitch(), 90);
}

TEST_F(View, wheelAndRightDragZoom) {
  view.camera().setOrthographic(true);
  const auto width = [this] {
    return project(view, {0.5, 0, 0})[0] - project(view, {-0.5, 0, 0})[0];
  };
  view.perform(Action::kViewFront);
  const double start = width();
  view.turnWheel(1);
  EXPECT_NEAR(width() / start, 1.1, 1e-4);
  view.turnWheel(-1);
  EXPECT_NEAR(width() / start, 1, 1e-4);
  view.beginDrag(Action::kZoomByDrag, {10, 10});
  view.drag({300, 10});
  view.drag({510, 90});
  EXPECT_NEAR(width() / start, 2, 1e-3);
  view.turnWheel(2000000000);
  view.turnWheel(-2000000000);
  EXPECT_TRUE(std::isfinite(width()));
}

}  // namespace
