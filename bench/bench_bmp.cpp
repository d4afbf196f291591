// Loading a 2048 x 2048 picture from a file in the page cache: this library, SDL2's loader, and the
// loop that one would write by hand. SDL2 alone leaves palette and byte order as stored; the
// "converted" case ends with the same RGB bytes as this library's.

#include <SDL2/SDL.h>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "zel/core/memory.h"
#include "zel/image/bmp.h"

namespace {

constexpr int kSide = 2048;
constexpr std::size_t kPixels = std::size_t{kSide} * kSide;

/// A random picture of 8 or 24 bits, removed at the end of the program.
class SamplePicture {
 public:
  explicit SamplePicture(int bitCount) {
    BITMAPFILEHEADER start{};
    BITMAPINFOHEADER header{};
    const std::size_t tableBytes = bitCount == 8 ? 1024 : 0;
    start.bfType = 19778;
    start.bfOffBits = static_cast<std::uint32_t>(54 + tableBytes);
    header.biSize = 40;
    header.biWidth = kSide;
    header.biHeight = kSide;
    header.biPlanes = 1;
    header.biBitCount = static_cast<std::uint16_t>(bitCount);
    std::string body(tableBytes + kPixels * static_cast<std::size_t>(bitCount) / 8, '\0');
    std::mt19937 random(1);
    for (char& byte : body) {
      byte = static_cast<char>(random());
    }
    start.bfSize = static_cast<std::uint32_t>(54 + body.size());
    std::ofstream file(path_, std::ios::binary);
    file.write(reinterpret_cast<const char*>(&start), sizeof start);
    file.write(reinterpret_cast<const char*>(&header), sizeof header);
    file.write(body.data(), static_cast<std::streamsize>(body.size()));
  }
  ~SamplePicture() { std::filesystem::remove(path_); }
  SamplePicture(const SamplePicture&) = delete;
  SamplePicture& operator=(const SamplePicture&) = delete;

  [[nodiscard]] const char* path() const { return path_.c_str(); }

 private:
  std::string path_ = (std::filesystem::temp_directory_path() /
                       ("zel_bench_" + std::to_string(std::random_device()()) + ".bmp"))
                          .string();
};

const char* samplePath(int bitCount) {
  static const SamplePicture eight(8);
  static const SamplePicture trueColour(24);
  return (bitCount == 8 ? eight : trueColour).path();
}

void tellRate(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPixels));
}

/// `kToRgb` 0 leaves the bytes as stored.
template <char kToRgb>
void zelLoad(benchmark::State& state) {
  const char* path = samplePath(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    unsigned char* pixels = nullptr;
    BITMAPINFO* info = nullptr;
    if (slLoadBMP(path, &pixels, &info, kToRgb) != 1) {
      state.SkipWithError("not loaded");
    }
    benchmark::DoNotOptimize(pixels);
    std::free(pixels);
    std::free(info);
  }
  tellRate(state);
}

void zelRgba(benchmark::State& state) {
  const char* path = samplePath(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    unsigned char(*pixels)[4] = nullptr;
    int w = 0;
    int h = 0;
    if (slLoadBmpPicture(path, &w, &h, &pixels) != 1) {
      state.SkipWithError("not loaded");
    }
    benchmark::DoNotOptimize(pixels);
    slFree(pixels);
  }
  tellRate(state);
}

void sdlAsStored(benchmark::State& state) {
  const char* path = samplePath(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    SDL_Surface* surface = SDL_LoadBMP(path);
    benchmark::DoNotOptimize(surface->pixels);
    SDL_FreeSurface(surface);
  }
  tellRate(state);
}

void sdlConverted(benchmark::State& state) {
  const char* path = samplePath(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    SDL_Surface* surface = SDL_LoadBMP(path);
    SDL_Surface* rgb = SDL_ConvertSurfaceFormat(surface, SDL_PIXELFORMAT_RGB24, 0);
    benchmark::DoNotOptimize(rgb->pixels);
    SDL_FreeSurface(rgb);
    SDL_FreeSurface(surface);
  }
  tellRate(state);
}

/// Reads the whole file, then converts pixel by pixel.
void plainLoop(benchmark::State& state) {
  const int bitCount = static_cast<int>(state.range(0));
  const char* path = samplePath(bitCount);
  for (auto _ : state) {
    const auto bytes = static_cast<std::size_t>(std::filesystem::file_size(path));
    const auto file = std::unique_ptr<unsigned char[]>(new unsigned char[bytes]);
    std::FILE* stream = std::fopen(path, "rb");
    if (std::fread(file.get(), 1, bytes, stream) != bytes) {
      state.SkipWithError("not read");
    }
    std::fclose(stream);
    const auto rgb = std::unique_ptr<unsigned char[]>(new unsigned char[3 * kPixels]);
    const unsigned char* stored = file.get() + (bitCount == 8 ? 54 + 1024 : 54);
    for (std::size_t i = 0; i < kPixels; ++i) {
      const unsigned char* bgr = bitCount == 8 ? file.get() + 54 + 4 * stored[i] : stored + 3 * i;
      rgb[3 * i] = bgr[2];
      rgb[3 * i + 1] = bgr[1];
      rgb[3 * i + 2] = bgr[0];
    }
    benchmark::DoNotOptimize(rgb.get());
  }
  tellRate(state);
}

BENCHMARK(zelLoad<0>)
    ->Name("zelAsStored")
    ->ArgName("bits")
    ->Arg(24)
    ->Arg(8)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(zelLoad<1>)
    ->Name("zelRgb")
    ->ArgName("bits")
    ->Arg(24)
    ->Arg(8)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(plainLoop)->ArgName("bits")->Arg(24)->Arg(8)->Unit(benchmark::kMillisecond);
BENCHMARK(sdlAsStored)->ArgName("bits")->Arg(24)->Arg(8)->Unit(benchmark::kMillisecond);
BENCHMARK(sdlConverted)->ArgName("bits")->Arg(24)->Arg(8)->Unit(benchmark::kMillisecond);
BENCHMARK(zelRgba)->ArgName("bits")->Arg(24)->Arg(8)->Unit(benchmark::kMillisecond);

}  // namespace
