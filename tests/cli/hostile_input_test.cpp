#include <algorithm>
#include <random>
#include <regex>

#include "tests/cli/program_fixture.h"
#include "tests/cli/sample_meshes.h"

namespace zel::test {

namespace {

std::string replaced(std::string text, const std::string& what, const std::string& with) {
  const std::size_t place = text.find(what);
  EXPECT_NE(place, std::string::npos) << what;
  return place == std::string::npos ? text : text.replace(place, what.size(), with);
}

class HostileInput : public ProgramTest {
 protected:
  HostileInput() {
    write("whole.obj", sheetObj(2, 2, false) + "f 1 2 5 4\n");
    expectSuccess({"convert", "whole.obj", "whole.zel"});
    document_ = content("whole.zel");
  }

  /// Writes `bytes` to a file of that name and asks the program about it.
  ProgramRun ask(const std::string& name, const std::string& bytes) const {
    write(name, bytes);
    return run({"info", name});
  }

  void expectRefused(const std::string& name, const std::string& bytes,
                     const std::string& why) const {
    const ProgramRun done = ask(name, bytes);
    EXPECT_EQ(done.exitCode, 3) << why << "\n" << done.out << done.err << " signal " << done.signal;
    EXPECT_NE(done.err.find(why), std::string::npos) << done.err;
    EXPECT_EQ(std::ranges::count(done.err, '\n'), 1) << done.err;
  }

  std::string document_;
};

}  // namespace

TEST_F(HostileInput, truncatedDocumentsAreRefused) {
  // The document is whole once the last letter of its last tag is there.
  const std::size_t whole = document_.find("QUAD_LIST_END") + std::string("QUAD_LIST_END").size();
  std::vector<std::size_t> lengths = {0, 1, 8, 9, whole - 1, whole - 13, whole - 14};
  for (std::size_t length = 10; length < whole; length += 37) {
    lengths.push_back(length);
  }
  for (const std::size_t length : lengths) {
    EXPECT_EQ(ask("cut.zel", document_.substr(0, length)).exitCode, 3) << length;
  }
  EXPECT_EQ(ask("cut.zel", document_.substr(0, whole)).exitCode, 0);
}

TEST_F(HostileInput, brokenDocumentsNameTheList) {
  const std::string nodes = "9, NODE_LIST_BEGIN";
  const std::string triangles = "         8,  TRIANGLE_LIST_BEGIN";
  for (const char* count : {"-1", "10", "7", "2147483647", "99999999999", "x"}) {
    expectRefused("nodes.zel", replaced(document_, nodes, std::string(count) + ", NODE_LIST_BEGIN"),
                  "list of nodes");
    expectRefused("faces.zel",
                  replaced(document_, triangles, std::string(count) + ", TRIANGLE_LIST_BEGIN"),
                  "list of triangles");
  }
  const char* const cases[][3] = {{"3, INDEX_OF_NODE", "-3, INDEX_OF_NODE", "list of nodes"},
                                  {"3, INDEX_OF_NODE", "2, INDEX_OF_NODE", "list of nodes"},
                                  {"3,  INDEX_OF_TRI", "2,  INDEX_OF_TRI", "list of triangles"},
                                  {"zel4.008", "zel9.9", "version tag"}};
  for (const auto& [text, broken, why] : cases) {
    expectRefused("broken.zel", replaced(document_, text, broken), why);
  }
  expectRefused("rest.zel", document_ + "1 rubbish\n", "texture coordinates");
  const ProgramRun done = ask("rest.zel", document_ + "rubbish\n");
  EXPECT_EQ(done.exitCode, 0);
  EXPECT_EQ(done.err, "rest.zel: left out 8 bytes: they stand behind the end of the document\n");
}

TEST_F(HostileInput, facesOnMissingNodesAreRefused) {
  const std::string corners = "         0,           1,           4";
  for (const char* corner : {"        -1", "         9", "2147483647", "-2147483647"}) {
    expectRefused("corner.zel", replaced(document_, corners, corner + corners.substr(10)),
                  "triangle 0 names node");
  }
}

TEST_F(HostileInput, garbledDocumentsNeverCrash) {
  constexpr unsigned kSeed = 7;
  SCOPED_TRACE("seed " + std::to_string(kSeed));
  std::mt19937 random(kSeed);
  for (int round = 0; round < 60; ++round) {
    std::string garbled = document_;
    for (int change = 0; change < 4; ++change) {
      garbled[random() % garbled.size()] = "0123456789-,\n x"[random() % 15];
    }
    const ProgramRun done = ask("garbled.zel", garbled);
    EXPECT_TRUE(done.exitCode == 0 || done.exitCode == 3) << done.exitCode << " " << done.signal;
  }
}

TEST_F(HostileInput, brokenObjFilesNameTheLine) {
  const std::string vertices = "v 0 0 0\nv 1 0 0\nv 0 1 0\n";
  const std::vector<std::pair<std::string, std::string>> broken = {
      {"v 0 0\n", "obj:1: cannot read: a number is missing"},
      {"v 0 0 1e99\n", "obj:1: cannot read: a number is malformed or out of range"},
      {vertices + "f 1 2\n", "obj:4: cannot read: a face has fewer"},
      {vertices + "f 1 2 4\n", "obj:4: cannot read: a corner names point 4 of 3"},
      {vertices + "f /1 2 3\n", "obj:4: cannot read: a corner is no number"},
      {std::string("v 0 0 0\n\0\0\0", 11), "this is no text"}};
  for (const auto& [text, why] : broken) {
    expectRefused("broken.obj", text, why);
  }
}

TEST_F(HostileInput, brokenForeignFilesAreRefused) {
  for (const char* extension : {"ply", "stl", "off", "gltf", "glb", "dae", "3ds"}) {
    const std::string name = std::string("broken.") + extension;
    for (const std::string& bytes : {std::string(), std::string("rubbish"),
                                     std::string(200, '\xFF'), std::string(200, '\0')}) {
      const ProgramRun done = ask(name, bytes);
      EXPECT_TRUE(done.exitCode == 3 || done.exitCode == 5) << name << done.exitCode << done.err;
      EXPECT_EQ(std::ranges::count(done.err, '\n'), 1) << done.err;
    }
  }
}

TEST_F(HostileInput, hugeCountsInForeignFilesAreRefusedBeforeMemoryIsTaken) {
  const std::string ply =
      "ply\nformat ascii 1.0\nelement vertex 4000000000\nproperty float x\nproperty float y\n"
      "property float z\nend_header\n0 0 0\n";
  expectRefused("huge.ply", ply, "cannot hold its 4000000000 elements 'vertex'");
  std::string stl(84, '\0');
  stl.replace(80, 4, "\xFF\xFF\xFF\xFF");
  expectRefused("huge.stl", stl, "cannot read");
}

TEST_F(HostileInput, windowsLineEndsReadTheSame) {
  write("windows.zel", std::regex_replace(document_, std::regex("\n"), "\r\n"));
  EXPECT_EQ(run({"diff", "whole.zel", "windows.zel"}).out, "same\n");
  write("windows.obj", "v 0 0 0\r\nv 1 0 0\r\nv 0 1 0\r\nf 1 2 \\\r\n 3\r\n");
  write("unix.obj", "v 0 0 0\nv 1 0 0\nv 0 +1 0\nf -3 -2 -1");
  EXPECT_EQ(run({"diff", "unix.obj", "windows.obj"}).out, "same\n");
}

}  // namespace zel::test
