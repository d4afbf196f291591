// Whole sessions of the viewer's window on a real X server without a screen.

#include <gtest/gtest.h>
#include <unistd.h>

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
    if (name == "bad.obj") {
      opened.problem = "bad.obj: cannot read: not a mesh";
      return opened;
    }
    opened.scene = std::make_unique<zel::view::SceneMesh>(shape.nodes, shape.triangles, shape.quads,
                                                          shape.textureCoords);
    opened.scene->defects = {{"open edges", {213, 94, 0, 255}, 1, {{2, 3}}, {2}, {}}};
    opened.title = name + " - 8 nodes";
    return opened;
  }

  // Plays a session; the screenshots it took are in `shots` afterwards.
  void play(const std::string& script) {
    zel::view::ViewerSetup setup;
    setup.size = size;
    setup.script = zel::view::parseScript(script);
    setup.files = files;
    const auto save = [this](const Picture& picture, const std::string& name) {
      shots[name] = picture;
      if (name == "watched.obj") {
        zel::test::writeFile(name, "22");
      }
      return true;
    };
    zel::view::Viewer viewer(setup, {[this](const std::string& name) { return open(name); }, save});
    viewer.show(open(files.empty() ? "cube.zel" : files[0]));
    isDone = viewer.run();
  }

  zel::test::Shape shape = zel::test::makeCube(true);
  zel::view::ViewSize size = kSize;
  const zel::test::XServer server;
  const zel::test::TempDir dir;
  const std::filesystem::path before = std::filesystem::current_path();
  std::map<std::string, Picture> shots;
  std::string dropped;
  bool isDone = false;
  std::vector<std::string> files;
};

bool isMesh(const Colour& c) { return c.red > c.blue + 8; }
bool isBoundary(const Colour& c) { return c.red > 190 && c.green < 130 && c.blue < 90; }

int differingPixels(const Picture& a, const Picture& b, int tolerance = 24) {
  int count = 0;
  for (std::size_t i = 0; i < a.rgba.size(); i += 4) {
    count += std::abs(a.rgba[i] - b.rgba.at(i)) > tolerance ? 1 : 0;
  }
  return count;
}

// What a key must do beside having an effect that can be seen.
enum class Undo { kAgain, kHome, kThrice, kElsewhere };

Undo undoOf(zel::view::Action action) {
  using zel::view::Action;
  switch (action) {
    case Action::kFrameAll:
    case Action::kStartView:
    case Action::kToggleTexture:  // the cube has no texture coordinates and only sharp edges
    case Action::kToggleSmooth:
    case Action::kPreviousFile:
    case Action::kNextFile:
    case Action::kReload:
    case Action::kScreenshot:
    case Action::kEscape:
    case Action::kQuit:
      return Undo::kElsewhere;
    case Action::kNextColouring:
      return Undo::kThrice;
    default:
      return action >= Action::kViewFront && action <= Action::kViewOpposite ? Undo::kHome
                                                                             : Undo::kAgain;
  }
}

TEST_F(ViewerSession, everyKeyHasAnEffectThatCanBeUndone) {
  int tried = 0;
  std::string script = "screenshot start\n";
  std::vector<std::string> names;
  for (const zel::view::Binding& binding : zel::view::bindings()) {
    const Undo undo = undoOf(binding.action);
    for (const int key : binding.keys) {
      if (key == 0 || undo == Undo::kElsewhere) {
        continue;
      }
      const std::string press =
          std::string("key ") + (binding.control ? "Ctrl+" : "") + SDL_GetKeyName(key) + "\n";
      const std::string name = std::to_string(tried++);
      names.push_back(press);
      script += press + "screenshot " + name + "\n";
      script += undo == Undo::kHome    ? "key Home\n"
                : undo == Undo::kAgain ? press
                                       : press + press + press;
      script += "screenshot undone" + name + "\n";
    }
  }
  size = {240, 180};
  play(script);
  EXPECT_GT(tried, 20);
  const Picture& start = shots.at("start");
  for (int i = 0; i < tried; ++i) {
    EXPECT_GT(differingPixels(start, shots.at(std::to_string(i))), 40) << names[i];
    EXPECT_LT(differingPixels(start, shots.at("undone" + std::to_string(i))), 3) << names[i];
  }
}

TEST_F(ViewerSession, smoothAndTexturedFacesCanBeSeen) {
  shape = zel::test::makeRoof();
  const float coord[2] = {0.5F, 0.5F};
  for (int entry = 0; entry < 6; ++entry) {
    shape.textureCoords.AddItemM(coord);
  }
  play("key 1\nscreenshot flat\nkey S\nscreenshot smooth\nkey T\nscreenshot textured\n");
  EXPECT_GT(differingPixels(shots.at("flat"), shots.at("smooth"), 4), 100);
  EXPECT_GT(differingPixels(shots.at("smooth"), shots.at("textured")), 1000);
}

TEST_F(ViewerSession, helpLeavesTheMeshInSight) {
  play("key L\nscreenshot plain\nkey ?\nscreenshot help\nkey Escape\nscreenshot again\n");
  const Blob whole = blobOf(shots.at("plain"), isMesh);
  const Blob beside = blobOf(shots.at("help"), isMesh);
  EXPECT_GT(beside.count, 1000);
  EXPECT_GT(beside.x, whole.x + 60);  // it stands in what the panel leaves free
  EXPECT_EQ(differingPixels(shots.at("plain"), shots.at("again")), 0);
}

TEST_F(ViewerSession, keysShowWhatTheySay) {
  play(
      "screenshot plain\nkey B\nscreenshot boundary\nstatus\nkey B\nkey 5\nkey 1\nkey O\n"
      "screenshot front\nresize 250 360\nwait 200\nscreenshot narrow\n");
  EXPECT_GT(blobOf(shots.at("plain"), isMesh).count, kSize.width * kSize.height / 8);
  EXPECT_LT(blobOf(shots.at("plain"), isBoundary).count, 5);
  EXPECT_GT(blobOf(shots.at("boundary"), isBoundary).count, 300);
  // In parallel a cube seen from the front is a square that fills the view to the margin.
  const double side = kSize.height / 1.08;
  EXPECT_NEAR(blobOf(shots.at("front"), isMesh).count / (side * side), 1, 0.05);
  const double narrow = 250 / 1.08;
  EXPECT_NEAR(blobOf(shots.at("narrow"), isMesh).count / (narrow * narrow), 1, 0.05);
}

TEST_F(ViewerSession, clicksPickAndCentre) {
  testing::internal::CaptureStdout();
  play(
      "key 1\nclick 240 190\nstatus\nkey Escape\nstatus\nclick 3 3\nstatus\nscreenshot before\n"
      "doubleclick 200 150\nscreenshot after\n");
  const std::string printed = testing::internal::GetCapturedStdout();
  EXPECT_EQ(printed.rfind("quad 0 of nodes 4, 5, 7, 6 at (", 0), 0U) << printed;
  EXPECT_NE(printed.find("beside quad 2, quad 3, quad 4\n?: help\n?: help\n"), std::string::npos)
      << printed;
  EXPECT_NEAR(blobOf(shots.at("after"), isMesh).x - blobOf(shots.at("before"), isMesh).x, 40, 12);
}

TEST_F(ViewerSession, goesThroughFilesAndReadsThemAgain) {
  files = {"one", "two", "three"};
  testing::internal::CaptureStdout();
  play("key Right\ntitle\nkey Left\nkey Left\ntitle\nkey F5\nstatus\n");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "two - 8 nodes\nthree - 8 nodes\nread again\n");
  zel::test::writeFile("watched.obj", "1");
  files = {"watched.obj"};
  testing::internal::CaptureStdout();
  play("screenshot watched.obj\nwait 100\nwait 600\nstatus\n");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "read again\n");
}

TEST_F(ViewerSession, aBadFileEndsAScriptAndIsTold) {
  play("drop bad.obj\nscreenshot never\n");
  EXPECT_FALSE(isDone);
  EXPECT_EQ(shots.count("never"), 0U);
}

TEST_F(ViewerSession, theTermSignalEndsIt) {
  std::thread person([] {
    // A signal before the viewer takes it would end the test itself.
    struct sigaction taken {};
    for (int wait = 0; wait < 6000 && taken.sa_handler == SIG_DFL; ++wait) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      sigaction(SIGTERM, nullptr, &taken);
    }
    kill(getpid(), SIGTERM);
  });
  std::string script;
  for (int step = 0; step < 100; ++step) {
    script += "wait 100\n";
  }
  play(script + "screenshot never\n");
  person.join();
  EXPECT_EQ(shots.count("never"), 0U);
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
