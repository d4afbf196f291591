// One mesh format, by way of every kind of reading: with and without welding and looks. What is
// read must hold together and go into a document that reads back the same.

#include <cstdint>
#include <cstdlib>
#include <span>
#include <sstream>
#include <string>

#include "zel/core/error.h"
#include "zel/io/read.h"
#include "zel/io/write.h"
#include "zel/mesh/appearance.h"

namespace {

void check(const zel::Mesh& mesh) {
  const std::string bytes = zel::meshBytes(mesh, {.format = "zel"});
  const zel::Mesh again = zel::readMesh(std::as_bytes(std::span(bytes)), {.format = "zel"});
  if (zel::meshBytes(again, {.format = "zel"}) != bytes) {
    std::abort();
  }
}

template <class Work>
void tolerate(Work work) {
  try {
    work();
  } catch (const zel::Error& error) {
    if (error.code() != zel::ErrorCode::kUnreadable && error.code() != zel::ErrorCode::kExhausted) {
      std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto bytes = std::as_bytes(std::span(data, size));
  tolerate([&] {
    zel::Appearance looks;
    zel::Remarks remarks;
    const zel::Mesh mesh =
        zel::readMesh(bytes, {.format = ZEL_FUZZ_FORMAT, .appearance = &looks}, &remarks);
    check(mesh);
  });
  tolerate([&] {
    std::istringstream stream(std::string(reinterpret_cast<const char*>(data), size));
    const zel::Tolerance tolerance = size % 2 == 0 ? zel::Absolute(0.01) : zel::Relative(1e-3);
    check(zel::readMesh(stream, {.format = ZEL_FUZZ_FORMAT, .weld = tolerance}));
  });
  return 0;
}
