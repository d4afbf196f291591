#include <gtest/gtest.h>
#include <png.h>

#include <array>
#include <vector>

#include "tests/cli/run_program.h"
#include "tests/cli/sample_meshes.h"
#include "tests/support/temp_dir.h"

namespace zel::test {

namespace {

struct ReadPicture {
  unsigned width = 0;
  unsigned height = 0;
  std::vector<unsigned char> rgba;

  [[nodiscard]] std::array<int, 4> at(unsigned x, unsigned y) const {
    const std::size_t pixel = (std::size_t{y} * width + x) * 4;
    return {rgba.at(pixel), rgba.at(pixel + 1), rgba.at(pixel + 2), rgba.at(pixel + 3)};
  }
};

ReadPicture readPng(const std::string& bytes) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  ReadPicture picture;
  if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) != 0) {
    image.format = PNG_FORMAT_RGBA;
    picture = {image.width, image.height, std::vector<unsigned char>(PNG_IMAGE_SIZE(image))};
    png_image_finish_read(&image, nullptr, picture.rgba.data(), 0, nullptr);
  }
  return picture;
}

}  // namespace

TEST(Render, drawsAMeshOfTheSizeAndGroundAsked) {
  const TempDir dir;
  writeFile(dir.file("a.obj"), sheetObj(4, 4, true));
  const std::string out = dir.file("a.png");
  const ProgramRun run = runProgram({"render", dir.file("a.obj"), "-o", out, "--width", "200",
                                     "--height", "150", "--background", "#102030", "--edges"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(run.out.rfind(out + ": 200 x 150 pixels, 16 faces drawn in ", 0), 0U) << run.out;
  const ReadPicture picture = readPng(readFile(out));
  ASSERT_EQ(picture.width, 200U);
  ASSERT_EQ(picture.height, 150U);
  EXPECT_EQ(picture.at(1, 1), (std::array<int, 4>{0x10, 0x20, 0x30, 255}));
  EXPECT_NE(picture.at(100, 75), picture.at(1, 1));
}

TEST(Render, writesToStandardOutputAndNothingElseThere) {
  const ProgramRun run = runProgram({"render", "-", "--from", "obj", "-o", "-", "--width", "40",
                                     "--height", "30", "--background", "transparent"},
                                    {.standardInput = sheetObj(2, 2, true)});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  const ReadPicture picture = readPng(run.out);
  EXPECT_EQ(picture.width, 40U);
  EXPECT_EQ(picture.at(0, 0)[3], 0);
  EXPECT_EQ(picture.at(20, 15)[3], 255);
}

TEST(Render, neverReplacesWhatItDrawsFrom) {
  const TempDir dir;
  const std::string mesh = dir.file("a.obj");
  const std::string texture = dir.file("a.bmp");
  writeFile(mesh, tetrahedronObj());
  writeFile(texture, "BM");
  EXPECT_EQ(runProgram({"render", mesh, "-o", dir.file("./a.obj")}).exitCode, 2);
  EXPECT_EQ(runProgram({"render", mesh, "-o", texture, "--texture", texture}).exitCode, 2);
  EXPECT_EQ(readFile(mesh), tetrahedronObj());
  EXPECT_EQ(readFile(texture), "BM");
}

TEST(Render, refusesWhatItCannotDraw) {
  const TempDir dir;
  const std::string mesh = dir.file("a.obj");
  const std::string out = dir.file("a.png");
  writeFile(mesh, tetrahedronObj());
  writeFile(dir.file("bad.bmp"), "BM");
  EXPECT_EQ(runProgram({"render", mesh}).exitCode, 2);
  EXPECT_EQ(runProgram({"render", mesh, "-o", out, "--width", "8193"}).exitCode, 2);
  EXPECT_EQ(runProgram({"render", mesh, "-o", out, "--background", "mauve"}).exitCode, 2);
  EXPECT_EQ(runProgram({"render", mesh, "-o", out, "--background", "#12345g"}).exitCode, 2);
  EXPECT_EQ(runProgram({"render", mesh, "-o", out, "--texture", dir.file("bad.bmp")}).exitCode, 3);
  const ProgramRun missing = runProgram({"render", mesh, "-o", out, "--texture", "no.bmp"});
  EXPECT_EQ(missing.exitCode, 3);
  EXPECT_NE(missing.err.find("No such file"), std::string::npos) << missing.err;
  EXPECT_EQ(runProgram({"render", mesh, "-o", out, "--checker"}).exitCode, 3);
  EXPECT_EQ(runProgram({"render", mesh, "-o", dir.file("none/a.png")}).exitCode, 4);
  EXPECT_FALSE(std::filesystem::exists(out));
}

// Without any display server SDL opened a window that nobody could see or close.
TEST(View, withoutADisplayGivesSix) {
  const TempDir dir;
  const std::string mesh = dir.file("a.obj");
  writeFile(mesh, tetrahedronObj());
  writeFile(dir.file("tour"), "title\n");
  for (const bool byName : {true, false}) {
    const ProgramRun run =
        runProgram({"view", mesh, "--script", dir.file("tour")},
                   {.environment = {byName ? "SDL_VIDEODRIVER=x11" : "SDL_VIDEODRIVER=",
                                    byName ? "DISPLAY=:4000000" : "DISPLAY=", "WAYLAND_DISPLAY=",
                                    // D-Bus, which SDL loads, keeps a block.
                                    "LSAN_OPTIONS=suppressions=" ZEL_SOURCE_DIR
                                    "/tests/support/foreign_leaks.supp"}});
    EXPECT_EQ(run.exitCode, 6) << run.err;
    EXPECT_NE(run.err.find("zel: " + mesh + ": cannot show: "), std::string::npos) << run.err;
    EXPECT_EQ(run.out, "");
  }
}

TEST(View, brokenScriptsAreNamed) {
  const TempDir dir;
  writeFile(dir.file("a.obj"), tetrahedronObj());
  writeFile(dir.file("tour"), "key F\njump\n");
  const ProgramRun run = runProgram({"view", dir.file("a.obj"), "--script", dir.file("tour")});
  EXPECT_EQ(run.exitCode, 3);
  EXPECT_NE(run.err.find("line 2"), std::string::npos) << run.err;
}

}  // namespace zel::test
