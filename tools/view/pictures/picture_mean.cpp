#include "tools/view/pictures/picture_mean.h"

#include <GL/gl.h>

#include <algorithm>

namespace zel::view {

PictureMean::PictureMean(ViewSize size)
    : size_(size),
      sums_(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * 4),
      pixels_(sums_.size()) {}

void PictureMean::add() {
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, size_.width, size_.height, GL_RGBA, GL_UNSIGNED_BYTE, pixels_.data());
  std::transform(sums_.begin(), sums_.end(), pixels_.begin(), sums_.begin(),
                 [](std::uint16_t sum, std::uint8_t value) {
                   return static_cast<std::uint16_t>(sum + value);
                 });
  ++count_;
}

void PictureMean::paint() {
  std::transform(sums_.begin(), sums_.end(), pixels_.begin(), [this](std::uint16_t sum) {
    return static_cast<std::uint8_t>((sum + count_ / 2) / count_);
  });
  glDisable(GL_LIGHTING);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_BLEND);
  glViewport(0, 0, size_.width, size_.height);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glRasterPos2i(-1, -1);
  glDrawPixels(size_.width, size_.height, GL_RGBA, GL_UNSIGNED_BYTE, pixels_.data());
}

}  // namespace zel::view
