#include "tests/cli/program_fixture.h"

namespace zel::test {

namespace {

class ForeignFormats : public ProgramTest {
 protected:
  /// A scene of one triangle in the xy plane below the given nodes, of which the last holds it.
  static std::string scene(const std::string& nodes) {
    return R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[)" + nodes +
           R"(],"meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],
  "buffers":[{"byteLength":36,"uri":"data:application/octet-stream;base64,)"
           R"(AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}],
  "bufferViews":[{"buffer":0,"byteLength":36}],
  "accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3",
    "min":[0,0,0],"max":[1,1,0]}]})";
  }
};

}  // namespace

TEST_F(ForeignFormats, noFileTakesTheProgramDown) {
  std::string doubled;
  for (int k = 1; k <= 30; ++k) {
    const std::string child = std::to_string(k);
    doubled += R"({"children":[)" + child + "," + child + "]},";
  }
  const struct {
    const char* name;
    std::string bytes;
    int exitCode;
    const char* why;
  } cases[] = {
      {"nodes.off", "OFF\n99999999 1 0\n0 0 0\n", 5, "512 MiB of memory; --max-memory"},
      {"faces.off", "OFF\n1 99999999 0\n0 0 0\n", 5, "512 MiB of memory; --max-memory"},
      {"nested.gltf", std::string(200'000, '['), 3, "crashed on it"},
      {"doubled.gltf", scene(doubled + R"({"mesh":0})"), 5, "MiB of memory"},
      {"empty.3mf", "", 3, "cannot read"},
      {"noise.fbx", "Kaydara FBX Binary  \x1a", 3, "cannot read"},
  };
  for (const auto& [name, bytes, code, why] : cases) {
#if defined(__SANITIZE_ADDRESS__)  // there memory has no limit, and crashes are told otherwise
    if (std::string(why) != "cannot read") {
      continue;
    }
#endif
    write(name, bytes);
    write("target.zel", "as it was");
    const ProgramRun done = run({"convert", name, "target.zel"});
    EXPECT_EQ(done.exitCode, code) << name << done.err;
    EXPECT_NE(done.err.find(why), std::string::npos) << done.err;
    EXPECT_EQ(done.err.find(std::string("zel: ") + name + ": "), 0U) << done.err;
    EXPECT_EQ(std::ranges::count(done.err, '\n'), 1) << done.err;
    EXPECT_EQ(content("target.zel"), "as it was");
  }
}

TEST_F(ForeignFormats, theMemoryOfAReadingIsTheUsersChoice) {
  write("small.off", "OFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n");
  expectSuccess({"info", "small.off", "--max-memory", "4000"});
  for (const char* wrong : {"0", "-1", "x"}) {
    EXPECT_EQ(exitCode({"info", "small.off", "--max-memory", wrong}), 2) << wrong;
  }
}

TEST_F(ForeignFormats, mirroredNodesKeepTheirOutside) {
  const std::string mirror = R"({"mesh":0,"scale":[-1,1,1]})";
  for (const std::string& node : {std::string(R"({"mesh":0})"), mirror}) {
    write("scene.gltf", scene(node));
    expectSuccess({"convert", "scene.gltf", "scene.obj"});
    const std::string obj = content("scene.obj");
    EXPECT_NE(obj.find(node == mirror ? "f 3 2 1" : "f 1 2 3"), std::string::npos) << obj;
  }
}

TEST_F(ForeignFormats, polygonsAreCutInsideAndDrawingsKeepTheirPlane) {
  // The corner that points inward would lie outside of a fan.
  write("notch.off", "OFF\n5 1 0\n0 0 0\n2 0 0\n1 0.5 0\n2 2 0\n0 2 0\n5 0 1 2 3 4\n");
  const Json notch = answer({"info", "notch.off"});
  EXPECT_EQ(notch["triangles"], 3);
  EXPECT_DOUBLE_EQ(notch["area"], 3.0);
  write(
      "face.dxf",
      "0\nSECTION\n2\nENTITIES\n0\n3DFACE\n8\n0\n10\n0\n20\n0\n30\n0\n11\n1\n21\n0\n31\n0\n12\n1\n"
      "22\n2\n32\n0\n13\n0\n23\n2\n33\n0\n0\nENDSEC\n0\nEOF\n");
  expectSuccess({"convert", "face.dxf", "face.obj", "-q"});
  EXPECT_NE(content("face.obj").find("v 1 2 0\n"), std::string::npos) << content("face.obj");
}

}  // namespace zel::test
