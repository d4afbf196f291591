#pragma once

#include <stdexcept>

namespace zel::view {

/// There is no display, no OpenGL, or not the memory for a picture. what() says which.
class GraphicsError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace zel::view
