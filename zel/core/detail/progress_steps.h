#pragma once

#include <cstddef>

#include "zel/core/error.h"
#include "zel/core/progress.h"

namespace zel {

/// Counts the steps of one piece of work and tells a Progress about every hundredth of them.
class ProgressSteps {
 public:
  /// @param from,to the part of the whole work that these steps are, within [0, 1].
  ProgressSteps(const Progress& progress, std::size_t steps, double from = 0.0, double to = 1.0)
      : progress_(progress), steps_(steps), from_(from), span_(to - from) {
    stride_ = progress ? steps / 100 + 1 : static_cast<std::size_t>(-1);
    next_ = stride_;
  }

  /// Says that `done` steps are done in all. @throws Error (kCancelled).
  void reach(std::size_t done) {
    if (done >= next_) {
      tell(done);
    }
  }
  /// One step more. @throws Error (kCancelled).
  void advance() { reach(++done_); }

 private:
  void tell(std::size_t done) {
    next_ = done + stride_;
    const double part = steps_ == 0 ? 1.0 : static_cast<double>(done) / static_cast<double>(steps_);
    if (!progress_(from_ + span_ * part)) {
      throw Error(ErrorCode::kCancelled, "stopped", "cancelled by the caller");
    }
  }

  const Progress& progress_;
  std::size_t steps_;
  double from_;
  double span_;
  std::size_t stride_;
  std::size_t next_;
  std::size_t done_ = 0;
};

}  // namespace zel
