#pragma once

#include <latch>
#include <thread>
#include <vector>

namespace zel::test {

/// Runs `work(k)` for k = 0 .. count-1, each on a thread of its own, all let go at one moment.
/// A test that uses it has "Thread" in its name: by that `./dev tsan` finds it.
template <class Work>
void onThreads(int count, const Work& work) {
  std::latch start(count);
  std::vector<std::jthread> threads;
  for (int k = 0; k < count; ++k) {
    threads.emplace_back([&start, &work, k] {
      start.arrive_and_wait();
      work(k);
    });
  }
}

}  // namespace zel::test
