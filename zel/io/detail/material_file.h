#pragma once

/// @file
/// The material library that may lie beside an OBJ file.

#include <string>
#include <string_view>

#include "zel/io/detail/byte_sink.h"
#include "zel/mesh/appearance.h"

namespace zel {

/// @return the place of the material of that name, appended when it is new.
int materialNamed(Appearance& appearance, const std::string& name);

/// Reads the materials of a library into those of the same name; what they say about light beyond
/// the plain colour is left alone. Unknown and malformed statements are skipped.
/// @return how many statements were not understood or not kept.
long long readMaterials(std::string_view text, Appearance& appearance);

}  // namespace zel
