#pragma once

/// @file
/// Immediate-mode drawing into whatever OpenGL context the caller has made current. No context,
/// state or display list is kept. A face draws itself: see TriangleCL::ShowM().

#include "zel/core/api.h"

/// Sets the front material for lines: diffuse, ambient and specular colour (0.5, 0.5, 0.5, 1).
/// Nothing else changes.
ZEL_API void slSetCorlorForLines();
