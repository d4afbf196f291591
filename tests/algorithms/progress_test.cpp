// What every job on meshes tells of its progress, and what cancelling it leaves.

#include <gtest/gtest.h>

#include <stdexcept>

#include "algorithms/all_jobs.h"
#include "zel/core/error.h"

namespace zel::test {
namespace {

TEST(Jobs, tellRisingProgressAndCanBeCancelledAtEachCall) {
  for (const Job& job : allJobs()) {
    SCOPED_TRACE(job.name);
    const Mesh original = meshForJobs();
    Mesh mesh = original;
    int calls = 0;
    double last = 0.0;
    const Answer answer = job.run(mesh, [&](double fraction) {
      EXPECT_GE(fraction, last);
      EXPECT_LE(fraction, 1.0);
      last = fraction;
      ++calls;
      return true;
    });
    EXPECT_GT(calls, 1);
    const std::string result = contentOf(mesh);
    for (int call = 1; call <= calls; ++call) {
      mesh = original;
      int told = 0;
      try {
        job.run(mesh, [&](double /*fraction*/) { return ++told < call; });
        ADD_FAILURE() << "call " << call << " was not heard";
      } catch (const Error& error) {
        EXPECT_EQ(error.code(), ErrorCode::kCancelled);
      }
      ASSERT_EQ(contentOf(mesh), contentOf(original)) << "call " << call;
    }
    EXPECT_THROW(job.run(mesh, [](double) -> bool { throw std::runtime_error("mine"); }),
                 std::runtime_error);
    EXPECT_EQ(contentOf(mesh), contentOf(original));
    EXPECT_EQ(job.run(mesh, {}), answer);
    EXPECT_EQ(contentOf(mesh), result);
  }
}

}  // namespace
}  // namespace zel::test
