// The slot arrays beside std::vector, and their searches beside a plain walk.

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "zel/containers/char_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/kw_string_arr.h"
#include "zel/containers/point3d_arr.h"

namespace {

using Point = std::array<float, 3>;

constexpr int kHundredMegabytes = 100'000'000;

// --- appending ---------------------------------------------------------------------------------

void appendIntsToVector(benchmark::State& state) {
  for (auto _ : state) {
    std::vector<int> values;
    for (int i = 0; i < state.range(0); ++i) {
      values.push_back(i);
    }
    benchmark::DoNotOptimize(values.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void appendIntsToArray(benchmark::State& state) {
  for (auto _ : state) {
    IntArr values;
    for (int i = 0; i < state.range(0); ++i) {
      values.AddItemM(i);
    }
    benchmark::DoNotOptimize(values.getCurrentItemPrtM());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void appendPointsToVector(benchmark::State& state) {
  for (auto _ : state) {
    std::vector<Point> points;
    for (int i = 0; i < state.range(0); ++i) {
      points.push_back({static_cast<float>(i), 0, 0});
    }
    benchmark::DoNotOptimize(points.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void appendPointsToArray(benchmark::State& state) {
  for (auto _ : state) {
    Point3DArr points;
    for (int i = 0; i < state.range(0); ++i) {
      const Point point{static_cast<float>(i), 0, 0};
      points.AddItemM(point.data());
    }
    benchmark::DoNotOptimize(points.getCurrentItemPrtConstM());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// --- adding unless present ---------------------------------------------------------------------

/// Points of a scattered surface in random order, each about three times.
std::vector<Point> surfacePoints(std::int64_t count) {
  std::mt19937 random(1);
  std::uniform_real_distribution<float> scatter(-2e-5F, 2e-5F);
  const auto side = static_cast<unsigned>(std::sqrt(static_cast<double>(count) / 3)) + 1;
  std::vector<Point> points(static_cast<std::size_t>(count));
  for (Point& point : points) {
    const auto u = static_cast<float>(random() % side) * 0.01F;
    const auto v = static_cast<float>(random() % side) * 0.01F;
    point = {u + scatter(random), v + scatter(random), std::sin(u) * std::cos(v)};
  }
  return points;
}

void addPointsByWalk(benchmark::State& state) {
  const std::vector<Point> points = surfacePoints(state.range(0));
  const auto isNear = [](float a, float b) {
    return std::fabs(static_cast<double>(a) - static_cast<double>(b)) <
           static_cast<double>(0.0001F);
  };
  for (auto _ : state) {
    std::vector<Point> kept;
    for (const Point& point : points) {
      bool isKnown = false;
      for (std::size_t i = 0; i < kept.size() && !isKnown; ++i) {
        isKnown = isNear(kept[i][0], point[0]) && isNear(kept[i][1], point[1]) &&
                  isNear(kept[i][2], point[2]);
      }
      if (!isKnown) {
        kept.push_back(point);
      }
    }
    benchmark::DoNotOptimize(kept.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void addPointsByCall(benchmark::State& state) {
  const std::vector<Point> points = surfacePoints(state.range(0));
  for (auto _ : state) {
    Point3DArr kept;
    for (const Point& point : points) {
      kept.AddPointM(point.data());
    }
    benchmark::DoNotOptimize(kept.GetBoundM());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

std::vector<std::string> layerNames(std::int64_t count) {
  std::mt19937 random(2);
  std::vector<std::string> names(static_cast<std::size_t>(count));
  for (std::string& name : names) {
    name = "layer/" + std::to_string(random() % static_cast<unsigned>(count));
  }
  return names;
}

void addTextsByWalk(benchmark::State& state) {
  const std::vector<std::string> names = layerNames(state.range(0));
  for (auto _ : state) {
    std::vector<std::string> kept;
    for (const std::string& name : names) {
      bool isKnown = false;
      for (std::size_t i = 0; i < kept.size() && !isKnown; ++i) {
        isKnown = kept[i] == name;
      }
      if (!isKnown) {
        kept.push_back(name);
      }
    }
    benchmark::DoNotOptimize(kept.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void addTextsByCall(benchmark::State& state) {
  const std::vector<std::string> names = layerNames(state.range(0));
  for (auto _ : state) {
    KwStringArr kept;
    for (const std::string& name : names) {
      kept.AddByCompM(name.c_str());
    }
    benchmark::DoNotOptimize(kept.GetBoundM());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// --- what once made searches walk ---------------------------------------------------------------

// A lattice barely wider than the tolerance: a dozen points in each cell.
void addCrowdedPoints(benchmark::State& state) {
  const auto side = static_cast<int>(std::cbrt(static_cast<double>(state.range(0))));
  for (auto _ : state) {
    Point3DArr kept;
    for (int i = 0; i < side * side * side; ++i) {
      const Point point{static_cast<float>(i % side) * 0.00012F,
                        static_cast<float>(i / side % side) * 0.00012F,
                        static_cast<float>(i / side / side) * 0.00012F};
      kept.AddPointM(point.data());
    }
    benchmark::DoNotOptimize(kept.GetBoundM());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// As many points live at a time as there are holes behind them.
void addPointsToSlidingWindow(benchmark::State& state) {
  const auto count = static_cast<int>(state.range(0));
  for (auto _ : state) {
    Point3DArr kept;
    for (int i = 0; i < count; ++i) {
      kept.AddPointM(Point{static_cast<float>(i) * 0.5F, 0, 0}.data());
      if (i >= count / 2) {
        kept.DelItemM(i - count / 2);
      }
    }
    benchmark::DoNotOptimize(kept.GetBoundM());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Records of one size, padded with zeros, then all made equal from the end.
void findPaddedRecords(benchmark::State& state) {
  const auto count = static_cast<int>(state.range(0));
  std::vector<std::array<char, 32>> records(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    std::snprintf(records[static_cast<std::size_t>(i)].data(), 32, "record %d", i);
  }
  for (auto _ : state) {
    KwStringArr table;
    int found = 0;
    for (const auto& record : records) {
      table.AddStringM(32, record.data());
      found += table.FindStrM(record.data());
    }
    for (int i = count - 1; i >= 0; --i) {
      table.SetValueM(i, 5, "same");
      found += table.FindStrM("same");
    }
    benchmark::DoNotOptimize(found);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// --- a text of 100 MB --------------------------------------------------------------------------

CharArr hugeText() {
  CharArr text(kHundredMegabytes);
  const std::string line = "G01 X12.5 Y-3.25 Z0.125 F1500 (a line of an ordinary program)\r\n";
  while (text.GetBoundM() < kHundredMegabytes - 100) {
    text.AddContentvcM(line.data(), static_cast<int>(line.size()));
  }
  return text;
}

void hugeTextAppendBytes(benchmark::State& state) {
  for (auto _ : state) {
    CharArr text;
    for (int i = 0; i < kHundredMegabytes; ++i) {
      text.AddContentM('x');
    }
    benchmark::DoNotOptimize(text.GetBoundM());
  }
  state.SetBytesProcessed(state.iterations() * kHundredMegabytes);
}

void hugeTextReadLines(benchmark::State& state) {
  const CharArr text = hugeText();
  std::vector<char> line(1000);
  for (auto _ : state) {
    int count = 0;
    for (int start = 0; text.GetOneLineM(start, line.data(), &count, 1) == 1; start += count) {
    }
    benchmark::DoNotOptimize(count);
  }
  state.SetBytesProcessed(state.iterations() * text.GetBoundM());
}

void hugeTextInsertAndDeleteInFront(benchmark::State& state) {
  CharArr text = hugeText();
  for (auto _ : state) {
    text.InsertStringM(0, "O1234\r\n", 7);
    text.DelStringM(0, 7);
  }
}

void hugeTextPurge(benchmark::State& state) {
  const CharArr text = hugeText();
  for (auto _ : state) {
    state.PauseTiming();
    CharArr holes(text);
    for (int i = 0; i < kHundredMegabytes / 2; i += 10) {
      holes.DelItemM(i);
    }
    state.ResumeTiming();
    holes.PurgeDeletedItemM();
    benchmark::DoNotOptimize(holes.GetBoundM());
  }
  state.SetBytesProcessed(state.iterations() * text.GetBoundM());
}

BENCHMARK(appendIntsToVector)->Arg(1000)->Arg(1000000);
BENCHMARK(appendIntsToArray)->Arg(1000)->Arg(1000000);
BENCHMARK(appendPointsToVector)->Arg(1000)->Arg(1000000);
BENCHMARK(appendPointsToArray)->Arg(1000)->Arg(1000000);
BENCHMARK(addPointsByWalk)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(addPointsByCall)
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(addTextsByWalk)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(addTextsByCall)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(addCrowdedPoints)->Arg(8000)->Arg(64000)->Arg(512000)->Unit(benchmark::kMillisecond);
BENCHMARK(addPointsToSlidingWindow)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(findPaddedRecords)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(hugeTextAppendBytes)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(hugeTextReadLines)->Unit(benchmark::kMillisecond);
BENCHMARK(hugeTextInsertAndDeleteInFront)->Unit(benchmark::kMillisecond);
BENCHMARK(hugeTextPurge)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
