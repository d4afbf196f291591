// The section of a vase, drawn to an SVG picture. Its outline is given as corners with radii: arcs
// round the corners off, a parallel offset makes the wall, a mirror image the other half, and lines
// of constant x measure the wall. The picture goes to the named file, or to profile.svg.

#include <algorithm>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "svg_picture.h"
#include "zel/zel.h"

namespace {

/// A corner of the outline; 0 leaves it sharp. Profiles lie in the xz plane, here with x upward.
struct Corner {
  float z, x, radius;
};
constexpr Corner kOutline[]{{0.0F, 0.0F, 0.0F}, {2.5F, 0.0F, 0.6F}, {0.9F, 2.1F, 1.0F},
                            {4.2F, 5.0F, 1.9F}, {0.9F, 8.9F, 1.6F}, {2.6F, 10.6F, 0.0F}};
constexpr float kWallThickness = 0.35F;
constexpr float kCuts[]{1.0F, 2.5F, 4.8F, 7.2F, 9.6F};

/// A line or arc of the outline, and the way from its start into the wall.
struct Element {
  TouchCurD curve;
  float inward[3];
};

TouchCurD line(const float* from, const float* to) {
  TouchCurD curve;
  slInitTouchCurD(&curve);
  slSetLine(&curve, zel::kCurveLine, from, to);
  return curve;
}

/// An arc from one point to the other along growing angles, which run from +z toward +x.
TouchCurD arc(const float* from, const float* to, const float* centre, float radius) {
  TouchCurD curve;
  slInitTouchCurD(&curve);
  curve.type = zel::kCurveArcZx;
  curve.direction = zel::kCurveForward;
  slSetArcPara(&curve, from, to, centre, radius);
  return curve;
}

/// Walks the outline, with the wall on the left, and rounds off the corners on the way.
std::vector<Element> roundedOutline() {
  std::vector<Element> elements;
  float start[3]{kOutline[0].x, 0.0F, kOutline[0].z};
  for (std::size_t i = 1; i < std::size(kOutline); ++i) {
    const float before[3]{kOutline[i - 1].x, 0.0F, kOutline[i - 1].z};
    const float corner[3]{kOutline[i].x, 0.0F, kOutline[i].z};
    const Element leg{line(start, corner), {corner[2] - before[2], 0.0F, before[0] - corner[0]}};
    elements.push_back(leg);
    if (kOutline[i].radius == 0.0F) {
      continue;
    }
    const float after[3]{kOutline[i + 1].x, 0.0F, kOutline[i + 1].z};
    float centre[3];
    float leave[3];
    slGetTangentCircle(before, corner, corner, after, kOutline[i].radius, centre, leave, start);
    slSetEndPnt(&elements.back().curve, leave);

    const float ahead[3]{after[0] - corner[0], 0.0F, after[2] - corner[2]};
    const bool turnsLeft = leg.inward[0] * ahead[0] + leg.inward[2] * ahead[2] > 0.0F;
    TouchCurD curve = turnsLeft ? arc(leave, start, centre, kOutline[i].radius)
                                : arc(start, leave, centre, kOutline[i].radius);
    curve.type = zel::kCurveArc;  // the kind that can be offset and mirrored
    const float side = turnsLeft ? 1.0F : -1.0F;
    elements.push_back(
        {curve,
         {side * (centre[0] - curve.startPnt[0]), 0.0F, side * (centre[2] - curve.startPnt[2])}});
  }
  return elements;
}

/// Where a curve crosses the line of constant x: the z of each crossing.
std::vector<float> crossings(const TouchCurD& curve, float x) {
  TouchCurD cut = curve;
  if (curve.type != zel::kCurveLine) {  // arcs are cut as arcs of the zx plane
    float from[3];
    float to[3];
    slGetStartPnt(&curve, from);
    slGetCurveEndPnt(&curve, to);
    cut = arc(from, to, curve.centre, curve.radius1);
  }
  float points[3][3];  // two points, then their parameters
  int count = 0;
  slFindIntPnt(&cut, x, points, &count);
  std::vector<float> found;
  for (int i = 0; i < count; ++i) {
    found.push_back(points[i][2]);
  }
  return found;
}

constexpr char kGuide[] = "stroke='#bbb' stroke-dasharray='2 5'";
constexpr char kOutside[] = "stroke='#1f4e79' stroke-width='3'";
constexpr char kInside[] = "stroke='#2a9d8f' stroke-width='2'";
constexpr char kMaterial[] = "stroke='#e76f51' stroke-width='5' stroke-linecap='butt'";

void drawGuides(Picture& picture) {
  for (std::size_t i = 1; i < std::size(kOutline); ++i) {
    picture.segment(kOutline[i - 1].z, kOutline[i - 1].x, kOutline[i].z, kOutline[i].x, kGuide);
  }
  picture.segment(0.0F, -0.4F, 0.0F, 11.2F, "stroke='#999' stroke-dasharray='12 4 2 4'");
  picture.legend(
      {{"outline", kOutside}, {"offset", kInside}, {"cut", kMaterial}, {"corners", kGuide}});
}

/// Draws a curve and its mirror image in the line z = 0, and adds both to `drawn`.
void drawBothHalves(TouchCurD curve, const char* style, Picture& picture,
                    std::vector<TouchCurD>& drawn) {
  const float axis[3]{0.0F, 0.0F, 0.0F};
  for (int half = 0; half < 2; ++half) {
    picture.curve(curve, style);
    drawn.push_back(curve);
    slTouchCurDMirror(&curve, axis, 0);
  }
}

/// Draws the material along a line of constant x and tells its thickness on the right.
/// @return the number of crossings.
std::size_t drawCut(const std::vector<TouchCurD>& curves, float x, Picture& picture) {
  std::vector<float> hits;
  for (const TouchCurD& curve : curves) {
    const std::vector<float> found = crossings(curve, x);
    hits.insert(hits.end(), found.begin(), found.end());
  }
  std::sort(hits.begin(), hits.end());
  picture.segment(-4.8F, x, 4.9F, x, "stroke='#ccc'");
  float wall = 0.0F;
  for (std::size_t i = 0; i + 1 < hits.size(); i += 2) {  // the line enters and leaves in turn
    picture.segment(hits[i], x, hits[i + 1], x, kMaterial);
    wall = hits[i + 1] - hits[i];
  }
  picture.label(5.1F, x, "x = " + twoDigits(x) + ", wall " + twoDigits(wall));
  return hits.size();
}

}  // namespace

int main(int argc, char** argv) {
  const char* path = argc > 1 ? argv[1] : "profile.svg";
  Picture picture(path);
  drawGuides(picture);

  const std::vector<Element> outline = roundedOutline();
  std::vector<TouchCurD> curves;
  TouchCurD lip{};
  for (const Element& element : outline) {
    TouchCurD inside = element.curve;
    slTouchCurDOffset(kWallThickness, element.inward, &inside);
    drawBothHalves(element.curve, kOutside, picture, curves);
    drawBothHalves(inside, kInside, picture, curves);
    lip = line(element.curve.endPnt, inside.endPnt);
  }
  drawBothHalves(lip, kOutside, picture, curves);

  std::size_t count = 0;
  for (const float x : kCuts) {
    count += drawCut(curves, x, picture);
  }
  if (!picture.close()) {
    std::cerr << path << ": cannot be written\n";
    return 1;
  }
  std::cout << path << ": " << outline.size() << " elements, " << count << " crossings\n";
}
