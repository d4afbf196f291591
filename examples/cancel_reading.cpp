// Reads a mesh from memory, shows how far it is, and thinks better of it half-way.

#include <zel/zel.h>

#include <cstdio>
#include <span>
#include <string>

int main() {
  std::string file;
  for (int k = 0; k < 200000; ++k) {
    file += "v " + std::to_string(k) + " 0 0\n";
  }
  double done = 0;
  zel::ReadOptions options;
  options.format = "obj";
  options.progress = [&](double fraction) {
    done = fraction;
    return fraction < 0.5;
  };
  try {
    const zel::Mesh mesh = zel::readMesh(std::as_bytes(std::span(file)), options);
    std::printf("read all %d nodes\n", mesh.nodes.GetAvailableNumM());
  } catch (const zel::Error& error) {
    std::printf("stopped after %.0f %% of the file: %s\n", 100 * done,
                error.code() == zel::ErrorCode::kCancelled ? "cancelled" : error.what());
  }
}
