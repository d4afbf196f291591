#pragma once

/// @file
/// Telling how far long work is, and ending it early.

#include <functional>

namespace zel {

/// Called now and then, on the caller's thread, with the fraction of the work that is done, rising
/// in [0, 1]. Answering false cancels: the work ends with Error::code() kCancelled and everything
/// is as it was before. An empty function is never called. What it throws comes out of the call
/// that does the work.
using Progress = std::function<bool(double fraction)>;

}  // namespace zel
