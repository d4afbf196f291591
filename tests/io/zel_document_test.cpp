// The `.zel` document: the bytes of the classic calls, read strictly.

#include <cmath>
#include <vector>

#include "support/comma_locale.h"
#include "tests/io/io_support.h"

namespace zel::test {

namespace {

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find('\n', at) + 1;
    lines.push_back(text.substr(at, end - at));
    at = end;
  }
  return lines;
}

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) {
    text += line;
  }
  return text;
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  return at == std::string::npos ? "nothing to replace" : text.replace(at, from.size(), to);
}

}  // namespace

TEST(ZelDocument, hasTheBytesOfTheClassicCallsAndReadsAsTheyDo) {
  std::mt19937 random(11);
  const CommaLocale comma;
  for (int nodes : {0, 1, 3, 5, 40, 200}) {
    const Mesh mesh = randomMesh(random, nodes);
    const std::string bytes = document(mesh);
    EXPECT_EQ(bytes, classicDocument(mesh)) << nodes;
    const Mesh read = readBytes(bytes);
    const Mesh classic = classicMesh(bytes);
    EXPECT_EQ(document(read), bytes);
    EXPECT_EQ(document(classic), bytes);
    EXPECT_EQ(read.nodes.GetAvailableNumM(), classic.nodes.GetAvailableNumM());
    EXPECT_EQ(read.triangles.GetAvailableNumM(), classic.triangles.GetAvailableNumM());
    EXPECT_EQ(read.quads.GetAvailableNumM(), classic.quads.GetAvailableNumM());
    EXPECT_EQ(read.triangleTexture.GetAvailableNumM(), classic.triangleTexture.GetAvailableNumM());
    EXPECT_EQ(read.validate(), "");
  }
}

TEST(ZelDocument, everyDocumentThatIsTakenReadsAsTheClassicCallsDo) {
  const std::string whole = document(houseMesh());
  std::mt19937 random(5);
  constexpr std::string_view kBytes = "0123456789 .,+-eE\n\r\tinfxNO_\0";
  int taken = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string bytes = whole;
    for (auto k = random() % 3; k < 3; ++k) {
      const std::size_t at = random() % bytes.size();
      const char byte = kBytes[random() % kBytes.size()];
      if (random() % 3 == 0) {
        bytes.insert(at, 1, byte);
      } else if (random() % 2 == 0) {
        bytes.erase(at, 1 + random() % 4);
      } else {
        bytes[at] = byte;
      }
    }
    try {
      Remarks remarks;
      const Mesh mesh = readBytes(bytes, "zel", &remarks);
      if (remarks.empty()) {
        ASSERT_EQ(document(mesh), document(classicMesh(bytes)));
        ++taken;
      }
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kUnreadable);
    }
  }
  EXPECT_GT(taken, 500);
}

TEST(ZelDocument, refusesEachMissingOrDoubledLine) {
  const std::vector<std::string> lines = linesOf(document(houseMesh()));
  ASSERT_GT(lines.size(), 60U);
  for (std::size_t k = 0; k < lines.size(); ++k) {
    std::vector<std::string> fewer = lines;
    fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(k));
    const std::optional<Error> missing = refusal(joined(fewer), "zel");
    ASSERT_TRUE(missing) << "without line " << k + 1 << ": " << lines[k];
    EXPECT_EQ(missing->code(), ErrorCode::kUnreadable);
    EXPECT_LE(missing->place().line, static_cast<long long>(lines.size()));
    std::vector<std::string> more = lines;
    more.insert(more.begin() + static_cast<std::ptrdiff_t>(k), lines[k]);
    if (k + 1 < lines.size()) {  // what stands behind the last line is only told
      EXPECT_TRUE(refusal(joined(more), "zel")) << "with line " << k + 1 << " twice";
    }
  }
}

TEST(ZelDocument, refusesWhatItMustAndSaysWhere) {
  const std::string whole = document(houseMesh());
  const struct {
    const char* from;
    const char* to;
    const char* reason;
  } cases[] = {
      {"zel4.008", "zel4.009", "version"},
      {"zel4.008", "zel4.008 ", "version"},
      {"6, NODE_LIST_BEGIN", "7, NODE_LIST_BEGIN", "index of a node"},
      {"6, NODE_LIST_BEGIN", "5, NODE_LIST_BEGIN", "end of the node list"},
      {"6, NODE_LIST_BEGIN", "-1, NODE_LIST_BEGIN", "cannot hold"},
      {"6, NODE_LIST_BEGIN", "2147483647, NODE_LIST_BEGIN", "cannot hold"},
      {"6, NODE_LIST_BEGIN", "6, NODE_LIST", "begin of a list"},
      {"3, INDEX_OF_NODE", "2, INDEX_OF_NODE", "twice"},
      {"3, INDEX_OF_NODE_LIST", "3, INDEX_OF_NODE_LIST 4", "index of a node"},
      {"\n   31\n", "\n   33\n", "none of 30, 31 and 32"},
      {"\n   31\n", "\n   31 1\n", "delete tag"},
      {",   8.00000012e-01", "", "normal of a node"},
      {",   8.00000012e-01", ",   8.00000012e-01, 1", "normal of a node"},
      {"8.00000012e-01", "8.00000012e", "normal of a node"},
      {"         3,           2,           4", "         3,           2,           6",
       "names node 6"},
      {"         3,           2,           4", "         3,           2,          -1",
       "names node -1"},
      {"QUAD_LIST_END", "TRIANGLE_LIST_END", "end of a list"},
      {"         6, TEXTURE", "         7, TEXTURE", "more texture coordinates than corners"},
  };
  for (const auto& c : cases) {
    const std::string reason = reasonOf(replaced(whole, c.from, c.to), "zel");
    EXPECT_NE(reason.find(c.reason), std::string::npos) << c.to << " gave: " << reason;
  }
  const std::optional<Error> error = refusal(replaced(whole, "   31\n", "   35\n"), "zel");
  ASSERT_TRUE(error);
  EXPECT_EQ(error->place().line, 4);
}

TEST(ZelDocument, takesOtherLineEndsOrdersAndTrailingSpace) {
  const std::string whole = document(houseMesh());
  std::string returns;
  for (const char c : whole) {
    returns += c == '\n' ? "\r\n" : std::string(1, c);
  }
  std::string swapped = replaced(whole, "\n0, INDEX_OF_NODE", "\n9, INDEX_OF_NODE");
  swapped = replaced(swapped, "\n1, INDEX_OF_NODE", "\n0, INDEX_OF_NODE");
  swapped = replaced(swapped, "\n9, INDEX_OF_NODE", "\n1, INDEX_OF_NODE");
  EXPECT_EQ(document(readBytes(returns)), whole);
  EXPECT_EQ(document(readBytes(whole + " \n\r\n\t\n")), whole);
  EXPECT_EQ(document(readBytes(whole.substr(0, whole.size() - 1))), whole);
  EXPECT_EQ(document(readBytes(swapped)), document(classicMesh(swapped)));
  std::string loneReturns = whole;
  std::ranges::replace(loneReturns, '\n', '\r');
  EXPECT_TRUE(refusal(loneReturns, "zel"));
  Remarks remarks;
  EXPECT_EQ(document(readBytes(whole + "\nmore", "zel", &remarks)), whole);
  EXPECT_TRUE(isSaid(remarks, Remark::Kind::kDamaged, "behind the end", 4)) << textOf(remarks);
}

TEST(ZelDocument, roundsAndBoundsNumbersAsTheClassicCallsDo) {
  const std::string whole = document(houseMesh(true, false));
  for (const char* number : {"1e-46", "1e-45", "7.006492321624085e-46", "3.4028235677973366e38",
                             "3.4028235677973365e38", "-1e400", "1e-400", "inf", "-nan", "NaN",
                             "16777217", "1.00000005960464477540", "+.5", "00012.5000"}) {
    const std::string bytes = replaced(whole, "5.00000000e-01", number);
    EXPECT_EQ(document(readBytes(bytes)), document(classicMesh(bytes))) << number;
  }
}

TEST(ZelDocument, keepsTagsOfItsOwnOnly) {
  Mesh mesh = houseMesh();
  mesh.triangles.GetItemPM(1)->SetDeleteTagM(37);
  EXPECT_THROW(static_cast<void>(document(mesh)), Error);
}

}  // namespace zel::test
