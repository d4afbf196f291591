#pragma once

#include <functional>

#include "tools/view/pictures/scene_mesh.h"
#include "zel/mesh/appearance.h"

namespace zel::view {

/// Finds the picture of a material; empty when there is none to be had.
using TextureLoader = std::function<TextureImage(const Material& material)>;

/// Gives a scene the colours, materials and pictures of its mesh.
/// @param scene made of the mesh that `looks` belongs to. @param load called once for each picture.
void giveLooks(SceneMesh& scene, const Appearance& looks, const TextureLoader& load);

}  // namespace zel::view
