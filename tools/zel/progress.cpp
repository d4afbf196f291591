#include "tools/zel/progress.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>

namespace zel::program {

namespace {

constexpr std::chrono::milliseconds kPatience(500);
constexpr std::chrono::milliseconds kRedraw(100);
constexpr int kBarWidth = 30;

void draw(const std::string& label, double fraction) {
  const int filled = static_cast<int>(std::clamp(fraction, 0.0, 1.0) * kBarWidth);
  std::string bar(static_cast<std::size_t>(filled), '#');
  bar.resize(kBarWidth, '.');
  std::fprintf(stderr, "\r\033[K[%s] %3d%% %s", bar.c_str(), filled * 100 / kBarWidth,
               label.c_str());
  std::fflush(stderr);
}

}  // namespace

Progress::Progress(const Console& console, std::string label, std::function<double()> fraction)
    : label_(std::move(label)), fraction_(std::move(fraction)) {
  if (console.showsProgress()) {
    thread_ = std::thread([this] { run(); });
  }
}

Progress::~Progress() {
  if (!thread_.joinable()) {
    return;
  }
  {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
  }
  stopSignal_.notify_one();
  thread_.join();
}

void Progress::run() {
  std::unique_lock lock(mutex_);
  const auto isStopped = [this] { return stopped_; };
  if (stopSignal_.wait_for(lock, kPatience, isStopped)) {
    return;
  }
  do {
    draw(label_, fraction_());
  } while (!stopSignal_.wait_for(lock, kRedraw, isStopped));
  std::fputs("\r\033[K", stderr);
}

}  // namespace zel::program
