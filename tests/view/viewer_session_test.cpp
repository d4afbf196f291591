// Whole sessions of the viewer's window on a real X server without a screen.

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <map>
#include <thread>

#include "blob.h"
#include "scene_shapes.h"
#include "support/temp_dir.h"
#include "tools/view/viewer.h"
#include "x_server.h"

// The drivers of X and OpenGL leave memory behind when SDL unloads them with the window; every
// other test program looks for leaks.
extern "C" const char* __asan_default_options() { return "detect_leaks=0"; }

namespace {

using zel::test::Blob;
using zel::test::blobOf;
using zel::view::Colour;
using zel::view::Picture;

constexpr zel::view::ViewSize kSize{480, 360};

class ViewerSession : public testing::Test {
 protected:
  void SetUp() override {
    if (!server.isRunning()) {
      GTEST_SKIP() << "no X server can be started; install xvfb to run the viewer's sessions";
    }
    std::filesystem::current_path(dir.path());
  }
  void TearDown() override { std::filesystem::current_path(before); }

  zel::view::OpenedScene open(const std::string& name) {
    dropped = name;
    zel::view::OpenedScene opened;
    const zel::test::Shape shape = zel::test::makeCube(true);
    opened.scene = std::make_unique<zel::view::SceneMesh>(shape.nodes, shape.triangles, shape.quads,
                                                          shape.textureCoords);
    opened.title = name + " - 8 nodes";
    return opened;
  }

  // Plays a session; the screenshots it took are in `shots` afterwards.
  void play(const std::string& script) {
    zel::view::ViewerSetup setup;
    setup.size = kSize;
    setup.script = zel::view::parseScript(script);
    const auto save = [this](const Picture& picture, const std::string& name) {
      shots[name] = picture;
      return true;
    };
    zel::view::Viewer viewer(setup, {[this](const std::string& name) { return open(name); }, save});
    viewer.show(open("cube.zel"));
    viewer.run();
  }

  const zel::test::XServer server;
  const zel::test::TempDir dir;
  const std::filesystem::path before = std::filesystem::current_path();
  std::map<std::string, Picture> shots;
  std::string dropped;
};

bool isMesh(const Colour& c) { return c.red > c.blue + 8; }
bool isBoundary(const Colour& c) { return c.red > 190 && c.green < 130 && c.blue < 90; }

int differingPixels(const Picture& a, const Picture& b) {
  int count = 0;
  for (std::size_t i = 0; i < a.rgba.size(); i += 4) {
    count += std::abs(a.rgba[i] - b.rgba.at(i)) > 24 ? 1 : 0;
  }
  return count;
}

TEST_F(ViewerSession, keysChangeWhatIsShown) {
  play(
      "screenshot plain\nkey B\nscreenshot boundary\nkey B\nscreenshot again\nkey E\nscreenshot "
      "edges\nkey E\n"
      "key H\nscreenshot help\nkey H\nkey 7\nscreenshot top\nkey 5\nkey 1\nkey F\n"
      "screenshot front\n");
  const Picture& plain = shots.at("plain");
  EXPECT_GT(blobOf(plain, isMesh).count, kSize.width * kSize.height / 8);
  EXPECT_LT(blobOf(plain, isBoundary).count, 5);
  EXPECT_GT(blobOf(shots.at("boundary"), isBoundary).count, 300);
  EXPECT_EQ(differingPixels(plain, shots.at("again")), 0);  // the count of edges is gone, too
  EXPECT_GT(differingPixels(plain, shots.at("edges")), 300);
  EXPECT_GT(differingPixels(plain, shots.at("help")), kSize.width * kSize.height / 10);
  EXPECT_GT(differingPixels(plain, shots.at("top")), kSize.width * kSize.height / 10);
  // In parallel a cube seen from the front is a square that fills the height to the margin.
  const double side = kSize.height / 1.08;
  EXPECT_NEAR(blobOf(shots.at("front"), isMesh).count / (side * side), 1, 0.05);
}

TEST_F(ViewerSession, mouseTurnsMovesAndZooms) {
  play(
      "wheel -5\nscreenshot start\ndrag left 200 100 320 140\nscreenshot turned\n"
      "drag left 100 100 160 80 shift\nscreenshot shifted\ndrag middle 160 80 100 100\n"
      "screenshot back\nwheel -4\nscreenshot small\n");
  EXPECT_GT(differingPixels(shots.at("start"), shots.at("turned")), 5000);
  const Blob turned = blobOf(shots.at("turned"), isMesh);
  const Blob shifted = blobOf(shots.at("shifted"), isMesh);
  EXPECT_NEAR(shifted.x - turned.x, 60, 8);
  EXPECT_NEAR(shifted.y - turned.y, -20, 8);
  EXPECT_LT(differingPixels(shots.at("turned"), shots.at("back")), 200);
  EXPECT_NEAR(blobOf(shots.at("small"), isMesh).count / static_cast<double>(turned.count),
              std::pow(1.1, -8), 0.06);
}

TEST_F(ViewerSession, filesScreenshotsAndTheEnd) {
  zel::test::writeFile("zel-1.png", "taken");
  testing::internal::CaptureStdout();
  play("title\ndrop some file.obj\ntitle\nkey F12\nkey Ctrl+Q\nscreenshot never\n");
  const std::string printed = testing::internal::GetCapturedStdout();
  EXPECT_EQ(printed, "cube.zel - 8 nodes\nsome file.obj - 8 nodes\n");
  EXPECT_EQ(dropped, "some file.obj");
  EXPECT_EQ(shots.count("zel-2.png"), 1U);
  EXPECT_EQ(shots.count("never"), 0U);
}

TEST_F(ViewerSession, cursorReallyGlides) {
  if (zel::test::outputOf("command -v xdotool").empty()) {
    GTEST_SKIP() << "xdotool is not installed";
  }
  play("cursor 0 0\ncursor 123 45\nwait 50\n");
  const std::string first = zel::test::outputOf("xdotool getmouselocation");
  play("cursor 133 65\nwait 50\n");
  int x1 = 0;
  int y1 = 0;
  int x2 = 0;
  int y2 = 0;
  ASSERT_EQ(std::sscanf(first.c_str(), "x:%d y:%d", &x1, &y1), 2) << first;
  const std::string second = zel::test::outputOf("xdotool getmouselocation");
  ASSERT_EQ(std::sscanf(second.c_str(), "x:%d y:%d", &x2, &y2), 2) << second;
  EXPECT_EQ(x2 - x1, 10) << first << second;
  EXPECT_EQ(y2 - y1, 20);
}

// Waits for the message box, the one window without a class, and presses Return in it.
std::string closeMessageBox() {
  const std::string find =
      R"(xwininfo -root -tree 2>&1 | sed -n 's/^ *\(0x[0-9a-f]*\) "zel": ().*/\1/p')";
  for (int attempt = 0; attempt < 200; ++attempt) {
    std::string box = zel::test::outputOf(find);
    if (!box.empty()) {
      box.pop_back();
      zel::test::outputOf("xdotool sleep 0.3 windowfocus " + box + " sleep 0.3 key Return");
      return box;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  return "";
}

TEST_F(ViewerSession, messageBoxOpensAndIsClosedByAKey) {
  if (zel::test::outputOf("command -v xdotool").empty() ||
      zel::test::outputOf("command -v xwininfo").empty()) {
    GTEST_SKIP() << "xdotool or xwininfo (x11-utils) is not installed";
  }
  std::string box;
  std::thread person([&box] { box = closeMessageBox(); });
  testing::internal::CaptureStderr();
  play("message hello\nscreenshot after\n");
  person.join();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");  // where it would go without a box
  EXPECT_NE(box, "");
  EXPECT_EQ(shots.count("after"), 1U);
}

}  // namespace
