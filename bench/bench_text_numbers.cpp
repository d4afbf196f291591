// A million nodes as text: through the stream, through stdio's formats, and by a bare loop over
// the standard library's conversions as the practical limit. Every row writes or reads the same
// bytes: two lines of three reals per node.

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "zel/textfile/kw_iocl.h"

namespace {

constexpr int kNodes = 1'000'000;
using Triple = std::array<float, 3>;

const std::vector<Triple>& triples() {
  static const std::vector<Triple> values = [] {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> coordinate(-100, 100);
    std::vector<Triple> made(2 * kNodes);
    for (Triple& triple : made) {
      triple = {coordinate(random), coordinate(random), coordinate(random)};
    }
    return made;
  }();
  return values;
}

const std::string& fileName() {
  static const std::string name = [] {
    std::string made = "bench_text_numbers.tmp";
    FILE* file = std::fopen(made.c_str(), "w");
    for (const Triple& t : triples()) {
      std::fprintf(file, "%16.8e, %16.8e, %16.8e\n", static_cast<double>(t[0]),
                   static_cast<double>(t[1]), static_cast<double>(t[2]));
    }
    std::fclose(file);
    std::atexit([] { std::remove("bench_text_numbers.tmp"); });
    return made;
  }();
  return name;
}

void countNodes(benchmark::State& state) { state.SetItemsProcessed(state.iterations() * kNodes); }

void BM_WriteStream(benchmark::State& state) {
  triples();
  for (auto _ : state) {
    KwIOCL io;
    io.OpenM("/dev/null", "w");
    for (const Triple& t : triples()) {
      io.OutputPoint3DM(t.data());
    }
    io.CloseM();
  }
  countNodes(state);
}
BENCHMARK(BM_WriteStream)->Unit(benchmark::kMillisecond);

void BM_WriteFprintf(benchmark::State& state) {
  triples();
  for (auto _ : state) {
    FILE* file = std::fopen("/dev/null", "w");
    for (const Triple& t : triples()) {
      std::fprintf(file, "%16.8e, %16.8e, %16.8e\n", static_cast<double>(t[0]),
                   static_cast<double>(t[1]), static_cast<double>(t[2]));
    }
    std::fclose(file);
  }
  countNodes(state);
}
BENCHMARK(BM_WriteFprintf)->Unit(benchmark::kMillisecond);

void BM_WriteToChars(benchmark::State& state) {
  std::vector<char> text(kNodes * 110);
  for (auto _ : state) {
    char* end = text.data();
    for (const Triple& t : triples()) {
      for (const float value : t) {
        end = std::to_chars(end, end + 32, static_cast<double>(value),
                            std::chars_format::scientific, 8)
                  .ptr;
        *end++ = ',';
      }
      end[-1] = '\n';
    }
    benchmark::DoNotOptimize(end);
  }
  countNodes(state);
}
BENCHMARK(BM_WriteToChars)->Unit(benchmark::kMillisecond);

void BM_ReadStream(benchmark::State& state) {
  fileName();
  for (auto _ : state) {
    KwIOCL io;
    io.OpenM(fileName().c_str(), "r");
    Triple t;
    for (int i = 0; i < 2 * kNodes; ++i) {
      io.InputPoint3DM(t.data());
      benchmark::DoNotOptimize(t);
    }
  }
  countNodes(state);
}
BENCHMARK(BM_ReadStream)->Unit(benchmark::kMillisecond);

void BM_ReadFscanf(benchmark::State& state) {
  fileName();
  for (auto _ : state) {
    FILE* file = std::fopen(fileName().c_str(), "r");
    Triple t;
    for (int i = 0; i < 2 * kNodes; ++i) {
      benchmark::DoNotOptimize(std::fscanf(file, "%f, %f, %f", &t[0], &t[1], &t[2]));
    }
    std::fclose(file);
  }
  countNodes(state);
}
BENCHMARK(BM_ReadFscanf)->Unit(benchmark::kMillisecond);

void BM_ReadFromChars(benchmark::State& state) {
  std::ifstream in(fileName(), std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  for (auto _ : state) {
    const char* at = text.data();
    const char* end = at + text.size();
    while (true) {
      while (at != end && (*at == ' ' || *at == ',' || *at == '\n')) {
        ++at;
      }
      if (at == end) {
        break;
      }
      float value = 0;
      at = std::from_chars(at, end, value).ptr;
      benchmark::DoNotOptimize(value);
    }
  }
  countNodes(state);
}
BENCHMARK(BM_ReadFromChars)->Unit(benchmark::kMillisecond);

}  // namespace
