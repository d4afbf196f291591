// Wavefront OBJ as others write it.

#include "tests/io/io_support.h"
#include "zel/algorithms/measure.h"

namespace zel::test {

namespace {

constexpr const char* kSquare = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n";

}  // namespace

TEST(Obj, takesWhatOthersWrite) {
  const struct {
    std::string text;
    const char* sizes;
    Remark::Kind kind;
    const char* remark;  // part of it; null: there is none
    long long count;
  } cases[] = {
      {"", "0/0/0", {}, nullptr, 0},
      {"# nothing\n", "0/0/0", {}, nullptr, 0},
      {std::string(kSquare) + "f 1 2 3\nf 1 3 4\n", "4/2/0", {}, nullptr, 0},
      {std::string(kSquare) + "f 1 2 3 4 # with a comment\n", "4/0/1", {}, nullptr, 0},
      {std::string("\xEF\xBB\xBF") + kSquare + "f -4 -3 -2 -1\n", "4/0/1", {}, nullptr, 0},
      {"v 0 0 0\rv 1 0 0\rv 0 1 0\rf 1 2 3\r", "3/1/0", {}, nullptr, 0},
      {"v 0 0 0\r\nv 1 0 0\r\nv 0 1 0\r\nf 1 \\\r\n 2 3\r\n", "3/1/0", {}, nullptr, 0},
      {"v 0 0 \\\n 0\nv\t1\t0 0\n  v 0 1 0\nf 1 2 \\\n3\n", "3/1/0", {}, nullptr, 0},
      {"f 1 2 3 4\n" + std::string(kSquare), "4/0/1", Remark::Kind::kChanged, "reordered", 1},
      {std::string(kSquare) + "f 1/7/9 2/8/9 3/1/2\n", "4/1/0", Remark::Kind::kLeftOut,
       "do not exist", 6},
      {std::string(kSquare) + "f 1//-1 2//-1 3\n", "4/1/0", Remark::Kind::kLeftOut, "do not exist",
       2},
      {std::string(kSquare) + "v .5 2 0\nf 1 2 3 5 4\n", "5/3/0", Remark::Kind::kChanged,
       "triangulated 1 polygon", 1},
      {std::string(kSquare) + "l 1 2 3\nl 1 4\n", "4/0/0", Remark::Kind::kLeftOut, "line element",
       2},
      {std::string(kSquare) + "p 1 2\ng a b\no c\ns off\n", "4/0/0", Remark::Kind::kLeftOut,
       "group statement", 3},
      {std::string(kSquare) + "usemtl red\nf 1 2 3\n", "4/1/0", Remark::Kind::kLeftOut,
       "material statement", 1},
      {"v 0 0 0 1 0 0\n", "1/0/0", Remark::Kind::kLeftOut, "node colour", 1},
      {"v 0 0 0 0.5\nv 1 1 1 1\n", "2/0/0", Remark::Kind::kLeftOut, "point weight", 1},
      {std::string(kSquare) + "vt 0 0 1\n", "4/0/0", Remark::Kind::kLeftOut, "third texture", 1},
      {std::string(kSquare) + "cstype bezier\n", "4/0/0", Remark::Kind::kLeftOut, "other statement",
       1},
      {std::string(kSquare) + "f 1 2 3", "4/1/0", Remark::Kind::kNote, "no line end", 1},
      {std::string(kSquare) + "f 1 2", "4/0/0", Remark::Kind::kDamaged, "cut off", 1},
      {std::string(kSquare) + "f 1 2 3 4\nf 1 2 3\n", "4/1/1", Remark::Kind::kChanged,
       "reordered 1 triangle", 1},
      {std::string(kSquare) + "vn 0 0 1\nvn 0 1 0\nf 1//1 2//1 3//1\nf 1//2 3//1 4//1\n", "4/2/0",
       Remark::Kind::kLeftOut, "corner normal", 1},
      {"v 1000000.25 0 0\nv 1000000.5 0 0\nv 1000000.26 0.1 0\nf 1 2 3\n", "3/1/0",
       Remark::Kind::kChanged, "rounded 1 point", 1},
  };
  for (const auto& c : cases) {
    Remarks remarks;
    const Mesh mesh = readBytes(c.text, "obj", &remarks);
    EXPECT_EQ(sizesOf(mesh), c.sizes) << c.text;
    EXPECT_EQ(mesh.validate(), "") << c.text;
    if (c.remark == nullptr) {
      EXPECT_EQ(textOf(remarks), "") << c.text;
    } else {
      EXPECT_TRUE(isSaid(remarks, c.kind, c.remark, c.count)) << c.text << textOf(remarks);
    }
  }
}

TEST(Obj, cutsConcavePolygonsIntoTheirInside) {
  const std::string text =
      "v 0 0 0\nv 4 0 0\nv 4 4 0\nv 2 1 0\nv 0 4 0\nvt 0 0\nvt 1 0\nvt 1 1\nvt .5 .2\nvt 0 1\n"
      "f 1/1 2/2 3/3 4/4 5/5\n";
  for (const bool areFacesFirst : {false, true}) {
    const std::size_t face = text.find("f ");
    const Mesh mesh =
        readBytes(areFacesFirst ? text.substr(face) + text.substr(0, face) : text, "obj");
    EXPECT_EQ(sizesOf(mesh), "5/3/0");
    EXPECT_FLOAT_EQ(static_cast<float>(measure(mesh).area), 10.0F);
    Float2 coord{};
    forEachFace(mesh.triangles, [&](int slot, const auto& corners) {
      for (int k = 0; k < 3; ++k) {
        const float* point = mesh.nodes.GetItemPM(corners[static_cast<std::size_t>(k)])->point();
        ASSERT_TRUE(textureCoordOf(mesh.triangleTexture, 3 * slot + k, coord));
        EXPECT_EQ(coord[0] == 1.0F, point[0] == 4.0F);
      }
    });
  }
}

TEST(Obj, refusesDamageWithTheLine) {
  const struct {
    const char* text;
    long long line;
    const char* reason;
  } cases[] = {
      {"v 0 0\nv 1 0 0\n", 1, "missing"},
      {"v 0 0 x\n\n", 1, "malformed"},
      {"v 0 0 1e39\n\n", 1, "out of range"},
      {"v 0 0 0x10\n\n", 1, "malformed"},
      {"v 0 0 nan(1)\n\n", 1, "malformed"},
      {"v 0 0 0 1 2 3 4 5\n\n", 1, "more numbers"},
      {"v 0 0 0\nf 1 1\n\n", 2, "fewer than three"},
      {"v 0 0 0\nf 1 1 2\n\n", 2, "names point 2 of 1"},
      {"v 0 0 0\nf 1 1 -2\n\n", 2, "names point -2 of 1"},
      {"v 0 0 0\nf 0 1 1\n\n", 2, "names point 0 of 1"},
      {"v 0 0 0\nf 1 1 99999999999999999999\n\n", 2, "no number"},
      {"v 0 0 0\nf 1 1 1/1/1/1\n\n", 2, "malformed"},
      {"v 0 0 0\nf 1 1 1x\n\n", 2, "malformed"},
      {"what is this\nno mesh\n", 0, "no statement of an OBJ file"},
  };
  for (const auto& c : cases) {
    const std::optional<Error> error = refusal(c.text, "obj");
    ASSERT_TRUE(error) << c.text;
    EXPECT_EQ(error->code(), ErrorCode::kUnreadable);
    EXPECT_EQ(error->place().line, c.line) << c.text;
    EXPECT_NE(std::string(error->reason()).find(c.reason), std::string::npos) << error->what();
  }
  EXPECT_NE(reasonOf(std::string("v 0 0 0\n\0", 9), "obj"), "");
}

TEST(Obj, keepsTextureCoordinatesAndNormalsOfBothKindsOfFaces) {
  const Mesh mesh = houseMesh();
  const Mesh read = readBytes(bytesOf(mesh, "obj"));
  EXPECT_EQ(document(read), document(mesh));
}

TEST(Obj, readsColoursAndMaterialsIntoAnAppearance) {
  const TempDir dir;
  writeFile(dir.file("a.obj"),
            "mtllib a.mtl\nv 0 0 0 1 0 0\nv 1 0 0 0 1 0\nv 1 1 0 0 0 0.5\nv 0 1 0\n"
            "f 1 2 3\nusemtl red\nf 1 3 4\nf 1 2 3 4\nusemtl other\nf 2 3 4\n");
  writeFile(dir.file("a.mtl"),
            "# a library\nnewmtl red\nKd 1 0.5 0\nd 0.5\nmap_Kd red picture.png\n");
  Appearance looks;
  Remarks remarks;
  const Mesh mesh = readMesh(dir.file("a.obj"), {.appearance = &looks}, &remarks);
  ASSERT_EQ(looks.materials.size(), 2U);
  EXPECT_EQ(looks.materials[0].name, "red");
  EXPECT_EQ(looks.materials[0].diffuse, (Colour{255, 128, 0, 128}));
  EXPECT_EQ(looks.materials[0].texture, "red picture.png");
  EXPECT_EQ(looks.triangleMaterials, (std::vector<int>{-1, 0, 1}));
  EXPECT_EQ(looks.quadMaterials, (std::vector<int>{0}));
  EXPECT_EQ(looks.colourOf(2), (Colour{0, 0, 128, 255}));
  EXPECT_EQ(looks.colourOf(3), Appearance::kNoColour);
  static_cast<void>(readMesh(dir.file("a.obj"), {.weld = Absolute(0), .appearance = &looks}));
  EXPECT_EQ(looks.triangleMaterials, (std::vector<int>{-1, 0, 1}));
  static_cast<void>(readMesh(dir.file("a.obj"), {.weld = Absolute(1.2), .appearance = &looks}));
  EXPECT_TRUE(looks.triangleMaterials.empty() && looks.nodeColours.size() == 2);
  writeFile(dir.file("b.obj"), "mtllib missing.mtl\nmtllib /dev/zero\nv 0 0 0\n");
  remarks.clear();
  static_cast<void>(readMesh(dir.file("b.obj"), {.appearance = &looks}, &remarks));
  EXPECT_EQ(remarks.size(), 2U) << textOf(remarks);
}

}  // namespace zel::test
