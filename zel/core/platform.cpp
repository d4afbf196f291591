#include "zel/core/platform.h"

namespace zel {
namespace {

Platform* replacement = nullptr;

}  // namespace

Platform::Platform() = default;
Platform::~Platform() = default;

Platform& platform() {
  static Platform standard;
  return replacement != nullptr ? *replacement : standard;
}

void setPlatform(Platform* services) { replacement = services; }

}  // namespace zel
