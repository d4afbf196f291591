// Values from the stream: the rules of scanf, its values, and the caller's own calls in between.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "stream_fixture.h"
#include "support/bits.h"
#include "zel/textfile/kw_iocl.h"

namespace zel::test {
namespace {

using StreamInput = StreamTest;
using StreamReals = StreamTest;

using Integers = std::vector<int>;

TEST_F(StreamInput, restOfTheLineIsSkipped) {
  Integers n(5);
  feed("1, 2, 3\r\n4 , \n 5 x\n\n\r\n 6");
  EXPECT_EQ(io_.InputDM(&n[0], nullptr, &n[1]), 1);
  EXPECT_EQ(position(), 9);
  io_.InputDM(&n[2], &n[3]);
  io_.InputDM(&n[4], nullptr);
  EXPECT_EQ(n, (Integers{1, 2, 4, 5, 6}));
  EXPECT_EQ(thrownBy([&] { io_.InputDM(&n[0]); }), 107);
}

TEST_F(StreamInput, withoutNewLinesTheNextValueFollows) {
  Integers n(2);
  char word[8];
  io_.SetAutoNewLineM(0);
  feed("1\n2 rest");
  io_.InputDM(&n[0]);
  EXPECT_EQ(position(), 1);
  EXPECT_EQ(std::fgetc(io_.GetFileDescriptM()), '\n');
  io_.InputDM(&n[1], "%d");
  EXPECT_EQ(n, (Integers{1, 2}));
  EXPECT_EQ(io_.InputSeparatorM(), 1);
  io_.InputSM(word, 0, 0);
  EXPECT_STREQ(word, "rest");
  EXPECT_EQ(thrownBy([&] { io_.InputSeparatorM(); }), 107);
}

TEST_F(StreamInput, separatorIsMatchedLiterally) {
  Integers n(7);
  io_.SetSeparatorM(" %d;");
  feed("1 %d;2%d; 3 \n%d;\n4\n");
  EXPECT_EQ(io_.InputInt4DM(&n[0]), 1);
  io_.SetSeparatorM("");
  feed("1 -2+3\n");
  io_.InputInt3DM(&n[4]);
  EXPECT_EQ(n, (Integers{1, 2, 3, 4, 1, -2, 3}));
}

TEST_F(StreamInput, failingFieldStaysInTheStream) {
  Integers n(3, 9);
  feed("1, 2; 3 and more than a character of text behind it\n7\n");
  EXPECT_EQ(thrownBy([&] { io_.InputInt3DM(n.data()); }), 107);
  EXPECT_EQ(n, (Integers{1, 2, 9}));
  EXPECT_EQ(position(), 4);
  float r[2] = {0, 9};
  feed("1, x\n");
  EXPECT_EQ(thrownBy([&] { io_.InputPoint2DM(r); }), 107);
  EXPECT_EQ(r[0] * 10 + r[1], 19);
  EXPECT_EQ(position(), 3);
}

TEST_F(StreamInput, charsKeepTheirLowBits) {
  char c[2] = {};
  feed("300, -1\n");
  io_.InputCM(&c[0], &c[1]);
  EXPECT_EQ(c[0], 44);
  EXPECT_EQ(c[1], -1);
}

TEST_F(StreamInput, numberBeyondIntIsAReadFailure) {
  int value = 5;
  for (const char* text : {"2147483648", "-2147483649", "99999999999999999999999999", "x", "+-1"}) {
    feed(text);
    EXPECT_EQ(thrownBy([&] { io_.InputDM(&value); }), 107) << text;
    EXPECT_EQ(value, 5);
  }
  feed("-2147483648\n+2147483647\n-000000000000000000007\n");
  for (const int expected : {INT32_MIN, INT32_MAX, -7}) {
    io_.InputDM(&value);
    EXPECT_EQ(value, expected);
  }
}

TEST_F(StreamInput, texturePixelKeepsTheFirstRealsBits) {
  unsigned char pixel[4] = {};
  feed("1, 2, 3, 4\n");
  io_.InputTexPixel4DM(pixel);
  EXPECT_EQ(std::memcmp(pixel, "\x00\x00\x80\x3F", 4), 0);
  feed("    1,     2,     3\n");
  EXPECT_EQ(thrownBy([&] { io_.InputTexPixel4DM(pixel); }), 107);
}

TEST_F(StreamInput, linesAreCutToTheBuffer) {
  feed("sevenly\nb\rc\r\n\r\nlast\r");
  for (const auto& [size, line] :
       {std::pair{5, "seve"}, {5, "b\rc"}, {5, ""}, {1, ""}, {5, ""}, {0, "kept"}}) {
    char text[5] = "kept";
    EXPECT_EQ(io_.InputGetsM(text, size), 1);
    EXPECT_STREQ(text, line);
  }
}

TEST_F(StreamInput, binaryForms) {
  const int i[] = {1, -2, 3, 4};
  const float r[] = {1, 2, 3, 4};
  io_.OpenM(name(), "wb");
  io_.OutputCM("A");
  io_.OutputInt4DM(i);
  io_.OutputPoint4DM(r);
  io_.OutputSM("abc", 3, 0);
  io_.OutputsM("defg");
  io_.OutputSM("", 0, 0);
  io_.OpenM(name(), "rb");
  char c = 0, text[8] = "???????";
  int n[4] = {}, unread = 9;
  float q[4] = {};
  io_.InputCM(&c);
  io_.InputInt2DM(n);
  io_.InputDM(&n[2], &unread);
  io_.InputDM(&n[3], "%d");
  io_.InputPoint3DM(q);
  io_.InputRsM(&q[3], 1);
  io_.InputSM(text, 3, 0);
  EXPECT_STREQ(text, "abc????");
  io_.InputGetsM(text, 2);
  EXPECT_STREQ(text, "defg");
  io_.InputSM(text, 0, 0);
  EXPECT_STREQ(text, "");
  EXPECT_EQ(c, 'A');
  EXPECT_EQ(unread, 9);
  EXPECT_EQ(std::memcmp(n, i, sizeof i) + std::memcmp(q, r, sizeof r), 0);
  EXPECT_EQ(thrownBy([&] { io_.InputDM(n); }), 107);
  EXPECT_EQ(thrownBy([&] { io_.InputRsM(q, 1); }), 108);
}

TEST_F(StreamInput, binaryCountsAreNotBelieved) {
  char text[8] = "kept";
  for (const std::string count :
       {"\xFF\xFF\xFF\xFF", "\x04\x00\x00\x00", "\xFF\xFF\xFF\x7F", "\1"}) {
    const std::string bytes = (count.size() == 4 ? count : std::string("\4\0\0\0", 4)) + "abc";
    feed(bytes, "rb");
    EXPECT_EQ(thrownBy([&] { io_.InputGetsM(text, 8); }), 107);
    io_.RewindM();
    EXPECT_EQ(thrownBy([&] { io_.InputSM(text, 0, 0); }), 107);
    io_.RewindM();
    EXPECT_EQ(thrownBy([&] { io_.SkipLineM(); }), 107);
    EXPECT_STREQ(text, "kept");
  }
}

TEST_F(StreamInput, callersOwnCallsMayStandInBetween) {
  std::string text;
  for (int i = 0; i < 3000; ++i) {
    text += std::to_string(i) + ", own " + std::to_string(-i) + "\n";
  }
  for (const int newLine : {0, 1}) {
    io_.SetAutoNewLineM(newLine);
    feed(text);
    FILE* file = io_.GetFileDescriptM();
    for (int i = 0; i < 3000; ++i) {
      int ours = 0, theirs = -i;
      if (i % 3 == newLine) {
        ASSERT_EQ(std::fscanf(file, "%d, own %d ", &ours, &theirs), 2);
      } else {
        io_.InputDM(&ours);
        ASSERT_TRUE(newLine == 1 || std::fscanf(file, ", own %d ", &theirs) == 1);
      }
      ASSERT_EQ(ours, i);
      ASSERT_EQ(theirs, -i);
    }
  }
}

// --- the same values as the standard library --------------------------------------------------

// Reads `text` as one real by the C library and by the stream, and compares result, value and
// position.
void compareWithScanf(const std::string& text) {
  FILE* file = std::tmpfile();
  std::fputs(text.c_str(), file);
  std::rewind(file);
  float expected = 77;
  const int converted = std::fscanf(file, "%f", &expected);
  const long behind = std::ftell(file);
  std::rewind(file);
  KwIOCL io;
  io.CreateIndirectlyM(file, "", "", 0);
  for (const int newLine : {0, 1}) {
    io.SetAutoNewLineM(newLine);
    std::rewind(file);
    float value = 77;
    EXPECT_EQ(thrownBy([&] { io.InputRM(&value); }) == 0, converted == 1) << text;
    EXPECT_TRUE(bits(value) == bits(expected) || (std::isnan(value) && std::isnan(expected)))
        << text << ": " << value;
    if (newLine == 0 || converted != 1) {
      EXPECT_EQ(std::ftell(file), behind) << text;
    }
  }
}

TEST_F(StreamReals, hexadecimalNeedsADigit) {
  feed("0xp1\n");
  float value = 77;
  EXPECT_EQ(thrownBy([&] { io_.InputRM(&value); }), 107);
  EXPECT_EQ(value, 77);
}

TEST_F(StreamReals, everySpellingIsReadAsByScanf) {
  std::istringstream spellings(
      "1 +1. .5 -.5e1 00012.50 1e5 1E+05 1e-05x 1e 1e+ 1e+x -. + --1 100ergs 1..2 1e5e5 12e3.5 "
      "1,5 1'0 1d5 inf -INF infinity INFx i in infi infin nan -NaN nan(ab) "
      "0x 0xg 0x1p 0x1.8p3 0X1.8P-3q 0xabc.def 0x1p-149 0x1p-150 0x1.8p-150 0x1p999 0x1p-999 "
      "0x1.000001p0 0x1.0000010000000000000001p0 1e38 3.5e38 1e39 1e99999 1e-99999 "
      "1e99999999999999999999 0e99999999999999999999 0 -0 0x0 1.17549435e-38 1e-45 "
      "7.0064923216240853e-46 7.1e-46 18446744073709551616 9007199254740993 16777217 "
      "16777217.00000000000000000000000000000000000001 16777218.99999999999999999999999999");
  for (std::string text; spellings >> text;) {
    compareWithScanf(text);
  }
  compareWithScanf("");
  compareWithScanf(" \t\r\n\v\f 7");
}

TEST_F(StreamReals, longDigitStringsAreRoundedOnce) {
  const std::string zeros(500, '0');
  const std::string middle = "1.00000005960464477539062500";  // between 1 and the next float
  for (const std::string& text :
       {middle, middle + zeros, middle + zeros + "1", zeros + middle, "0." + zeros + "5e501",
        "1" + zeros + "e-500", "1" + zeros + ".5e-499", "0x1" + zeros + "p-2000",
        "0x0." + zeros + "1p2000", std::string(400, '9') + "e-399"}) {
    compareWithScanf(text);
  }
}

TEST_F(StreamReals, randomNumbersAreReadAsByScanf) {
  std::mt19937 random(32);
  const auto below = [&](unsigned n) { return random() % n; };
  for (int i = 0; i < 3000; ++i) {
    char text[256];
    const float value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
    const float next = std::nextafter(value, INFINITY);
    const double middle = (static_cast<double>(value) + static_cast<double>(next)) / 2;
    const char* formats[] = {"%.*e", "%.*g", "%.*a", "%.*f"};
    const auto digits = static_cast<int>(below(4) == 0 ? 150 : below(21));
    const double printed = below(2) == 0 ? middle : static_cast<double>(value);
    std::snprintf(text, sizeof text, formats[below(4)], digits, printed);
    compareWithScanf(text);
  }
}

}  // namespace
}  // namespace zel::test
