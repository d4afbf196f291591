#include "tools/view/occlusion_work.h"

#include <new>
#include <system_error>
#include <utility>

namespace zel::view {

OcclusionWork::OcclusionWork(const SceneMesh& scene, const Surface& surface, UpAxis up)
    : scene_(scene), surface_(surface), up_(up) {
  try {
    thread_ = std::thread([this] { measure(); });
  } catch (const std::system_error&) {
    isDone_ = true;  // without a thread the picture stays as it is
  }
}

OcclusionWork::~OcclusionWork() {
  mustEnd_ = true;
  if (thread_.joinable()) {
    thread_.join();
  }
}

void OcclusionWork::measure() {
  try {
    result_ = measureOcclusion(scene_, surface_, up_, 0, &mustEnd_);
  } catch (const std::bad_alloc&) {
    result_ = {};
  }
  isDone_ = true;
}

Occlusion OcclusionWork::take() {
  if (thread_.joinable()) {
    thread_.join();
  }
  return std::move(result_);
}

}  // namespace zel::view
