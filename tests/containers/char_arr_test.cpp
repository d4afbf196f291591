// CharArr as a text buffer.

#include "zel/containers/char_arr.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "containers/char_bytes.h"
#include "support/array_values.h"

namespace zel::test {
namespace {

/// One line as GetOneLineM() gives it; "#" when it gives none.
std::string lineAt(const CharArr& buffer, int start, int keepEnd) {
  std::vector<char> out(static_cast<std::size_t>(buffer.GetBoundM()) + 1, '?');
  int count = -1;
  if (buffer.GetOneLineM(start, out.data(), &count, keepEnd) == 0) {
    return count == 0 ? "#" : "count";
  }
  EXPECT_EQ(out[static_cast<std::size_t>(count)], '\0');
  return {out.data(), static_cast<std::size_t>(count)};
}

/// Gives tests the protected operation.
class OpenBuffer : public CharArr {
 public:
  using CharArr::delCarrageReturnM;
};

TEST(CharArr, purgeDropsZerosAndHighBytesAndReturnsIntoTheObject) {
  CharArr buffer = bufferOf(std::string("a\0b\200c\377d", 7));
  EXPECT_EQ(buffer.GetLengthM(), 7);
  EXPECT_EQ(buffer.PurgeDeletedItemM(), 1);
  EXPECT_EQ(contentOf(buffer), "abcd");
  EXPECT_EQ(countsOf(buffer), (Counts{.bound = 4, .live = 7, .length = 4}));
  buffer = bufferOf(std::string("ab\0cdefg", 8));
  buffer.PurgeDeletedItemM();
  EXPECT_EQ(std::memcmp(buffer.GetContentConstPtrM(), "abcdefg\0", 8), 0);  // source zeroed
  EXPECT_EQ(buffer.GetLengthM(), 8);
}

TEST(CharArr, newTextKeepsItsZeroAndInsertionAtTheEndGoesBeforeIt) {
  CharArr buffer;
  EXPECT_EQ(buffer.SetNewStrM("ab"), 1);
  EXPECT_EQ(buffer.GetBoundM(), 3);
  EXPECT_EQ(buffer.InsertStringM(3, "cd", 2), 1);
  EXPECT_EQ(contentOf(buffer), std::string("abcd\0", 5));
  EXPECT_EQ(buffer.GetAvailableNumM(), 5);
  EXPECT_EQ(buffer.InsertStringM(4, "e", 1), 1);
  EXPECT_EQ(contentOf(buffer), std::string("abcde\0", 6));
}

TEST(CharArr, insertionAndRemovalMatchAStringAndIgnoreWhatLiesOutside) {
  std::mt19937 random(31);
  CharArr buffer;
  std::string text;
  int live = 0;
  for (int step = 0; step < 4000; ++step) {
    const int size = static_cast<int>(text.size());
    const int at = static_cast<int>(random() % (text.size() + 3)) - 1;
    const int count = random() % 50 == 0 ? 2147483647 : static_cast<int>(random() % 7) - 1;
    const bool isInside = at >= 0 && at <= size && count >= 0;
    if (random() % 2 == 0 && count < 6) {
      const std::string piece(6, static_cast<char>(1 + random() % 255));
      ASSERT_EQ(buffer.InsertStringM(at, piece.data(), count), count == 0 ? 0 : 1);
      if (isInside) {
        text.insert(static_cast<std::size_t>(at), piece, 0, static_cast<std::size_t>(count));
        live += count;
      }
    } else {
      ASSERT_EQ(buffer.DelStringM(at, count), 1);
      if (isInside && count <= size - at) {
        const auto first = text.begin() + at;
        live -= static_cast<int>(std::count_if(first, first + count, [](char c) { return c > 0; }));
        text.erase(first, first + count);
      }
    }
    ASSERT_EQ(contentOf(buffer), text) << step;
    ASSERT_EQ(buffer.GetAvailableNumM(), live);
  }
}

TEST(CharArr, bytesFromTheOwnBufferAreSafe) {
  CharArr buffer = bufferOf("0123456789");
  buffer.InsertStringM(5, buffer.GetContentConstPtrM() + 3, 6);
  EXPECT_EQ(contentOf(buffer), "0123434567856789");
  buffer.AddContentvcM(buffer.GetContentConstPtrM(), 16);
  EXPECT_EQ(contentOf(buffer), "01234345678567890123434567856789");
  buffer.SetValueM(4, buffer.GetContentConstPtrM() + 2);
  EXPECT_EQ(contentOf(buffer), "2343");
  buffer.SetNewStrM("text");
  buffer.SetNewStrM(buffer.GetContentConstPtrM() + 1);
  EXPECT_EQ(contentOf(buffer), std::string("ext\0", 4));
  buffer.CopyM(buffer);
  EXPECT_EQ(buffer.GetBoundM(), 4);
  EXPECT_EQ(buffer.ImportArrM(buffer), 4);
  EXPECT_EQ(contentOf(buffer), std::string("ext\0ext\0", 8));
}

TEST(CharArr, linesAreCutAtEitherEnd) {
  const CharArr buffer = bufferOf("A\r\nB\n\nC\rD");
  EXPECT_EQ(lineAt(buffer, 0, 0), "A");
  EXPECT_EQ(lineAt(buffer, 0, 1), "A\r\n");
  EXPECT_EQ(lineAt(buffer, 3, 1), "B\n\n");  // a second 10 is no new line
  EXPECT_EQ(lineAt(buffer, 6, 1), "C\r");
  EXPECT_EQ(lineAt(buffer, 8, 1), "D");
  for (const int start : {-1, 9, 10}) {
    EXPECT_EQ(lineAt(buffer, start, 1), "#");
  }
}

TEST(CharArr, trimmingKeepsTheFirstCharacter) {
  const struct {
    std::string text, withoutLeft, withoutRight;
  } rows[] = {{"  a b  ", "a b  ", "  a b"}, {"   ", "", " "}, {"", "", ""}};
  for (const auto& row : rows) {
    CharArr left = bufferOf(row.text);
    CharArr right = left;
    EXPECT_EQ(left.TrimL() + right.TrimR(), 2);
    EXPECT_EQ(contentOf(left), row.withoutLeft);
    EXPECT_EQ(contentOf(right), row.withoutRight);
    EXPECT_EQ(left.GetAvailableNumM(), left.GetBoundM());
  }
}

TEST(CharArr, appendedValuesAreTheirBytes) {
  CharArr buffer;
  buffer.AddContentM('c');
  buffer.AddContentM("ab");
  buffer.AddContentM(0x01020304);
  buffer.AddContentM(1.0F);
  buffer.AddContentUM(0xFFFFFFFEU);
  buffer.AddContentM(POINT{1, -1});
  const float values[3] = {0.0F, -2.0F, 1.0F};
  EXPECT_EQ(buffer.AddContent3vfM(values), 1);
  const std::string expected(
      "cab\4\3\2\1\0\0\x80\x3F\xFE\xFF\xFF\xFF\1\0\0\0\xFF\xFF\xFF\xFF\0\0\0\0\0\0\0\xC0\0\0\x80"
      "\x3F",
      35);
  EXPECT_EQ(contentOf(buffer), expected);
  EXPECT_EQ(buffer.GetAvailableNumM(), 35);
}

TEST(CharArr, rawAppendGrowsByTheBytesAndTenMore) {
  CharArr buffer;
  buffer.AddContentM("abcd");
  EXPECT_EQ(buffer.GetLengthM(), 4);
  buffer.AddContentM('e');
  EXPECT_EQ(buffer.GetLengthM(), 15);
  buffer.DelContentM();
  EXPECT_EQ(countsOf(buffer), (Counts{.bound = 0, .live = 0, .length = 15}));
  CharArr point;
  point.AddContentM(POINT{1, 2});  // eight bytes at once
  EXPECT_EQ(point.GetLengthM(), 4 + 8 + 10);
}

TEST(CharArr, copyTakesTheWholeStoreOfTheOther) {
  CharArr other(8);
  other.AddItemM('a');
  other.GetContentPtrM()[6] = 'z';  // beyond the bound
  CharArr buffer(20);
  buffer.AddContentM("123456789");
  EXPECT_EQ(buffer.CopyM(other), 1);
  EXPECT_EQ(contentOf(buffer), "a");
  EXPECT_EQ(buffer.GetLengthM(), 20);
  EXPECT_EQ(buffer.GetContentConstPtrM()[6], 'z');
  EXPECT_EQ(buffer.GetContentConstPtrM()[8], '\0');
}

TEST(CharArr, programNumberReplacesTheOldOneOrGetsItsOwnLine) {
  const struct {
    std::string before;
    int number;
    const char* after;
  } rows[] = {{"O7\r\nX", 25, "O25\r\nX"},
              {"X", 25, "O25\r\nX"},
              {"O1234", 5, "O5"},
              {"", -7, "O-7\r\n"},
              {"OX12", 9, "O9X12"},
              {{'X', '\xE9', '\0'}, 1, "O1\r\nX"}};  // purges the high byte and the zero
  for (const auto& [before, number, after] : rows) {
    CharArr buffer = bufferOf(before);
    buffer.AddProgNoM(number);
    EXPECT_EQ(contentOf(buffer), after);
  }
}

TEST(CharArr, lineEndIsRemovedWhereOneStands) {
  OpenBuffer buffer;
  buffer.AddContentM("a\r\nb\nc\r\rd");
  for (const int position : {0, 9, -1, 7, 6, 4, 1}) {
    EXPECT_EQ(buffer.delCarrageReturnM(position), 1);
  }
  EXPECT_EQ(contentOf(buffer), "abcd");
}

TEST(CharArr, newContentLeavesNothingOfTheOldInside) {
  CharArr buffer = bufferOf("abc");
  buffer.SetValueM(6, "x\0\0\0\0\0");
  EXPECT_EQ(buffer.PurgeDeletedItemM(), 1);
  ASSERT_EQ(buffer.GetLengthM(), 4) << "the content is inside the object again";
  EXPECT_EQ(std::string(buffer.GetContentConstPtrM(), 4), std::string("x\0\0\0", 4));
}

TEST(CharArr, impossibleSizesChangeNothing) {
  CharArr buffer = bufferOf("abcdef");
  EXPECT_EQ(buffer.AddContentvcM("x", -1), 1);
  const int length = buffer.GetLengthM();
  buffer.AddContentvcM(nullptr, 50);
  buffer.InsertStringM(3, nullptr, 50);
  buffer.SetValueM(50, nullptr);
  EXPECT_EQ(contentOf(buffer), "abcdef");
  EXPECT_EQ(buffer.GetLengthM(), length);
  buffer.SetValueM(-4, "x");
  EXPECT_EQ(buffer.GetBoundM(), 0);
  buffer.AddItemM('a');
  buffer.SetValueM(0, nullptr);
  EXPECT_EQ(buffer.GetBoundM(), 0);
  EXPECT_EQ(buffer.SetNewStrM(nullptr), 1);
  EXPECT_EQ(contentOf(buffer), std::string(1, '\0'));
}

}  // namespace
}  // namespace zel::test
