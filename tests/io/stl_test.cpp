// STL: which of its two forms a file has, what a damaged one gives, welding while reading.

#include "support/bytes.h"
#include "tests/io/io_support.h"
#include "zel/algorithms/weld.h"

namespace zel::test {

namespace {

/// A binary file of two facets with a common edge.
std::string binaryStl(const std::string& header = "binary", std::uint32_t count = 2,
                      std::uint16_t attribute = 0) {
  std::string bytes = header;
  bytes.resize(80, ' ');
  appendNumbers(bytes, count);
  for (const float z : {0.0F, 1.0F}) {
    appendNumbers(bytes, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F, 0.0F, 1.0F, z,
                  attribute);
  }
  return bytes;
}

const char* const kTextStl =
    "solid a name\n facet normal 0 0 1\n  outer loop\n   vertex 0 0 0\n   vertex 1 0 0\n"
    "   vertex 0 1 0\n  endloop\n endfacet\nFACET NORMAL 0 0 0\nouter loop vertex 0 0 0\n"
    "vertex 1 0 0 vertex 0 1 1e0 endloop\nendfacet\nendsolid a name\n";

}  // namespace

TEST(Stl, isTextOrBinaryByItsContentWhateverItBeginsWith) {
  for (const char* header : {"binary", "solid", "solid facet normal 0 0 1", "solid\n"}) {
    const std::string bytes = binaryStl(header);
    Remarks remarks;
    const Mesh mesh = readBytes(bytes, "", &remarks);
    EXPECT_EQ(sizesOf(mesh), "6/2/0") << header;
    EXPECT_EQ(remarks.size(), 1U) << textOf(remarks);  // that the faces share no nodes
    for (std::size_t size = 0; size < bytes.size(); ++size) {
      const std::optional<Error> error = refusal(bytes.substr(0, size), "stl");
      ASSERT_TRUE(error) << header << " cut to " << size;
      EXPECT_EQ(error->code(), ErrorCode::kUnreadable);
    }
  }
  for (const char* mark : {"", "\xEF\xBB\xBF", "\n  "}) {
    const Mesh mesh = readBytes(std::string(mark) + kTextStl);
    EXPECT_EQ(sizesOf(mesh), "6/2/0");
    EXPECT_EQ(mesh.triangles.GetItemPM(0)->record().normalType, 1);
    EXPECT_EQ(mesh.triangles.GetItemPM(1)->record().normalType, 0);
  }
}

TEST(Stl, checksCountsAgainstTheBytesThatAreThere) {
  for (const std::uint32_t count : {3U, 1000U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    const std::optional<Error> error = refusal(binaryStl("x", count), "stl");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->place().byte, 84);
  }
  Remarks remarks;
  EXPECT_EQ(sizesOf(readBytes(binaryStl("x", 1, 7), "stl", &remarks)), "3/1/0");
  EXPECT_TRUE(isSaid(remarks, Remark::Kind::kDamaged, "behind the last facet", 50));
  EXPECT_TRUE(isSaid(remarks, Remark::Kind::kLeftOut, "facet attribute", 1)) << textOf(remarks);
  EXPECT_EQ(sizesOf(readBytes(binaryStl("x", 0).substr(0, 84), "stl")), "0/0/0");
  EXPECT_EQ(reasonOf(binaryStl("x", 0), "stl"), "the header counts no facet, but 100 bytes follow");
}

TEST(Stl, aTextIsReadToItsLastWholeFacet) {
  const std::string whole = kTextStl;
  const std::size_t first = whole.find("endfacet") + 8;
  const std::size_t second = whole.rfind("endfacet") + 8;
  for (std::size_t size = 0; size < whole.size(); ++size) {
    Remarks remarks;
    const std::string bytes = whole.substr(0, size);
    if (size < first) {
      EXPECT_EQ(reasonOf(bytes, "stl"),
                size < 5 ? "the file ends within its header" : "there is no whole facet")
          << size;
      continue;
    }
    EXPECT_EQ(sizesOf(readBytes(bytes, "stl", &remarks)), size < second ? "3/1/0" : "6/2/0");
    const bool isClosed = size >= whole.rfind("endsolid") + 8;
    EXPECT_EQ(isSaid(remarks, Remark::Kind::kDamaged, "", 1), !isClosed) << size << textOf(remarks);
  }
  const struct {
    const char* from;
    const char* to;
  } damages[] = {{"outer", "inner"},
                 {"1 0 0", "1 0"},
                 {"endloop", "vertex 1 2 3\nendloop"},
                 {"vertex 0 0 0", "vertex 0 0 0,"},
                 {"endsolid", "endsolids"}};
  for (const auto& damage : damages) {
    std::string bytes = whole;
    bytes.replace(bytes.find(damage.from), std::string(damage.from).size(), damage.to);
    const std::optional<Error> error = refusal(bytes, "stl");
    ASSERT_TRUE(error) << damage.to;
    EXPECT_GT(error->place().line, 0);
  }
  Remarks remarks;
  EXPECT_EQ(sizesOf(readBytes(whole + whole + "tail", "stl", &remarks)), "12/4/0");
  EXPECT_TRUE(isSaid(remarks, Remark::Kind::kLeftOut, "further solid", 1)) << textOf(remarks);
  EXPECT_TRUE(isSaid(remarks, Remark::Kind::kDamaged, "behind the last solid", 4));
}

TEST(Stl, weldingWhileReadingGivesWhatWeldingAfterwardsGives) {
  std::mt19937 random(3);
  Mesh soup;
  for (int face = 0; face < 3000; ++face) {
    std::array<int, 3> corners{};
    for (int& corner : corners) {
      const auto place = [&] {
        return static_cast<float>(random() % 8) + 1e-3F * static_cast<float>(random() % 4);
      };
      corner = soup.addNode({place(), place(), place()});
    }
    soup.addTriangle(corners);
  }
  for (const bool ascii : {false, true}) {
    const std::string bytes = bytesOf(soup, "stl", ascii);
    for (const Tolerance tolerance :
         {Absolute(0), Absolute(0.0015), Absolute(0.5), Relative(1e-4), Relative(0.02)}) {
      Mesh later = readBytes(bytes, "stl");
      static_cast<void>(weld(later, {.tolerance = tolerance}));
      const ReadOptions options = {.format = "stl", .weld = tolerance};
      std::istringstream stream(bytes);
      const Mesh fromMemory = readMesh(std::as_bytes(std::span(bytes)), options);
      EXPECT_EQ(document(fromMemory), document(later)) << tolerance.value;
      EXPECT_EQ(document(readMesh(stream, options)), document(later)) << tolerance.value;
      EXPECT_LT(later.nodes.GetBoundM(), soup.nodes.GetBoundM());
    }
  }
  EXPECT_THROW(static_cast<void>(readMesh(std::as_bytes(std::span(std::string_view(kTextStl))),
                                          {.format = "stl", .weld = Absolute(-1)})),
               Error);
}

TEST(Stl, writesFacesAsTrianglesAndSaysWhatIsLost) {
  for (const bool ascii : {false, true}) {
    Remarks remarks;
    const Mesh mesh = houseMesh();
    const std::string bytes = meshBytes(mesh, {.format = "stl", .ascii = ascii}, &remarks);
    const Mesh read = readBytes(bytes);
    EXPECT_EQ(sizesOf(read), "12/4/0");
    EXPECT_EQ(bytesOf(read, "stl", ascii), bytes);
    EXPECT_TRUE(isSaid(remarks, Remark::Kind::kChanged, "split 1 quad", 1)) << textOf(remarks);
    EXPECT_TRUE(isSaid(remarks, Remark::Kind::kLeftOut, "texture coordinate", 10));
    EXPECT_TRUE(isSaid(remarks, Remark::Kind::kLeftOut, "node normal", 6));
    Mesh cloud;
    EXPECT_EQ(sizesOf(readBytes(bytesOf(cloud, "stl", ascii), "stl")), "0/0/0");
    cloud.addNode({1, 2, 3});
    EXPECT_THROW(static_cast<void>(bytesOf(cloud, "stl", ascii)), Error);
  }
}

}  // namespace zel::test
