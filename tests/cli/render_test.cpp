#include <array>

#include "tests/cli/program_fixture.h"
#include "tests/cli/sample_meshes.h"
#include "tests/image/bmp_bytes.h"
#include "tests/support/png_reading.h"

namespace zel::test {

namespace {

using Render = ProgramTest;
using View = ProgramTest;

std::array<int, 4> pixelOf(const ReadPng& picture, unsigned x, unsigned y) {
  const auto* pixel = &picture.rgba.at((std::size_t{y} * picture.width + x) * 4);
  return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

}  // namespace

TEST_F(Render, drawsAMeshOfTheSizeAndGroundAsked) {
  write("a.obj", sheetObj(4, 4, true));
  const ProgramRun done = run({"render", "a.obj", "-o", "a.png", "--size", "200x150",
                               "--background", "#102030", "--edges"});
  ASSERT_EQ(done.exitCode, 0) << done.err;
  EXPECT_EQ(done.out.rfind("a.png: 200 x 150 pixels, 16 faces drawn in ", 0), 0U) << done.out;
  const ReadPng picture = readPng(content("a.png"));
  ASSERT_EQ(picture.width, 200U);
  ASSERT_EQ(picture.height, 150U);
  EXPECT_EQ(pixelOf(picture, 1, 1), (std::array<int, 4>{0x10, 0x20, 0x30, 255}));
  EXPECT_NE(pixelOf(picture, 100, 75), pixelOf(picture, 1, 1));
}

TEST_F(Render, writesToStandardOutputAndNothingElseThere) {
  const ProgramRun done = run(
      {"render", "-", "--from", "obj", "-o", "-", "--size", "40x30", "--background", "transparent"},
      {.standardInput = sheetObj(2, 2, true)});
  ASSERT_EQ(done.exitCode, 0) << done.err;
  const ReadPng picture = readPng(done.out);
  EXPECT_EQ(picture.width, 40U);
  EXPECT_EQ(pixelOf(picture, 0, 0)[3], 0);
  EXPECT_EQ(pixelOf(picture, 20, 15)[3], 255);
}

// Welding drops the repeated face, so that the nodes of the green one move up.
TEST_F(Render, weldsFirstAndColoursFollowTheNodes) {
  const std::string red = "v -9 0 0 1 0 0\nv -8 0 0 1 0 0\nv -9 1 0 1 0 0\n";
  write("a.obj", red + red + "v -9 -9 0 0 1 0\nv 9 -9 0 0 1 0\nv 0 9 0 0 1 0\n" +
                     "f 1 2 3\nf 4 5 6\nf 7 8 9\n");
  const ProgramRun done =
      run({"render", "a.obj", "-o", "a.png", "--view", "front", "--size", "60x60", "--weld"});
  ASSERT_EQ(done.exitCode, 0) << done.err;
  EXPECT_TRUE(done.out.find(" 2 faces drawn") != std::string::npos) << done.out;
  const auto green = pixelOf(readPng(content("a.png")), 30, 30);
  EXPECT_GT(green[1], 2 * green[0]);
}

// A picture that is missing leaves the material's colour, and is told.
TEST_F(Render, paintsWithTheMaterialsOfTheFile) {
  write("a.obj",
        "mtllib a.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nvt 0.5 0.5\nusemtl paint\n"
        "f 1/1 2/1 3/1\nf 1/1 3/1 4/1\n");
  write("a.mtl", "newmtl paint\nKd 0 1 0\nmap_Kd skin.bmp\n");
  const Arguments line = {"render", "a.obj", "-o", "a.png", "--view", "front", "--size", "60x60"};
  const ProgramRun without = run(line);
  ASSERT_EQ(without.exitCode, 0) << without.err;
  EXPECT_NE(without.err.find("skin.bmp"), std::string::npos) << without.err;
  const auto green = pixelOf(readPng(content("a.png")), 30, 30);
  EXPECT_GT(green[1], 2 * green[0]);
  const BmpParts bmp{.width = 1, .height = 1, .pixels = std::string("\0\0\xFF\0", 4)};
  write("skin.bmp", bmp.bytes());
  EXPECT_EQ(run(line).err, "");
  const auto red = pixelOf(readPng(content("a.png")), 30, 30);
  EXPECT_GT(red[0], 2 * red[1]);
}

TEST_F(Render, writesWebpAndTurntablesByName) {
  write("a.obj", tetrahedronObj());
  EXPECT_EQ(exitCode({"render", "a.obj", "-o", "a.webp", "--size", "40x30", "--sheet"}), 0);
  EXPECT_EQ(content("a.webp").substr(8, 4), "WEBP");
  EXPECT_EQ(exitCode({"render", "a.obj", "-o", "b.webp", "--size", "40x30", "--turntable", "3"}),
            0);
  EXPECT_NE(content("b.webp").find("ANMF"), std::string::npos);
  EXPECT_EQ(exitCode({"render", "a.obj", "-o", "b.png", "--turntable", "3"}), 2);
}

TEST_F(Render, neverReplacesWhatItDrawsFrom) {
  write("a.obj", tetrahedronObj());
  write("a.bmp", "BM");
  EXPECT_EQ(exitCode({"render", "a.obj", "-o", "./a.obj"}), 2);
  EXPECT_EQ(exitCode({"render", "a.obj", "-o", "a.bmp", "--texture", "a.bmp"}), 2);
  EXPECT_EQ(content("a.obj"), tetrahedronObj());
  EXPECT_EQ(content("a.bmp"), "BM");
}

TEST_F(Render, refusesWhatItCannotDraw) {
  write("a.obj", tetrahedronObj());
  write("bad.bmp", "BM");
  const std::pair<Arguments, int> refused[] = {{{}, 2},
                                               {{"-o", "a.png", "--size", "8193x9"}, 2},
                                               {{"-o", "a.png", "--size", "64"}, 2},
                                               {{"-o", "a.png", "--background", "mauve"}, 2},
                                               {{"-o", "a.png", "--background", "#12345g"}, 2},
                                               {{"-o", "a.png", "--texture", "bad.bmp"}, 3},
                                               {{"-o", "a.png", "--checker"}, 3},
                                               {{"-o", "none/a.png"}, 4}};
  for (const auto& [options, code] : refused) {
    Arguments arguments = {"render", "a.obj"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    EXPECT_EQ(exitCode(arguments), code) << testing::PrintToString(options);
  }
  const ProgramRun missing = run({"render", "a.obj", "-o", "a.png", "--texture", "no.bmp"});
  EXPECT_EQ(missing.exitCode, 3);
  EXPECT_NE(missing.err.find("No such file"), std::string::npos) << missing.err;
  EXPECT_FALSE(exists("a.png"));
}

// Without any display server SDL opened a window that nobody could see or close.
TEST_F(View, withoutADisplayGivesSix) {
  write("a.obj", tetrahedronObj());
  write("tour", "title\n");
  for (const bool byName : {true, false}) {
    const ProgramRun done =
        run({"view", "a.obj", "--script", "tour"},
            {.environment = {byName ? "SDL_VIDEODRIVER=x11" : "SDL_VIDEODRIVER=",
                             byName ? "DISPLAY=:4000000" : "DISPLAY=", "WAYLAND_DISPLAY=",
                             // D-Bus, which SDL loads, keeps a block.
                             "LSAN_OPTIONS=suppressions=" ZEL_SOURCE_DIR
                             "/tests/support/foreign_leaks.supp"}});
    EXPECT_EQ(done.exitCode, 6) << done.err;
    EXPECT_NE(done.err.find("zel: a.obj: cannot show: "), std::string::npos) << done.err;
    EXPECT_EQ(done.out, "");
  }
}

TEST_F(View, brokenScriptsAreNamed) {
  write("a.obj", tetrahedronObj());
  write("tour", "key F\njump\n");
  const ProgramRun done = run({"view", "a.obj", "--script", "tour"});
  EXPECT_EQ(done.exitCode, 3);
  EXPECT_NE(done.err.find("line 2"), std::string::npos) << done.err;
}

}  // namespace zel::test
