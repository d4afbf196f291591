#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include "tools/zel/console.h"

namespace zel::program {

/// A bar on standard error while one piece of work runs: only on a terminal, and only once the
/// work has taken half a second. It asks for the state from its own thread, so the work itself
/// does nothing but count.
class Progress {
 public:
  /// @param label    what is being done, for example "reading bunny.zel".
  /// @param fraction tells how far the work is, in [0, 1]; called from another thread.
  Progress(const Console& console, std::string label, std::function<double()> fraction);
  /// Stops and wipes the bar.
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

 private:
  void run();

  std::string label_;
  std::function<double()> fraction_;
  std::mutex mutex_;
  std::condition_variable stopSignal_;
  bool stopped_ = false;
  std::thread thread_;
};

/// A count that the work raises and a Progress reads.
class Steps {
 public:
  explicit Steps(int total) : total_(total) {}
  void advance() { done_.fetch_add(1, std::memory_order_relaxed); }
  [[nodiscard]] double fraction() const {
    return total_ < 1 ? 1.0 : static_cast<double>(done_.load(std::memory_order_relaxed)) / total_;
  }

 private:
  int total_;
  std::atomic<int> done_ = 0;
};

}  // namespace zel::program
