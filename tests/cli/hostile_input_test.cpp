#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/cli/run_program.h"
#include "tests/cli/sample_meshes.h"
#include "tests/support/temp_dir.h"

namespace zel::test {

namespace {

std::string replaced(std::string text, const std::string& what, const std::string& with) {
  const std::size_t place = text.find(what);
  EXPECT_NE(place, std::string::npos) << what;
  return place == std::string::npos ? text : text.replace(place, what.size(), with);
}

class HostileInput : public testing::Test {
 protected:
  HostileInput() {
    writeFile(dir_.file("whole.obj"), sheetObj(2, 2, false) + "f 1 2 5 4\n");
    EXPECT_EQ(runProgram({"convert", dir_.file("whole.obj"), dir_.file("whole.zel")}).exitCode, 0);
    document_ = readFile(dir_.file("whole.zel"));
  }

  /// Writes `bytes` to a file of that name and asks the program about it.
  ProgramRun ask(const std::string& name, const std::string& bytes) const {
    writeFile(dir_.file(name), bytes);
    return runProgram({"info", dir_.file(name)});
  }

  void expectRefused(const std::string& name, const std::string& bytes,
                     const std::string& why) const {
    const ProgramRun run = ask(name, bytes);
    EXPECT_EQ(run.exitCode, 3) << why << "\n" << run.out << run.err << " signal " << run.signal;
    EXPECT_NE(run.err.find(why), std::string::npos) << run.err;
    EXPECT_EQ(std::ranges::count(run.err, '\n'), 1) << run.err;
  }

  TempDir dir_;
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
  expectRefused("index.zel", replaced(document_, "3, INDEX_OF_NODE", "-3, INDEX_OF_NODE"),
                "list of nodes");
  expectRefused("twice.zel", replaced(document_, "3, INDEX_OF_NODE", "2, INDEX_OF_NODE"),
                "list of nodes");
  expectRefused("twice.zel", replaced(document_, "3,  INDEX_OF_TRI", "2,  INDEX_OF_TRI"),
                "list of triangles");
  expectRefused("tag.zel", replaced(document_, "zel4.008", "zel9.9"), "version tag");
  expectRefused("rest.zel", document_ + "rubbish\n", "texture coordinates");
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
    const ProgramRun run = ask("garbled.zel", garbled);
    EXPECT_TRUE(run.exitCode == 0 || run.exitCode == 3) << run.exitCode << " " << run.signal;
  }
}

TEST_F(HostileInput, brokenObjFilesNameTheLine) {
  const std::string vertices = "v 0 0 0\nv 1 0 0\nv 0 1 0\n";
  const std::vector<std::pair<std::string, std::string>> broken = {
      {"v 0 0\n", "line 1: a number is missing"},
      {"v 0 0 1e99\n", "line 1: a number is missing or out of range"},
      {"v 0 0 zero\n", "line 1: a number"},
      {vertices + "f 1 2\n", "line 4: a face has fewer"},
      {vertices + "f 1 2 4\n", "line 4: a corner names number 4 of 3"},
      {vertices + "f 1 2 0\n", "line 4: a corner names number 0 of 3"},
      {vertices + "f 1 2 -4\n", "line 4: a corner names number -4 of 3"},
      {vertices + "f 1 2 99999999999999999999\n", "line 4: a corner is no number"},
      {vertices + "f 1/1 2/1 3/1\n", "line 4: a corner names number 1 of 0"},
      {vertices + "f 1//2 2 3\n", "line 4: a corner names number 2 of 0"},
      {vertices + "f /1 2 3\n", "line 4: a corner is no number"},
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
      const ProgramRun run = ask(name, bytes);
      EXPECT_TRUE(run.exitCode == 3 || run.exitCode == 5) << name << run.exitCode << run.err;
      EXPECT_EQ(std::ranges::count(run.err, '\n'), 1) << run.err;
    }
  }
}

TEST_F(HostileInput, hugeCountsInForeignFilesAreRefusedBeforeMemoryIsTaken) {
  const std::string ply =
      "ply\nformat ascii 1.0\nelement vertex 4000000000\nproperty float x\nproperty float y\n"
      "property float z\nend_header\n0 0 0\n";
  expectRefused("huge.ply", ply, "the header counts 4000000000 of vertex");
  std::string stl(84, '\0');
  stl.replace(80, 4, "\xFF\xFF\xFF\xFF");
  expectRefused("huge.stl", stl, "cannot read");
}

TEST_F(HostileInput, windowsLineEndsReadTheSame) {
  std::string windows;
  for (const char c : document_) {
    windows += c == '\n' ? std::string("\r\n") : std::string(1, c);
  }
  writeFile(dir_.file("windows.zel"), windows);
  EXPECT_EQ(runProgram({"diff", dir_.file("whole.zel"), dir_.file("windows.zel")}).out, "same\n");
  writeFile(dir_.file("windows.obj"), "v 0 0 0\r\nv 1 0 0\r\nv 0 1 0\r\nf 1 2 \\\r\n 3\r\n");
  writeFile(dir_.file("unix.obj"), "v 0 0 0\nv 1 0 0\nv 0 +1 0\nf -3 -2 -1");
  EXPECT_EQ(runProgram({"diff", dir_.file("unix.obj"), dir_.file("windows.obj")}).out, "same\n");
}

}  // namespace zel::test
