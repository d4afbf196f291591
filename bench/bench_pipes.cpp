// Lists read from a pipe beside the same lists read from a file: the node list in its order, the
// triangle list from the last entry to the first. Time per entry must not depend on the length.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <functional>
#include <string>

#include "support/memory_file.h"
#include "support/pipe_file.h"
#include "zel/mesh/node.h"
#include "zel/mesh/triangle.h"
#include "zel/textfile/kw_iocl.h"

namespace {

/// A list of `count` entries with these lines behind the index line.
std::string listOf(int count, bool isDescending, const char* lines) {
  std::string text = std::to_string(count) + ",  LIST_BEGIN\n";
  for (int i = 0; i < count; ++i) {
    text += std::to_string(isDescending ? count - 1 - i : i) + ",  INDEX\n" + lines;
  }
  return text + "LIST_END\n";
}

void readNodes(std::FILE* file) {
  NodeArr nodes;
  KwIOCL io;
  io.CreateIndirectlyM(file, "", "", 0);
  nodes.FmInputZelLstM(&io);
  benchmark::DoNotOptimize(nodes.GetAvailableNumM());
}

void readTriangles(std::FILE* file) {
  TriangleArr faces;
  faces.FmReadTriangleLstM(file);
  benchmark::DoNotOptimize(faces.GetAvailableNumM());
  std::fclose(file);
}

struct List {
  bool isDescending;
  const char* lines;
  void (*read)(std::FILE*);
};
constexpr List kNodes{false, "   31\n 1.5, 2.5, 3.5\n 0, 0, 1\n", readNodes};
constexpr List kTriangles{true, "   31\n 7,  8,  9\n 0,0,1\n1\n", readTriangles};

void fromFile(benchmark::State& state, const List& list) {
  const auto count = static_cast<int>(state.range(0));
  const zel::test::MemoryFile memory;
  if (!memory.store(listOf(count, list.isDescending, list.lines))) {
    state.SkipWithError("no file");
  }
  for (auto _ : state) {
    list.read(std::fopen(memory.name(), "r"));
  }
  state.SetItemsProcessed(state.iterations() * count);
}

void fromPipe(benchmark::State& state, const List& list) {
  const auto count = static_cast<int>(state.range(0));
  const std::string text = listOf(count, list.isDescending, list.lines);
  for (auto _ : state) {
    zel::test::PipeFile pipe(text);
    list.read(pipe.release());
  }
  state.SetItemsProcessed(state.iterations() * count);
}

#define ZEL_BENCH_LIST(list)                                                       \
  BENCHMARK_CAPTURE(fromFile, list, list)->Arg(70000)->Arg(280000)->UseRealTime(); \
  BENCHMARK_CAPTURE(fromPipe, list, list)->Arg(70000)->Arg(280000)->UseRealTime()

ZEL_BENCH_LIST(kNodes);
ZEL_BENCH_LIST(kTriangles);

}  // namespace
