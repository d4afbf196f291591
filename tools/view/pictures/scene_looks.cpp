#include "tools/view/pictures/scene_looks.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

namespace zel::view {
namespace {

Colour colourOf(const zel::Colour& colour) { return {colour[0], colour[1], colour[2], 255}; }

// The materials, with their pictures put into the scene; one picture serves all that name it.
std::vector<SceneMaterial> materialsOf(SceneMesh& scene, const Appearance& looks,
                                       const TextureLoader& load) {
  std::map<std::string, int> known;
  std::vector<SceneMaterial> materials;
  for (const Material& material : looks.materials) {
    SceneMaterial made{colourOf(material.diffuse), SceneMaterial::kNoTexture};
    const auto before = material.textureBytes.empty() ? known.find(material.texture) : known.end();
    if (before != known.end()) {
      made.texture = before->second;
    } else if (!material.texture.empty() || !material.textureBytes.empty()) {
      TextureImage image = load(material);
      if (!image.isEmpty()) {
        made.texture = static_cast<int>(scene.textures.size());
        scene.textures.push_back(std::move(image));
      }
      if (material.textureBytes.empty()) {
        known[material.texture] = made.texture;
      }
    }
    materials.push_back(made);
  }
  return materials;
}

}  // namespace

void giveLooks(SceneMesh& scene, const Appearance& looks, const TextureLoader& load) {
  if (!looks.nodeColours.empty()) {
    for (std::size_t node = 0; node < scene.nodeNormals.size(); ++node) {
      scene.nodeColours.push_back(colourOf(looks.colourOf(static_cast<int>(node))));
    }
  }
  if (looks.materials.empty()) {
    return;
  }
  const std::vector<SceneMaterial> materials = materialsOf(scene, looks, load);
  for (const SceneFace& face : scene.faces) {
    const int material = Appearance::materialOf(
        face.isQuad ? looks.quadMaterials : looks.triangleMaterials, face.slot);
    const bool isKnown = material >= 0 && static_cast<std::size_t>(material) < materials.size();
    scene.faceMaterials.push_back(isKnown ? materials[static_cast<std::size_t>(material)]
                                          : SceneMaterial{});
  }
}

}  // namespace zel::view
