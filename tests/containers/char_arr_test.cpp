// CharArr as a text buffer.

#include "zel/containers/char_arr.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "containers/char_bytes.h"

namespace {

using zel::test::bufferOf;
using zel::test::contentOf;

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
  CharArr buffer =
      bufferOf(std::string("a\0b\x80"
                           "c\xFF"
                           "d",
                           7));
  EXPECT_EQ(buffer.GetLengthM(), 7);
  EXPECT_EQ(buffer.PurgeDeletedItemM(), 1);
  EXPECT_EQ(contentOf(buffer), "abcd");
  EXPECT_EQ(buffer.GetLengthM(), 4);
  EXPECT_EQ(buffer.GetAvailableNumM(), 7);
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
  EXPECT_EQ(buffer.InsertStringM(0, "x", 0), 0);
  for (const int position : {-1, 7}) {
    EXPECT_EQ(buffer.InsertStringM(position, "x", 1), 1);
  }
  EXPECT_EQ(buffer.InsertStringM(0, "x", -1), 1);
  EXPECT_EQ(buffer.GetBoundM(), 6);
}

TEST(CharArr, insertionAndRemovalMatchAString) {
  std::mt19937 random(31);
  CharArr buffer;
  std::string text;
  int live = 0;
  const auto plain = [](const std::string& s) {
    return static_cast<int>(std::count_if(s.begin(), s.end(), [](char c) { return c > 0; }));
  };
  for (int step = 0; step < 2000; ++step) {
    const std::size_t at = random() % (text.size() + 1);
    const std::size_t count = random() % 6;
    if (random() % 2 == 0) {
      const std::string piece(count, static_cast<char>(1 + random() % 255));
      buffer.InsertStringM(static_cast<int>(at), piece.data(), static_cast<int>(count));
      text.insert(at, piece);
      live += static_cast<int>(count);
    } else {
      buffer.DelStringM(static_cast<int>(at), static_cast<int>(count));
      if (at + count <= text.size()) {
        live -= plain(text.substr(at, count));
        text.erase(at, count);
      }
    }
    ASSERT_EQ(contentOf(buffer), text) << step;
    ASSERT_EQ(buffer.GetAvailableNumM(), live);
  }
}

TEST(CharArr, removalBeyondTheContentChangesNothing) {
  CharArr buffer = bufferOf("abc");
  for (const auto& [position, count] :
       {std::pair{2, 2}, {-1, 1}, {4, 0}, {1, 2147483647}, {1, -1}}) {
    EXPECT_EQ(buffer.DelStringM(position, count), 1);
    EXPECT_EQ(contentOf(buffer), "abc");
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
  CharArr buffer = bufferOf("  a b  ");
  EXPECT_EQ(buffer.TrimL(), 1);
  EXPECT_EQ(contentOf(buffer), "a b  ");
  buffer.TrimR();
  EXPECT_EQ(contentOf(buffer), "a b");
  EXPECT_EQ(buffer.GetAvailableNumM(), 3);
  buffer = bufferOf("   ");
  buffer.TrimR();
  EXPECT_EQ(contentOf(buffer), " ");
  buffer.TrimL();
  EXPECT_EQ(buffer.GetBoundM(), 0);
  buffer.TrimR();
  EXPECT_EQ(buffer.GetBoundM(), 0);
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
  EXPECT_EQ(buffer.GetLengthM(), 15);
  EXPECT_EQ(buffer.GetBoundM(), 0);
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
  struct Case {
    const char* before;
    int number;
    const char* after;
  };
  for (const Case& c :
       {Case{"O7\r\nX", 25, "O25\r\nX"}, Case{"X", 25, "O25\r\nX"}, Case{"O1234", 5, "O5"},
        Case{"", -7, "O-7\r\n"}, Case{"OX12", 9, "O9X12"}}) {
    CharArr buffer = bufferOf(c.before);
    buffer.AddProgNoM(c.number);
    EXPECT_EQ(contentOf(buffer), c.after);
  }
  CharArr text;
  text.SetNewStrM("X\xE9");
  text.AddProgNoM(1);  // its purge drops high bytes and the terminating zero
  EXPECT_EQ(contentOf(text), "O1\r\nX");
}

TEST(CharArr, lineEndIsRemovedWhereOneStands) {
  OpenBuffer buffer;
  buffer.AddContentM("a\r\nb\nc\r\rd");
  for (const int position : {0, 9, -1, 7, 6, 4, 1}) {
    EXPECT_EQ(buffer.delCarrageReturnM(position), 1);
  }
  EXPECT_EQ(contentOf(buffer), "abcd");
}

TEST(CharArr, impossibleSizesChangeNothing) {
  CharArr buffer = bufferOf("abcdef");
  EXPECT_EQ(buffer.AddContentvcM("x", -1), 1);
  buffer.AddContentvcM(nullptr, 5);
  buffer.SetValueM(5, nullptr);
  EXPECT_EQ(contentOf(buffer), "abcdef");
  buffer.SetValueM(-4, "x");
  EXPECT_EQ(buffer.GetBoundM(), 0);
  buffer.AddItemM('a');
  buffer.SetValueM(0, nullptr);
  EXPECT_EQ(buffer.GetBoundM(), 0);
  EXPECT_EQ(buffer.SetNewStrM(nullptr), 1);
  EXPECT_EQ(contentOf(buffer), std::string(1, '\0'));
}

}  // namespace
