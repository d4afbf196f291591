// KwStringCL and the string table.

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "zel/containers/kw_string_arr.h"

namespace {

std::string valueOf(const KwStringArr& table, int index) {
  std::vector<char> out(static_cast<std::size_t>(table.GetLengthM(index)) + 1);
  int count = -1;
  table.GetValueM(index, &count, out.data());
  return {out.data(), static_cast<std::size_t>(count)};
}

TEST(KwString, keepsExactlyTheBytesGiven) {
  KwStringCL text;
  EXPECT_EQ(text.IsAvailableM(), 30);
  EXPECT_EQ(static_cast<const char*>(text), nullptr);
  EXPECT_EQ(text.AddStringM("abc"), 1);
  EXPECT_EQ(text.GetLengthM(), 4);
  text.AddStringM("de");
  EXPECT_STREQ(text, "de");
  text.SetValueM(5, "x\0yz\0");
  char out[8] = "???????";
  int count = 0;
  text.GetValueM(&count, out);
  EXPECT_EQ(count, 5);
  EXPECT_EQ(std::memcmp(out, "x\0yz\0??", 7), 0);
  EXPECT_EQ(text.GetStringM(out), 1);
  EXPECT_STREQ(out, "x");
  text.SetValueM(2, "no");
  text.GetStringM(out);
  EXPECT_STREQ(out, "no");
  EXPECT_EQ(KwStringCL().GetStringM(out), 0);
}

TEST(KwString, comparesAsManyBytesAsAreStored) {
  KwStringCL text(31);
  EXPECT_EQ(text.CompareStrM(0, "anything"), 0);
  text.SetValueM(2, "ab");
  EXPECT_EQ(text.CompareStrM(0, "abc"), 0);
  EXPECT_EQ(text.CompareStrM(0, "a"), -1);
  text.AddStringM("ab");
  EXPECT_EQ(text.CompareStrM(0, "ab"), 0);
  EXPECT_EQ(text.CompareStrM(0, "abc"), 1);
  EXPECT_EQ(text.CompareStrM(9, "a\xFF"), 1);
  text.SetValueM(4, "a\0\0\0");
  EXPECT_EQ(text.CompareStrM(0, "a"), 0);  // bytes behind the zero count as 0
  text.SetValueM(3, "a\0b");
  EXPECT_EQ(text.CompareStrM(0, "a"), -1);
  EXPECT_EQ(text.CompareStrM(0, nullptr), -1);  // as an empty text
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

TEST(KwStringTable, addsOnlyWhatIsNotThere) {
  KwStringArr table;
  EXPECT_EQ(table.AddByCompM("node"), 0);
  EXPECT_EQ(table.AddByCompM("node"), 0);
  EXPECT_EQ(table.GetBoundM(), 1);
  EXPECT_EQ(table.FindStrM("nod"), -1);
  EXPECT_EQ(table.AddByCompM("nod"), 1);
  EXPECT_EQ(table.AddStringM(3, "quad"), 2);  // no zero: matches whatever begins with qua
  EXPECT_EQ(table.AddByCompM("quality"), 2);
  EXPECT_EQ(valueOf(table, 2), "qua");
  EXPECT_EQ(table.StrCmpM(0, 5, "node"), 1);
  EXPECT_EQ(table.StrCmpM(0, 5, "nodes"), 0);
  EXPECT_EQ(table.StrCmpM(3, 5, "node"), 0);
  EXPECT_EQ(table.StrCmpM(-1, 5, "node"), 0);
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
  const KwStringArr copy(table);
  EXPECT_EQ(copy.GetLengthM(), 8);
  EXPECT_EQ(copy.GetAvailableNumM(), 6);
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
  switch (random() % 24) {
    case 0:
      return text;
    case 1:
      return text + std::string("\0\0", 2);
    case 2:
      return text + std::string("\0b\0", 3);
    default:
      return text + '\0';
  }
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
      switch (random() % 8) {
        case 0:
          table.SetValueM(static_cast<int>(index), count, text.data());
          if (index < stored.size()) {
            stored[index] = text;
          }
          break;
        case 1:
          table.DelItemM(static_cast<int>(index));
          if (index + 1 == stored.size()) {
            stored.pop_back();
          }
          break;
        case 2:
          if (step % 100 == 0) {
            KwStringArr other;
            other = table;
            table = std::move(other);
          }
          break;
        case 3:
        case 4: {
          const int known = findByWalk(stored, text.c_str());
          const int end = static_cast<int>(stored.size());
          ASSERT_EQ(table.AddByCompM(text.c_str()), known < 0 ? end : known);
          if (known < 0) {
            stored.push_back(text.c_str() + std::string(1, '\0'));
          }
          break;
        }
        default:
          // Texts without a zero would soon match everything; keep them rare and late.
          if (stored.size() > 100 || text.find('\0') != std::string::npos) {
            ASSERT_EQ(table.AddStringM(count, text.data()), static_cast<int>(stored.size()));
            stored.push_back(text);
          }
      }
      const std::string query(randomStored(random).c_str());
      ASSERT_EQ(table.FindStrM(query.c_str()), findByWalk(stored, query)) << query << " " << step;
    }
  }
}

}  // namespace
