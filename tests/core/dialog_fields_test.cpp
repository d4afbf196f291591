#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "zel/core/desktop.h"

namespace {

constexpr int kControl = 1001;

class EditField : public CWnd {
 public:
  void GetClientRect(RECT* rect) const override { *rect = RECT{}; }
  int GetWindowText(char* buffer, int capacity) const override {
    std::strncpy(buffer, text.c_str(), static_cast<std::size_t>(capacity));
    buffer[capacity - 1] = '\0';
    return static_cast<int>(std::strlen(buffer));
  }
  void SetWindowText(const char* shown) override { text = shown; }

  std::string text;
};

class Exchange : public CDataExchange {
 public:
  Exchange(bool saving, std::string text) : CDataExchange(saving) { field.text = std::move(text); }
  CWnd* PrepareEditCtrl(int control) override { return control == kControl ? &field : nullptr; }
  void Fail() override { failed = true; }

  EditField field;
  bool failed = false;
};

template <class Variable>
Variable saved(const char* text, const char* format, bool& failed) {
  Exchange exchange(true, text);
  Variable variable = 77;
  slDDX_TextWithFormat(&exchange, kControl, format, 0, &variable);
  failed = exchange.failed;
  return variable;
}

TEST(DialogFields, integersAreSavedAsTheFormatSays) {
  const struct {
    const char* text;
    const char* format;
    int value;
    bool failed;
  } kCases[] = {
      {"12", "%d", 12, false},         {"\t 12 ", "%ld", 12, false}, {"-5", "%d", -5, false},
      {"12a", "%d", 77, true},         {"", "%d", 77, true},         {"-1", "%u", 77, true},
      {"40000", "%d", 40000, false},   {"0", "%lu", 0, false},       {"-0", "%d", 77, true},
      {"4294967295", "%u", -1, false},
  };
  for (const auto& expected : kCases) {
    bool failed = false;
    EXPECT_EQ(saved<int>(expected.text, expected.format, failed), expected.value) << expected.text;
    EXPECT_EQ(failed, expected.failed) << expected.text;
  }
}

TEST(DialogFields, shortVariablesTakeSigned16Bits) {
  bool failed = false;
  EXPECT_EQ(saved<std::int16_t>("-32768", "%sd", failed), -32768);
  EXPECT_FALSE(failed);
  for (const char* format : {"%sd", "%su"}) {
    EXPECT_EQ(saved<std::int16_t>("40000", format, failed), 77);
    EXPECT_TRUE(failed);
  }
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
  for (const auto& expected : kCases) {
    Exchange exchange(false, "old");
    slDDX_TextWithFormat(&exchange, kControl, expected.format, 0, expected.value);
    EXPECT_EQ(exchange.field.text, expected.text) << expected.format;
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
