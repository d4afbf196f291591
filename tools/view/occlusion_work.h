#pragma once

#include <atomic>
#include <optional>
#include <thread>

#include "tools/view/pictures/occlusion.h"

namespace zel::view {

/// Measures the occlusion of a scene beside the drawing.
class OcclusionWork {
 public:
  /// Begins at once. @param scene, surface must outlive the work.
  OcclusionWork(const SceneMesh& scene, const Surface& surface, UpAxis up);
  /// Gives up what is not done, soon.
  ~OcclusionWork();
  OcclusionWork(const OcclusionWork&) = delete;
  OcclusionWork& operator=(const OcclusionWork&) = delete;

  [[nodiscard]] bool isDone() const { return isDone_; }
  /// Waits until it is done. @return the result, once.
  [[nodiscard]] Occlusion take();

 private:
  void measure();

  const SceneMesh& scene_;
  const Surface& surface_;
  UpAxis up_;
  Occlusion result_;
  std::atomic<bool> mustEnd_{false};
  std::atomic<bool> isDone_{false};
  std::thread thread_;
};

}  // namespace zel::view
