#include <gtest/gtest.h>

#include <string>

#include "core/fake_window.h"
#include "zel/core/desktop.h"

namespace {

constexpr int kControl = 1001;

class Exchange : public CDataExchange {
 public:
  Exchange(bool saving, std::string text) : CDataExchange(saving), field(std::move(text)) {}
  CWnd* PrepareEditCtrl(int control) override { return control == kControl ? &field : nullptr; }
  void Fail() override { failed = true; }

  zel::test::FakeWindow field;
  bool failed = false;
};

constexpr int kRefused = 77;  // what the variable holds before

/// Saves a text into a variable. @return its value; a failure must leave it alone.
template <class Variable>
Variable saved(const char* text, const char* format) {
  Exchange exchange(true, text);
  Variable variable = kRefused;
  slDDX_TextWithFormat(&exchange, kControl, format, 0, &variable);
  EXPECT_EQ(exchange.failed, variable == kRefused) << text << " as " << format;
  return variable;
}

TEST(DialogFields, integersAreSavedAsTheFormatSays) {
  const struct {
    const char* text;
    const char* format;
    int value;
  } kCases[] = {{"12", "%d", 12},        {"\t 12 ", "%ld", 12}, {"-5", "%d", -5},
                {"12a", "%d", kRefused}, {"", "%d", kRefused},  {"-1", "%u", kRefused},
                {"40000", "%d", 40000},  {"0", "%lu", 0},       {"-0", "%d", kRefused},
                {"4294967295", "%u", -1}};
  for (const auto& [text, format, value] : kCases) {
    EXPECT_EQ(saved<int>(text, format), value) << text << " as " << format;
  }
}

TEST(DialogFields, shortVariablesTakeSigned16Bits) {
  EXPECT_EQ(saved<std::int16_t>("-32768", "%sd"), -32768);
  EXPECT_EQ(saved<std::int16_t>("40000", "%sd"), kRefused);
  EXPECT_EQ(saved<std::int16_t>("40000", "%su"), kRefused);
  struct {
    std::int16_t variable = 1;
    std::int16_t neighbour = 2;
  } record;
  Exchange exchange(true, "300");
  slDDX_TextWithFormat(&exchange, kControl, "%sd", 0, &record.variable);
  EXPECT_EQ(record.variable, 300);
  EXPECT_EQ(record.neighbour, 2);
}

TEST(DialogFields, integersAreShownAsTheFormatSays) {
  const struct {
    int value;
    const char* format;
    const char* text;
  } kCases[] = {{-5, "%d", "-5"},  {-1, "%u", "4294967295"}, {-1, "%lu", "4294967295"},
                {-7, "%sd", "-7"}, {-1, "%su", "65535"},     {2147483647, "%ld", "2147483647"}};
  for (const auto& [value, format, text] : kCases) {
    Exchange exchange(false, "old");
    slDDX_TextWithFormat(&exchange, kControl, format, 0, value);
    EXPECT_EQ(exchange.field.text, text) << format;
    EXPECT_FALSE(exchange.failed);
  }
}

TEST(DialogFields, sixDigitsMeanAFloatVariable) {
  float single[2] = {0, 3};
  Exchange first(true, "2.25");
  slTextFloatFormat(&first, kControl, single, 0, 6);
  EXPECT_EQ(single[0], 2.25F);
  EXPECT_EQ(single[1], 3.0F);
  double real = 0;
  Exchange second(true, " 0.1- ");
  slTextFloatFormat(&second, kControl, &real, 0, 15);
  EXPECT_EQ(real, 0.1);
  Exchange bad(true, "0.1x");
  slTextFloatFormat(&bad, kControl, &real, 0, 15);
  EXPECT_TRUE(bad.failed);
  EXPECT_EQ(real, 0.1);
}

TEST(DialogFields, only32CharactersAreRead) {
  double real = 0;
  const std::string number = std::string(31, '0') + "5";
  Exchange exchange(true, number + "tail");
  slTextFloatFormat(&exchange, kControl, &real, 0, 15);
  EXPECT_FALSE(exchange.failed);
  EXPECT_EQ(real, 5.0);
}

TEST(DialogFields, realsAreShownAsPrintfShowsThem) {
  for (const int digits : {-3, 0, 1, 6, 15, 17, 60, 800, 2000000000}) {
    for (const double value : {0.0, -1.5, 1e-7, 123456789.0, 5e-324, -1.7976931348623157e308}) {
      Exchange exchange(false, "");
      slTextFloatFormat(&exchange, kControl, nullptr, value, digits);
      char expected[2000];
      std::snprintf(expected, sizeof(expected), "%.*g", digits > 1000 ? 1000 : digits, value);
      EXPECT_EQ(exchange.field.text, expected) << digits;
    }
  }
}

TEST(DialogFields, missingControlChangesNothing) {
  Exchange exchange(true, "5");
  int variable = 1;
  slDDX_TextWithFormat(&exchange, 7, "%d", 0, &variable);
  slTextFloatFormat(&exchange, 7, &variable, 0, 6);
  EXPECT_EQ(variable, 1);
  EXPECT_FALSE(exchange.failed);
}

}  // namespace
