// PLY in all its forms.

#include <bit>

#include "support/bytes.h"
#include "tests/io/io_support.h"

namespace zel::test {

namespace {

std::string header(const std::string& form, const std::string& lines,
                   const std::string& lineEnd = "\n") {
  std::string text = "ply\nformat " + form + " 1.0\n" + lines + "end_header\n";
  for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += lineEnd.size()) {
    text.replace(at, 1, lineEnd);
  }
  return text;
}

const std::string kPoints =
    "element vertex 4\nproperty float x\nproperty float y\nproperty float z\n";
const std::string kFaces = "element face 1\nproperty list uchar int vertex_indices\n";
const std::string kSquare = "0 0 0\n1 0 0\n1 1 0\n0 1 0\n";

/// Appends numbers, each in its own width, highest byte first.
template <class... Number>
void appendSwapped(std::string& bytes, Number... numbers) {
  const auto one = [&](auto number) {
    std::string raw;
    appendNumbers(raw, number);
    bytes.append(raw.rbegin(), raw.rend());
  };
  (one(numbers), ...);
}

}  // namespace

TEST(Ply, everyFormKeepsNodesFacesNormalsAndTexture) {
  for (const bool hasNormals : {false, true}) {
    for (const bool hasTexture : {false, true}) {
      for (const bool ascii : {false, true}) {
        const Mesh mesh = houseMesh(hasNormals, hasTexture);
        Remarks remarks;
        const std::string bytes = bytesOf(mesh, "ply", ascii);
        EXPECT_EQ(document(readBytes(bytes, "", &remarks)), document(mesh));
        EXPECT_EQ(textOf(remarks), "");
      }
    }
  }
}

TEST(Ply, takesWhatOthersWrite) {
  const struct {
    std::string text;
    const char* sizes;
    Remark::Kind kind;
    const char* remark;  // part of it; null: there is none
    long long count;
  } cases[] = {
      {header("ascii", ""), "0/0/0", {}, nullptr, 0},
      {header("ascii", "element vertex 0\nproperty float x\n"), "0/0/0", {}, nullptr, 0},
      {header("ascii", kPoints) + kSquare, "4/0/0", {}, nullptr, 0},
      {header("ascii", "comment a\nobj_info b c\n" + kPoints + kFaces) + kSquare + "4 0 1 2 3\n",
       "4/0/1",
       {},
       nullptr,
       0},
      {header("ascii", kPoints + kFaces, "\r\n") + kSquare + "\n3 0 1 2\r\n",
       "4/1/0",
       {},
       nullptr,
       0},
      {header("ascii", kPoints + kFaces, "\r") + kSquare + "3 0 1 2\r", "4/1/0", {}, nullptr, 0},
      {header("ascii", kFaces + kPoints) + "4 0 1 2 3\n" + kSquare, "4/0/1", {}, nullptr, 0},
      {header("ascii", kPoints + kFaces) + kSquare + "3 0 1 2", "4/1/0", Remark::Kind::kNote,
       "no line end", 1},
      {header("ascii", kPoints + kFaces) + kSquare + "3 0 1 2\nmore\n", "4/1/0",
       Remark::Kind::kDamaged, "behind the last element", 5},
      {header("ascii", kPoints + kFaces) + kSquare + "2 0 1\n", "4/0/0", Remark::Kind::kLeftOut,
       "fewer than three", 1},
      {header("ascii",
              kPoints + "element edge 2\nproperty int vertex1\nproperty int vertex2\n" + kFaces) +
           kSquare + "0 1\n1 2\n3 0 1 2\n",
       "4/1/0", Remark::Kind::kLeftOut, "element 'edge'", 2},
      {header("ascii", kPoints + "property float quality\nproperty list uchar int odd\n" + kFaces) +
           "0 0 0 9 0\n1 0 0 9 2 5 6\n1 1 0 9 0\n0 1 0 9 1 1\n3 0 1 2\n",
       "4/1/0", Remark::Kind::kLeftOut, "vertex attribute", 2},
      {header("ascii", kPoints + "element tristrips 1\nproperty list int int vertex_indices\n") +
           kSquare + "9 0 1 2 3 -1 3 2 2 0\n",
       "4/2/0", Remark::Kind::kChanged, "made 2 triangles", 2},
      {header("ascii",
              kPoints + "property uchar red\nproperty uchar green\nproperty uchar blue\n") +
           "0 0 0 1 2 3\n1 0 0 1 2 3\n1 1 0 1 2 3\n0 1 0 1 2 3\n",
       "4/0/0", Remark::Kind::kLeftOut, "node colour", 4},
      {header("ascii",
              "element vertex 3\nproperty double x\nproperty double y\nproperty double z\n") +
           "1000000.25 0 0\n1000000.5 0 0\n1000000.26 0.1 0\n",
       "3/0/0", Remark::Kind::kChanged, "rounded 1 point", 1},
  };
  for (const auto& c : cases) {
    Remarks remarks;
    const Mesh mesh = readBytes(c.text, "", &remarks);
    EXPECT_EQ(sizesOf(mesh), c.sizes) << c.text;
    EXPECT_EQ(mesh.validate(), "") << c.text;
    if (c.remark == nullptr) {
      EXPECT_EQ(textOf(remarks), "") << c.text;
    } else {
      EXPECT_TRUE(isSaid(remarks, c.kind, c.remark, c.count)) << c.text << textOf(remarks);
    }
  }
}

TEST(Ply, readsEveryTypeInBothByteOrders) {
  const std::string lines =
      "element vertex 3\nproperty double x\nproperty short y\nproperty int8 z\nproperty float32 u\n"
      "property ushort v\nproperty list uint16 uchar odd\nelement face 1\n"
      "property list ushort float texcoord\nproperty list int uint vertex_index\n";
  std::string little = header("binary_little_endian", lines);
  std::string big = header("binary_big_endian", lines);
  const auto both = [&](auto... numbers) {
    appendNumbers(little, numbers...);
    appendSwapped(big, numbers...);
  };
  for (int k = 0; k < 3; ++k) {
    both(0.1 * k, static_cast<std::int16_t>(-300 * k), static_cast<std::int8_t>(-k), 0.5F,
         static_cast<std::uint16_t>(60000 + k), std::uint16_t{2}, std::uint8_t{1}, std::uint8_t{2});
  }
  both(std::uint16_t{0}, std::int32_t{3}, 2U, 0U, 1U);
  const Mesh mesh = readBytes(little);
  EXPECT_EQ(document(readBytes(big)), document(mesh));
  const float* point = mesh.nodes.GetItemPM(2)->point();
  EXPECT_EQ(point[0], 0.2F);
  EXPECT_EQ(point[1], -600.0F);
  EXPECT_EQ(point[2], -2.0F);
  EXPECT_EQ(cornersOf(*mesh.triangles.GetItemPM(0)), (std::array<int, 3>{2, 0, 1}));
  Float2 coord{};
  ASSERT_TRUE(textureCoordOf(mesh.triangleTexture, 0, coord));
  EXPECT_EQ(coord, (Float2{0.5F, 60002.0F}));
}

TEST(Ply, dataMayBeginWithTheByteOfALineEnd) {
  const std::string lines =
      "element vertex 1\nproperty uchar x\nproperty uchar y\nproperty uchar z\n";
  for (const char* lineEnd : {"\n", "\r\n", "\r"}) {
    for (const char* data : {"\n\r\n", "\r\n\n", "\n\n\n", "\r\r\r"}) {
      const Mesh mesh = readBytes(header("binary_little_endian", lines, lineEnd) + data);
      const float* point = mesh.nodes.GetItemPM(0)->point();
      for (int axis = 0; axis < 3; ++axis) {
        EXPECT_EQ(point[axis], static_cast<float>(data[axis]));
      }
    }
  }
}

TEST(Ply, stripsAlternateTheirWinding) {
  const Mesh mesh = readBytes(
      header("ascii", kPoints + "element tristrips 1\nproperty list int int vertex_indices\n") +
      "0 0 0\n1 0 0\n0 1 0\n1 1 0\n4 0 1 2 3\n");
  EXPECT_EQ(cornersOf(*mesh.triangles.GetItemPM(0)), (std::array<int, 3>{0, 1, 2}));
  EXPECT_EQ(cornersOf(*mesh.triangles.GetItemPM(1)), (std::array<int, 3>{2, 1, 3}));
}

TEST(Ply, refusesDamageAndHostileCounts) {
  const auto list = [](const std::string& type) {
    return "element face 1\nproperty list " + type + " int vertex_indices\n";
  };
  const std::string points = header("ascii", kPoints + kFaces) + kSquare;
  std::string listOfMany = header("binary_little_endian", kPoints + list("uint"));
  listOfMany.append(48, '\0');
  const struct {
    std::string bytes;
    const char* reason;
  } cases[] = {
      {"plx\n", "first line"},
      {"ply\nformat ascii 1.0\n", "within its header"},
      {"ply\nend_header\n", "no format"},
      {"ply\nformat ascii 2.0\nend_header\n", "version"},
      {"ply\nformat utf 1.0\nend_header\n", "unknown"},
      {header("ascii", "property float x\n"), "an element"},
      {header("ascii", "element vertex\n"), "a count"},
      {header("ascii", "element vertex -1\n"), "a count"},
      {header("ascii", "element vertex 99999999999999999999\n"), "a count"},
      {header("ascii", "element vertex 1\nproperty real x\n"), "type 'real'"},
      {header("ascii", "element vertex 1\nproperty list float int x\n"), "whole number"},
      {header("ascii", "something else\n"), "keyword"},
      {header("ascii", kPoints) + "0 0 0\n", "cannot hold"},
      {header("ascii", "element vertex 18446744073709551615\nproperty float x\n"), "cannot hold"},
      {header("binary_big_endian", "element vertex 4294967295\nproperty float x\n") + "0000",
       "cannot hold"},
      {header("ascii", "element vertex 1\nproperty float x\nproperty float y\n") + "0 0\n", "lack"},
      {points + "3 0 1\n", "missing"},
      {points + "3 0 1 2 3\n", "more than its element"},
      {points + "3 0 1 4\n", "names vertex 4 of 4"},
      {points + "3 0 1 -1\n", "names vertex -1"},
      {points + "3 0 1 1.5\n", "whole number"},
      {points + "-3 0 1 2\n", "does not fit"},
      {points + "300000000 0 1 2\n", "does not fit"},
      {header("ascii", kPoints + kFaces) + "0 0 0\n1 0 0\n1 1\n0 1 0\n3 0 1 2\n", "missing"},
      {listOfMany + std::string("\xFF\xFF\xFF\xFF", 4), "does not fit"},
      {listOfMany + std::string("\x02\x00\x00\x00", 4) + "12345", "does not fit"},
  };
  for (const auto& c : cases) {
    const std::optional<Error> error = refusal(c.bytes, "ply");
    ASSERT_TRUE(error) << c.bytes;
    EXPECT_EQ(error->code(), ErrorCode::kUnreadable);
    EXPECT_NE(std::string(error->reason()).find(c.reason), std::string::npos)
        << c.bytes << error->what();
  }
  const std::optional<Error> error = refusal(points + "3 0 1 9\n", "ply");
  EXPECT_EQ(error->place().line, 14);
}

TEST(Ply, keepsColours) {
  Mesh mesh = houseMesh(true, false);
  Appearance looks;
  looks.setColour(2, {1, 2, 3, 4});
  for (const bool ascii : {false, true}) {
    Appearance read;
    const std::string bytes =
        meshBytes(mesh, {.format = "ply", .ascii = ascii, .appearance = &looks});
    static_cast<void>(readMesh(std::as_bytes(std::span(bytes)), {.appearance = &read}));
    EXPECT_EQ(read.nodeColours.size(), 6U);
    EXPECT_EQ(read.colourOf(2), (Colour{1, 2, 3, 4}));
    EXPECT_EQ(read.colourOf(5), Appearance::kNoColour);
  }
}

}  // namespace zel::test
