// Mesh files read and written while the heap refuses: all of it, or an error and nothing changed.

#include <gtest/gtest.h>

#include "faults/refusing_allocator.h"
#include "io/io_support.h"

namespace zel::test {
namespace {

struct Form {
  const char* format;
  bool ascii;
};
constexpr Form kForms[] = {{"zel", false}, {"obj", false}, {"ply", false},
                           {"ply", true},  {"stl", false}, {"stl", true}};

TEST(RefusedFiles, areReadWholeOrNotAtAll) {
  const TempDir dir;
  for (const Form& form : kForms) {
    const std::string bytes = bytesOf(houseMesh(), form.format, form.ascii);
    const std::string file = dir.file(std::string("a.") + form.format);
    writeFile(file, bytes);
    for (const bool welds : {false, true}) {
      Remarks expectedRemarks;
      ReadOptions options;
      if (welds) {
        options.weld = Relative(1e-6);
      }
      const std::string whole = document(readMesh(file, options, &expectedRemarks));
      for (const bool isFile : {false, true}) {
        const auto read = [&](Remarks& remarks) {
          return isFile ? readMesh(file, options, &remarks)
                        : readMesh(std::as_bytes(std::span(bytes)), options, &remarks);
        };
        const int refusals = refuseEachRequest(file, [&](RefusingHeap& heap) {
          Remarks remarks;
          Mesh mesh;
          const Told told = heap.during([&] { mesh = read(remarks); });
          if (told.error != ErrorCode{}) {
            return whatIsWrong(told.error == ErrorCode::kExhausted, "another error") +
                   whatIsWrong(remarks.empty(), "remarks");
          }
          return whatIsWrong(document(mesh) == whole, "another mesh") +
                 whatIsWrong(textOf(remarks) == textOf(expectedRemarks), "other remarks");
        });
        EXPECT_GT(refusals, 2) << file;
      }
    }
  }
}

TEST(RefusedFiles, areWrittenWholeOrNotAtAll) {
  const TempDir dir;
  const Mesh mesh = houseMesh();
  for (const Form& form : kForms) {
    const std::string bytes = bytesOf(mesh, form.format, form.ascii);
    const std::string file = dir.file(std::string("a.") + form.format);
    const WriteOptions options = {.ascii = form.ascii};
    const int refusals = refuseEachRequest(file, [&](RefusingHeap& heap) {
      writeFile(file, "old");
      const Told told = heap.during([&] { writeMesh(mesh, file, options); });
      const auto files = std::distance(std::filesystem::directory_iterator(dir.path()), {});
      return whatIsWrong(told.error == ErrorCode{} || told.error == ErrorCode::kExhausted,
                         "another error") +
             whatIsWrong(readFile(file) == (told.error == ErrorCode{} ? bytes : "old"), "partial") +
             whatIsWrong(files == 1, "left something beside");
    });
    EXPECT_GT(refusals, 2) << file;
    std::filesystem::remove(file);
  }
}

}  // namespace
}  // namespace zel::test
