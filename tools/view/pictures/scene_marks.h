#pragma once

#include "tools/view/pictures/camera.h"
#include "tools/view/pictures/draw_options.h"
#include "tools/view/pictures/occlusion.h"
#include "tools/view/pictures/scalar_field.h"
#include "tools/view/pictures/scene_mesh.h"

// What stands around a scene. All draw into the current OpenGL context, with blending on.
namespace zel::view {

/// Draws the shadow with the camera's matrices.
void drawGroundShadow(const GroundShadow& shadow, UpAxis up);

/// @return the distance of the grid's lines in units of the mesh: 1, 2 or 5 times a power of ten.
[[nodiscard]] double gridStep(const SceneMesh& scene);
/// Draws lines on the ground with the camera's matrices, through round coordinates of the mesh.
void drawGroundGrid(const SceneMesh& scene, UpAxis up, const DrawOptions& options);

/// Draws the directions of the axes into the lower right corner of a drawing area.
void drawAxesCross(const Camera& camera, const DrawOptions& options, ViewSize size, int left);

/// Draws names, colours and numbers of the classes of defects at the upper left of a drawing area.
void drawDefectNames(const std::vector<DefectMarks>& defects, const DrawOptions& options,
                     ViewSize size, int left);

/// Draws which colours stand for which numbers, at the right of a drawing area.
void drawLegend(const ScalarField& field, const DrawOptions& options, ViewSize size, int left);

}  // namespace zel::view
