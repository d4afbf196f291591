#pragma once

#include <gtest/gtest.h>

#include <random>
#include <type_traits>

namespace zel::test {

/// Runs `run(random, round)`, or `run(random)`, for round = 0 .. count-1 with one generator.
/// The first round that fails is the last; the failure names it with the seed.
template <class Random = std::mt19937, class Run>
void randomRounds(unsigned seed, int count, const Run& run) {
  Random random(seed);
  for (int round = 0; round < count; ++round) {
    if constexpr (std::is_invocable_v<Run, Random&, int>) {
      run(random, round);
    } else {
      run(random);
    }
    if (testing::Test::HasFailure()) {
      ADD_FAILURE() << "in round " << round << " of seed " << seed;
      return;
    }
  }
}

}  // namespace zel::test
