#include "tools/view/pictures/scene_marks.h"

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "tools/view/pictures/font.h"

namespace zel::view {
namespace {

constexpr float kShadowStrength = 0.62F;
constexpr double kGridReach = 1.8;   // in radii of the scene
constexpr double kCellsAcross = 12;  // the scene, about

constexpr int kCrossSide = 120;     // pixels
constexpr double kAxisLength = 38;  // pixels
constexpr float kAxisWidth = 2;
constexpr std::array<Colour, 3> kAxisColours{Colour{206, 52, 48, 255}, Colour{44, 142, 60, 255},
                                             Colour{52, 96, 214, 255}};

constexpr int kBarWidth = 18;  // pixels
constexpr int kBarSteps = 64;
constexpr int kInset = 16;
constexpr Colour kInk{44, 50, 62, 255};
constexpr Colour kInkOnDark{226, 231, 238, 255};

// A point given along the two axes of the ground and the one that points up.
Vector3 onGround(double along, double across, float height, UpAxis up) {
  const auto x = static_cast<float>(along);
  const auto y = static_cast<float>(across);
  return up == UpAxis::kZ ? Vector3{x, y, height} : Vector3{x, height, y};
}

int textScale(const DrawOptions& options) {
  return std::max(1, static_cast<int>(std::lround(options.lineScale)));
}

// Coordinates become pixels from the lower left corner of the area.
void usePixels(ViewSize size) {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0, size.width, 0, size.height, -1, 1);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
}

std::string numberText(float value) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.4g", static_cast<double>(value));
  return text.data();
}

}  // namespace

void drawGroundShadow(const GroundShadow& shadow, UpAxis up) {
  if (shadow.darkness.empty()) {
    return;
  }
  glDepthMask(GL_FALSE);
  for (int row = 0; row + 1 < GroundShadow::kSide; ++row) {
    glBegin(GL_TRIANGLE_STRIP);
    for (int column = 0; column < GroundShadow::kSide; ++column) {
      for (const int line : {row + 1, row}) {
        const auto place = static_cast<std::size_t>(line * GroundShadow::kSide + column);
        glColor4f(0, 0, 0, kShadowStrength * shadow.darkness[place]);
        glVertex3fv(shadow.at(column, line, up).data());
      }
    }
    glEnd();
  }
  glDepthMask(GL_TRUE);
}

double gridStep(const SceneMesh& scene) {
  const double wanted = 2 * scene.radius / kCellsAcross;
  const double power = std::pow(10, std::floor(std::log10(wanted)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= wanted) {
      return factor * power;
    }
  }
  return 10 * power;
}

void drawGroundGrid(const SceneMesh& scene, UpAxis up, const DrawOptions& options) {
  const float height = groundLevel(scene, up);
  const double step = gridStep(scene);
  const std::array<std::size_t, 2> axes{0, up == UpAxis::kZ ? 1U : 2U};
  glDepthMask(GL_FALSE);
  glLineWidth(options.lineScale);
  glBegin(GL_LINES);
  for (const std::size_t way : {0U, 1U}) {
    const double centre = scene.centre[axes[way]];
    const double last = std::floor((centre + kGridReach * scene.radius) / step);
    for (double line = std::ceil((centre - kGridReach * scene.radius) / step); line <= last;
         ++line) {
      const double at = (line * step - centre) / scene.radius;
      const double half = std::sqrt(std::max(kGridReach * kGridReach - at * at, 0.0));
      const float strength = std::fmod(line, 10) == 0 ? 0.55F : 0.28F;
      const float grey = options.isDark() ? 0.85F : 0.25F;
      const auto vertex = [&](double along, float share) {
        glColor4f(grey, grey, grey, strength * share);
        const Vector3 p =
            way == 0 ? onGround(at, along, height, up) : onGround(along, at, height, up);
        glVertex3fv(p.data());
      };
      // Fading out towards both ends.
      vertex(-half, 0);
      vertex(0, 1);
      vertex(0, 1);
      vertex(half, 0);
    }
  }
  glEnd();
  glDepthMask(GL_TRUE);
}

void drawAxesCross(const Camera& camera, const DrawOptions& options, ViewSize size, int left) {
  const int scale = textScale(options);
  const auto unitLength = kAxisLength * scale;
  const double x = size.width - kCrossSide * scale / 2.0;
  const double y = kCrossSide * scale / 2.0;
  const auto origin = camera.inEye({});
  std::array<std::array<double, 3>, 3> tips{};
  std::array<std::size_t, 3> order{0, 1, 2};
  for (const std::size_t k : order) {
    Vector3 axis{};
    axis[k] = 1;
    tips[k] = camera.inEye(axis);
    for (std::size_t c = 0; c < 3; ++c) {
      tips[k][c] -= origin[c];
    }
  }
  std::sort(order.begin(), order.end(),
            [&tips](std::size_t a, std::size_t b) { return tips[a][2] < tips[b][2]; });
  glDisable(GL_DEPTH_TEST);
  usePixels(size);
  glLineWidth(kAxisWidth * options.lineScale);
  for (const std::size_t k : order) {
    const Colour& colour = kAxisColours[k];
    glColor4ub(colour.red, colour.green, colour.blue, 255);
    glBegin(GL_LINES);
    glVertex2d(x, y);
    glVertex2d(x + unitLength * tips[k][0], y + unitLength * tips[k][1]);
    glEnd();
    const double reach = unitLength + 10.0 * scale;
    drawText(left + static_cast<int>(x + reach * tips[k][0]) - kGlyphWidth * scale / 2,
             static_cast<int>(y + reach * tips[k][1]) - kGlyphHeight * scale / 2,
             std::string_view("XYZ").substr(k, 1), colour, scale);
  }
  glEnable(GL_DEPTH_TEST);
}

void drawDefectNames(const std::vector<DefectMarks>& defects, const DrawOptions& options,
                     ViewSize size, int left) {
  const int scale = textScale(options);
  const int inset = kInset * scale;
  const int line = (kGlyphHeight + 4) * scale;
  const Colour& ink = options.isDark() ? kInkOnDark : kInk;
  int y = size.height - inset - kGlyphHeight * scale;
  if (defects.empty()) {
    drawText(left + inset, y, "no defects", ink, scale);
  }
  for (const DefectMarks& marks : defects) {
    glDisable(GL_DEPTH_TEST);
    usePixels(size);
    glColor4ub(marks.colour.red, marks.colour.green, marks.colour.blue, 255);
    glRecti(inset, y + 3 * scale, inset + kBarWidth * scale, y + 3 * scale + 14 * scale);
    glEnable(GL_DEPTH_TEST);
    drawText(left + inset + (kBarWidth + 8) * scale, y,
             std::to_string(marks.count) + " " + marks.name, ink, scale);
    y -= line;
  }
}

void drawLegend(const ScalarField& field, const DrawOptions& options, ViewSize size, int left) {
  const int scale = textScale(options);
  const int line = (kGlyphHeight + 4) * scale;
  const int height = size.height / 3;
  const int right = size.width - kInset * scale;
  const int top = size.height - kInset * scale - line;
  const int bottom = top - height;
  glDisable(GL_DEPTH_TEST);
  usePixels(size);
  for (int step = 0; step < kBarSteps; ++step) {
    const Colour colour = colourOfShare((static_cast<float>(step) + 0.5F) / kBarSteps);
    glColor4ub(colour.red, colour.green, colour.blue, 255);
    glRecti(right - kBarWidth * scale, bottom + height * step / kBarSteps, right,
            bottom + height * (step + 1) / kBarSteps);
  }
  glEnable(GL_DEPTH_TEST);
  const Colour& ink = options.isDark() ? kInkOnDark : kInk;
  const auto write = [&](const std::string& text, int end, int y) {
    drawText(left + end - static_cast<int>(text.size()) * kGlyphWidth * scale, y, text, ink, scale);
  };
  write(field.name, right, top + 4 * scale);
  const int beside = right - (kBarWidth + 6) * scale;
  write(numberText(field.high), beside, top - kGlyphHeight * scale);
  write(numberText((field.low + field.high) / 2), beside,
        (top + bottom - kGlyphHeight * scale) / 2);
  write(numberText(field.low), beside, bottom);
}

}  // namespace zel::view
