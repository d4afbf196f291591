// KwStringCL and the string table.

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "support/array_values.h"
#include "zel/containers/kw_string_arr.h"

namespace zel::test {
namespace {

std::string valueOf(const KwStringArr& table, int index) {
  std::vector<char> out(static_cast<std::size_t>(table.GetLengthM(index)) + 1);
  int count = -1;
  table.GetValueM(index, &count, out.data());
  return {out.data(), static_cast<std::size_t>(count)};
}

TEST(KwString, keepsExactlyTheBytesGiven) {
  KwStringCL text;
  char out[8] = "???????";
  EXPECT_EQ(text.GetStringM(out), 0);
  EXPECT_EQ(text.IsAvailableM(), 30);
  EXPECT_EQ(static_cast<const char*>(text), nullptr);
  EXPECT_EQ(text.AddStringM("abc"), 1);
  EXPECT_EQ(text.GetLengthM(), 4);
  text.AddStringM("de");
  EXPECT_STREQ(text, "de");
  text.SetValueM(5, "x\0yz\0");
  int count = 0;
  text.GetValueM(&count, out);
  EXPECT_EQ(count, 5);
  EXPECT_EQ(std::memcmp(out, "x\0yz\0??", 7), 0);
  EXPECT_EQ(text.GetStringM(out), 1);
  EXPECT_STREQ(out, "x");
  text.SetValueM(2, "no");
  text.GetStringM(out);
  EXPECT_STREQ(out, "no");
}

TEST(KwString, comparesAsManyBytesAsAreStored) {
  const struct {
    std::string stored;
    const char* text;
    int result;
  } rows[] = {{"", "anything", 0},
              {"ab", "abc", 0},
              {"ab", "a", -1},
              {{'a', 'b', '\0'}, "ab", 0},
              {{'a', 'b', '\0'}, "abc", 1},
              {{'a', 'b', '\0'}, "a\xFF", 1},
              {{'a', '\0', '\0', '\0'}, "a", 0},  // bytes behind the zero count as 0
              {{'a', '\0', 'b'}, "a", -1},
              {{'a', '\0', 'b'}, nullptr, -1}};  // as an empty text
  for (const auto& [stored, text, result] : rows) {
    KwStringCL element(31);
    element.SetValueM(static_cast<int>(stored.size()), stored.data());
    EXPECT_EQ(element.CompareStrM(7, text), result) << stored << " " << text;
  }
}

TEST(KwString, copiesAreDeepAndMovesTakeTheText) {
  KwStringCL text(31);
  text.AddStringM("a text too long to lie inside");
  KwStringCL copy(text);
  copy.SetValueM(1, "b");
  EXPECT_STREQ(text, "a text too long to lie inside");
  const char* const bytes = text;
  KwStringCL moved(std::move(text));
  EXPECT_EQ(static_cast<const char*>(moved), bytes);
  EXPECT_EQ(moved.IsAvailableM(), 31);
  EXPECT_EQ(text.GetLengthM(), 0);  // NOLINT: moved-from is specified
}

TEST(KwStringTable, textWithoutAZeroMatchesWhateverBeginsWithIt) {
  KwStringArr table;
  EXPECT_EQ(table.AddByCompM("node"), 0);
  EXPECT_EQ(table.AddByCompM("nod"), 1);
  EXPECT_EQ(table.AddStringM(3, "quad"), 2);  // no zero: matches whatever begins with qua
  EXPECT_EQ(table.AddByCompM("quality"), 2);
  EXPECT_EQ(valueOf(table, 2), "qua");
  EXPECT_EQ(table.StrCmpM(0, 5, "node"), 1);
  EXPECT_EQ(table.StrCmpM(0, 5, "nodes"), 0);
  EXPECT_EQ(table.StrCmpM(3, 5, "node") + table.StrCmpM(-1, 5, "node"), 0);
}

TEST(KwStringTable, deletedTextStillMatchesButReadsEmpty) {
  KwStringArr table;
  table.AddByCompM("one");
  table.AddByCompM("two");
  EXPECT_EQ(table.DelItemM(0), 1);
  EXPECT_EQ(table.FindStrM("one"), 0);
  EXPECT_EQ(valueOf(table, 0), "");
  EXPECT_EQ(table.GetLengthM(0), 4);
  EXPECT_EQ(table.GetAvailableNumM(), 1);
  table.SetValueM(0, 2, "x");
  EXPECT_EQ(valueOf(table, 0), "");  // the tag stays
  table.DelItemM(1);
  EXPECT_EQ(table.GetBoundM(), 1);
  EXPECT_EQ(table.FindStrM("two"), -1);
  EXPECT_EQ(table.GetLengthM(99), 0);
}

TEST(KwStringTable, assignmentEndsFourSlotsLongerAndCopiesDeeply) {
  KwStringArr table;
  for (int i = 0; i < 6; ++i) {
    table.AddByCompM(("text number " + std::to_string(i)).c_str());
  }
  KwStringArr assigned;
  assigned = table;
  EXPECT_EQ(assigned.GetLengthM(), 12);
  assigned.SetValueM(0, 1, "x");
  EXPECT_EQ(valueOf(table, 0), std::string("text number 0\0", 14));
  EXPECT_EQ(countsOf(KwStringArr(table)), (Counts{.bound = 6, .live = 6, .length = 8}));
  KwStringArr& same = assigned;
  assigned = same;
  EXPECT_EQ(assigned.GetLengthM(), 12);
  assigned = KwStringArr(KwStringArr());
  EXPECT_EQ(assigned.GetLengthM(), 4);
  KwStringArr inlineTarget;
  inlineTarget = assigned;
  EXPECT_EQ(inlineTarget.GetLengthM(), 4);
}

/// A random short text over few letters; sometimes without its zero or with inner ones.
std::string randomStored(std::mt19937& random) {
  std::string text;
  for (unsigned length = static_cast<unsigned>(random() % 7); length > 0; --length) {
    text += static_cast<char>('a' + random() % 4);
  }
  static const std::string kEnds[] = {"", {'\0', '\0'}, {'\0', 'b', '\0'}, {'\0'}};
  return text + kEnds[std::min<std::size_t>(random() % 24, 3)];
}

int findByWalk(const std::vector<std::string>& stored, const std::string& text) {
  for (std::size_t i = 0; i < stored.size(); ++i) {
    std::string stream = text;
    stream.resize(std::max(text.size(), stored[i].size()), '\0');
    if (stream.compare(0, stored[i].size(), stored[i]) == 0) {
      return static_cast<int>(i);
    }
  }
  return -1;
}

TEST(KwStringTable, searchAnswersAsAWalkUnderAllChanges) {
  std::mt19937 random(77);
  for (int round = 0; round < 6; ++round) {
    KwStringArr table;
    std::vector<std::string> stored;
    for (int step = 0; step < 1500; ++step) {
      const std::string text = randomStored(random);
      const auto count = static_cast<int>(text.size());
      const std::size_t index = random() % (stored.size() + 1);
      const auto slot = static_cast<int>(index);
      const auto end = static_cast<int>(stored.size());
      const auto kind = random() % 8;
      if (kind == 0) {
        table.SetValueM(slot, count, text.data());
        if (slot < end) {
          stored[index] = text;
        }
      } else if (kind == 1) {
        table.DelItemM(slot);
        stored.resize(stored.size() - (slot + 1 == end ? 1 : 0));
      } else if (kind == 2 && step % 100 == 0) {
        KwStringArr other;
        other = table;
        table = std::move(other);
      } else if (kind == 3 || kind == 4) {
        const int known = findByWalk(stored, text.c_str());
        ASSERT_EQ(table.AddByCompM(text.c_str()), known < 0 ? end : known);
        if (known < 0) {
          stored.push_back(text.c_str() + std::string(1, '\0'));
        }
      } else if (kind > 4 && (end > 100 || text.find('\0') != std::string::npos)) {
        // Texts without a zero would soon match everything; they are rare and late.
        ASSERT_EQ(table.AddStringM(count, text.data()), end);
        stored.push_back(text);
      }
      const std::string query(randomStored(random).c_str());
      ASSERT_EQ(table.FindStrM(query.c_str()), findByWalk(stored, query)) << query << " " << step;
    }
  }
}

}  // namespace
}  // namespace zel::test
