#pragma once

/// @file
/// Plane and space geometry on float points: the one header to include. Handedness, matrix order,
/// units, tolerances and result codes common to all chapters are described in docs/conventions.md.

#include "zel/geometry/bounding_rectangles.h"
#include "zel/geometry/circle_angles.h"
#include "zel/geometry/circle_intersection.h"
#include "zel/geometry/circles.h"
#include "zel/geometry/circumcentres.h"
#include "zel/geometry/coordinate_systems.h"
#include "zel/geometry/determinants.h"
#include "zel/geometry/inside_tests.h"
#include "zel/geometry/intersections.h"
#include "zel/geometry/lengths.h"
#include "zel/geometry/line_pairs.h"
#include "zel/geometry/lines.h"
#include "zel/geometry/matrices.h"
#include "zel/geometry/motions.h"
#include "zel/geometry/planes.h"
#include "zel/geometry/records.h"
#include "zel/geometry/rectangle_moves.h"
#include "zel/geometry/rectangles.h"
#include "zel/geometry/rotations.h"
#include "zel/geometry/scalars.h"
#include "zel/geometry/solid_contact.h"
#include "zel/geometry/sphere_intersection.h"
#include "zel/geometry/tubes.h"
#include "zel/geometry/vectors.h"
