#pragma once

#include <optional>
#include <string>

#include "tools/view/pictures/camera.h"
#include "tools/view/pictures/scene_painter.h"

namespace zel::view {

/// What a person pointed at.
struct Picked {
  Selection selection;
  Vector3 place;     ///< in the scene
  std::string text;  ///< one line: number, coordinates and neighbours as the mesh has them
};

/// Finds what lies under the mouse.
class Picker {
 public:
  /// Takes time n log n. @param scene must outlive the picker.
  explicit Picker(const SceneMesh& scene);

  /// @param ray  from Camera::rayThrough().
  /// @return the first face along the ray, or its node when the place is near a corner; the nearest
  ///         node of a scene without faces, when the ray passes it closely; nothing on the ground.
  [[nodiscard]] std::optional<Picked> pick(const Ray& ray) const;

 private:
  [[nodiscard]] std::optional<Picked> pickPoint(const Ray& ray) const;
  [[nodiscard]] Picked describeNode(int node) const;
  [[nodiscard]] Picked describeFace(std::uint32_t face, const Vector3& place) const;

  const SceneMesh& scene_;
  TriangleTree tree_;
};

}  // namespace zel::view
