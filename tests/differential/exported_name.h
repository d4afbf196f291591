#pragma once

#include <dlfcn.h>

#include <string>

namespace zel::test {

/// The mangled name of an exported function.
inline std::string exportedName(const void* address) {
  Dl_info info{};
  const bool found = dladdr(address, &info) != 0 && info.dli_saddr == address;
  return found ? info.dli_sname : "";
}

}  // namespace zel::test
