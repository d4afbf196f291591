// Values to the stream: golden bytes, and agreement with printf on everything random.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <filesystem>
#include <random>
#include <string>

#include "stream_fixture.h"
#include "zel/textfile/kw_iocl.h"

namespace zel::test {
namespace {

using StreamOutput = StreamTest;

TEST_F(StreamOutput, defaultTextForms) {
  const char c[] = {'A', -128};
  const int i[] = {1, -22, 2147483647, -2147483647};
  const float r[] = {0, -1.5F, 1e30F, -1e18F};
  const unsigned char p[] = {0, 128, 200, 255};
  EXPECT_EQ(written([&](KwIOCL& io) {
              EXPECT_EQ(io.OutputCM(&c[0], nullptr, &c[1]), 1);
              EXPECT_EQ(io.OutputDM(&i[0], nullptr, &i[1]), 1);
              EXPECT_EQ(io.OutputRM(&r[0], &r[1]), 1);
              EXPECT_EQ(io.OutputSM("a %d word", 3, 1), 1);
              EXPECT_EQ(io.OutputsM("as it stands %"), 1);
              EXPECT_EQ(io.OutputInt2DM(i), 1);
              EXPECT_EQ(io.OutputInt3DM(i), 1);
              EXPECT_EQ(io.OutputInt4DM(i), 1);
              EXPECT_EQ(io.OutputPoint2DM(r), 1);
              EXPECT_EQ(io.OutputPoint3DM(r), 1);
              EXPECT_EQ(io.OutputPoint4DM(r), 1);
              EXPECT_EQ(io.OutputPixel4DM(r), 1);
              EXPECT_EQ(io.OutputTexPixel4DM(p), 1);
            }),
            "   65,  -128\n"
            "         1,        -22\n"
            "  0.00000000e+00,  -1.50000000e+00\n"
            "a %d word\n"
            "as it stands %\n"
            "         1,        -22\n"
            "         1,        -22, 2147483647\n"
            "         1,        -22, 2147483647, -2147483647\n"
            "  0.00000000e+00,  -1.50000000e+00\n"
            "  0.00000000e+00,  -1.50000000e+00,   1.00000002e+30\n"
            "  0.00000000e+00,  -1.50000000e+00,   1.00000002e+30,  -9.99999984e+17\n"
            "  0.00000000e+00,  -1.50000000e+00,   1.00000002e+30,  -9.99999984e+17\n"
            "    0,   128,   200,   255\n");
}

TEST_F(StreamOutput, layoutIsTheCallers) {
  const int i[] = {1, 2};
  const float r[] = {0.5F, 2};
  EXPECT_EQ(written([&](KwIOCL& io) {
              io.SetSeparatorM(" 5%d ");
              io.OutputDM(&i[0], &i[1]);
              io.SetFmtM(1, "<%d>");
              io.SetFmtM(3, "'%s'");
              io.SetFmtM(2, "%.2f");
              io.SetFmtM(5, "%g|%.1f");
              io.OutputDM(&i[0], &i[1]);
              io.OutputRM(&r[0], &r[1]);
              io.OutputSM("x", 0, 0);
              io.OutputPoint2DM(r);
              io.SetAutoNewLineM(2);
              io.LoadDefaultFmtM(5);
              io.OutputPoint2DM(r);
              io.SetSeparatorM("");
              io.OutputDM(&i[0], &i[1]);
            }),
            "         1 5%d          2\n<1> 5%d <2>\n0.50 5%d 2.00\n'x'\n0.5|2.0\n"
            "  5.00000000e-01,   2.00000000e+00<1><2>");
}

TEST_F(StreamOutput, nineValuesShareALine) {
  const int v = 1;
  const std::string text = written([&](KwIOCL& io) {
    io.SetFmtM(1, "%d");
    io.OutputDM(&v, &v, &v, &v, &v, &v, &v, &v, &v);
  });
  EXPECT_EQ(text, "1, 1, 1, 1, 1, 1, 1, 1, 1\n");
}

std::string printed(float value) {
  if (std::isnan(value)) {  // not every library prints its sign
    return std::signbit(value) ? "            -nan\n" : "             nan\n";
  }
  char text[64];
  std::snprintf(text, sizeof text, "%16.8e\n", static_cast<double>(value));
  return text;
}

TEST_F(StreamOutput, realsArePrintedAsByPrintf) {
  std::mt19937 random(31);
  std::vector<float> values{INFINITY, -INFINITY,      NAN,  -0.0F,         1.17549435e-38F,
                            1.4e-45F, 3.40282347e38F, 0.5F, 9.99999999e9F, 1e-5F};
  for (int i = 0; i < 40000; ++i) {
    values.push_back(std::bit_cast<float>(static_cast<std::uint32_t>(random())));
  }
  for (int exponent = -30; exponent < 30; ++exponent) {
    for (int k = 0; k < 200; ++k) {  // short decimals, where ties between two last digits lie
      values.push_back(std::ldexp(static_cast<float>(random() % 4096), exponent));
    }
  }
  std::string expected;
  for (const float value : values) {
    expected += printed(value);
  }
  const std::string text = written([&](KwIOCL& io) {
    for (const float value : values) {
      io.OutputRM(&value);
    }
  });
  EXPECT_TRUE(text == expected);
}

TEST_F(StreamOutput, binaryForms) {
  const char c[] = {'A', 'B'};
  const int i[] = {1, -2, 3, 4};
  const float r[] = {1, 2, 3, 4};
  const auto bytes = [&](const std::function<void(KwIOCL&)>& work) { return written(work, "wb"); };
  const auto raw = [](const auto* values, std::size_t count) {
    return std::string(reinterpret_cast<const char*>(values), count * sizeof *values);
  };
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputCM(&c[0], &c[1]); }), "A");
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputDM(&i[1], &i[0]); }), "\xFE\xFF\xFF\xFF");
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputRM(&r[0], &r[1]); }), raw(r, 1));
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputInt2DM(i); }), raw(i, 2));
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputInt3DM(i); }), raw(i, 3));
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputInt4DM(i); }), raw(i, 4));
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputPoint2DM(r); }), raw(r, 2));
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputPixel4DM(r); }), raw(r, 4));
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputRsM(r, 4); }), raw(r, 4));
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputRsM(r, -4); }), "");
  const std::string three("\3\0\0\0", 4);
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputSM("abc", 0, 0); }), three + "abc");
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputSM("abcdef", 3, 0); }), "abc");
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputSM("abcdef", 3, 1); }), three + "abc");
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputsM("abc"); }), three + "abc");
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputsM(nullptr); }), std::string(4, '\0'));
  EXPECT_EQ(bytes([&](KwIOCL& io) { io.OutputSM(nullptr, 6, 0); }), "");
}

TEST_F(StreamOutput, rawRealsNeedABinaryStream) {
  float value = 1;
  written([&](KwIOCL& io) {
    EXPECT_EQ(thrownBy([&] { io.OutputRsM(&value, 1); }), 108);
    EXPECT_EQ(thrownBy([&] { io.InputRsM(&value, 1); }), 108);
  });
}

// A full disk shows when the buffered data reach it: at a later write or, at the latest, when the
// stream is closed or replaced. Whoever does that is told; a destructor stays quiet.
TEST_F(StreamOutput, fullDiskIsTold) {
  if (!std::filesystem::exists("/dev/full")) {
    GTEST_SKIP() << "no device that is always full";
  }
  const KwIOCL other;
  const std::function<void()> ends[] = {[&] { io_.CloseM(); }, [&] { io_.OpenM("/dev/null", "w"); },
                                        [&] { io_ = other; }};
  for (const auto& end : ends) {
    io_.OpenM("/dev/full", "w");
    io_.OutputSM("lost", 0, 0);
    EXPECT_EQ(thrownBy(end), 108);
  }
  EXPECT_EQ(io_.GetFileDescriptM(), nullptr);
  EXPECT_EQ(io_.CloseM(), 1);
  io_.OpenM("/dev/full", "wb");
  const auto write = [&] {
    for (int i = 0; i < 100000; ++i) {
      io_.OutputDM(&i);
    }
  };
  EXPECT_EQ(thrownBy(write), 108);
}

}  // namespace
}  // namespace zel::test
