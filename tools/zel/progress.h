#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include "tools/zel/console.h"
#include "zel/core/progress.h"

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

/// A bar for a job of the library.
class JobProgress {
 public:
  JobProgress(const Console& console, std::string label)
      : bar_(console, std::move(label), [this] { return fraction_.load(); }) {}
  /// What the job's options want. Valid as long as this object.
  [[nodiscard]] zel::Progress told() {
    return [this](double fraction) {
      fraction_ = fraction;
      return true;
    };
  }

 private:
  std::atomic<double> fraction_ = 0.0;
  Progress bar_;
};

}  // namespace zel::program
