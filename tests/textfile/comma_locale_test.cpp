// A program that has set a decimal-comma locale, for C and for C++, writes and reads the same.

#include <gtest/gtest.h>

#include <string>

#include "stream_fixture.h"
#include "support/comma_locale.h"
#include "zel/textfile/kw_iocl.h"

namespace {

using zel::test::CommaLocale;
using zel::test::StreamFile;

TEST(CommaLocale, changesNoByteAndNoValue) {
  const CommaLocale comma;
  const float r[] = {1234567.5F, -0.25F};
  const int i = 1234567;
  StreamFile file;
  EXPECT_EQ(file.written([&](KwIOCL& io) {
    io.OutputRM(&r[0], &r[1]);
    io.OutputDM(&i);
    io.SetFmtM(5, "%.2f, %g");
    io.OutputPoint2DM(r);
    io.SetFmtM(2, "%.1f");
    io.OutputRM(&r[0], &r[1]);
  }),
            "  1.23456750e+06,  -2.50000000e-01\n   1234567\n1234567.50, -0.25\n"
            "1234567.5, -0.2\n");
  KwIOCL io;
  io.OpenM(file.name(), "r");
  float q[2] = {};
  int n = 0;
  io.InputRM(&q[0], &q[1]);
  EXPECT_EQ(q[0], r[0]);
  EXPECT_EQ(q[1], r[1]);
  io.InputDM(&n, "%d");
  EXPECT_EQ(n, i);
  io.InputPoint2DM(q);
  EXPECT_EQ(q[1], r[1]);
  if (!comma.reachesC()) {
    GTEST_SKIP() << "no comma locale for C is installed: only the C++ half was tested";
  }
}

}  // namespace
