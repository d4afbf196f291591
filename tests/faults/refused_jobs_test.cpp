// Jobs on meshes while the heap refuses: done, or an error and the mesh as it was.

#include <gtest/gtest.h>

#include "algorithms/all_jobs.h"
#include "faults/refusing_allocator.h"

namespace zel::test {
namespace {

TEST(RefusedJobs, areDoneOrLeaveTheMeshAlone) {
  for (const Job& job : allJobs()) {
    Mesh done = meshForJobs();
    const Answer answer = job.run(done, {});
    const int refusals = refuseEachRequest(job.name, [&](RefusingHeap& heap) {
      Mesh mesh = meshForJobs();
      const std::string before = contentOf(mesh);
      bool isSame = false;
      const Told told = heap.during([&] { isSame = job.run(mesh, {}) == answer; });
      if (told.error != ErrorCode{}) {
        return whatIsWrong(told.error == ErrorCode::kExhausted, "another error") +
               whatIsWrong(contentOf(mesh) == before, "changed");
      }
      return whatIsWrong(contentOf(mesh) == contentOf(done), "not done") +
             whatIsWrong(isSame, "another answer");
    });
    EXPECT_GT(refusals, 3) << job.name;
  }
}

}  // namespace
}  // namespace zel::test
