#pragma once

#include <functional>

namespace zel::test {

/// The int that `work` throws; 0 when it throws none.
inline int thrownBy(const std::function<void()>& work) {
  try {
    work();
  } catch (int code) {
    return code;
  }
  return 0;
}

}  // namespace zel::test
