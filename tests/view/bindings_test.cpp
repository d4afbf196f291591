#include "tools/view/bindings.h"

#include <SDL_keyboard.h>
#include <gtest/gtest.h>

#include <set>

#include "support/temp_dir.h"

namespace {

using zel::view::Action;
using zel::view::Input;

TEST(Bindings, manualShowsTheTable) {
  const std::string manual = zel::test::readFile(ZEL_SOURCE_DIR "/docs/viewer.md");
  EXPECT_NE(manual.find("\n\n" + zel::view::bindingMarkdown() + "\n"), std::string::npos)
      << "docs/viewer.md must contain:\n"
      << zel::view::bindingMarkdown();
}

// The whole list fits into the window that the viewer opens, of 800 pixels' height.
TEST(Bindings, helpIsShortAndLeavesNothingOut) {
  const std::vector<std::string> lines = zel::view::bindingLines();
  EXPECT_LE(lines.size(), 37U);
  std::string all;
  for (const std::string& line : lines) {
    EXPECT_LE(line.size(), 60U) << line;
    all += line + "\n";
  }
  EXPECT_NE(all.find("1, Ctrl+1 "), std::string::npos) << all;
  EXPECT_NE(all.find(" Look from the front or back\n"), std::string::npos) << all;
  for (const zel::view::Binding& binding : zel::view::bindings()) {
    EXPECT_NE(all.find(binding.trigger), std::string::npos) << binding.trigger;
  }
}

TEST(Bindings, everyActionCanBeReachedAndNoInputMeansTwoThings) {
  std::set<Action> reached;
  std::set<std::string> triggers;
  for (const zel::view::Binding& binding : zel::view::bindings()) {
    if (binding.input != Input::kKey) {
      EXPECT_EQ(zel::view::actionOfInput(binding.input), binding.action) << binding.trigger;
    }
    for (const int key : binding.keys) {
      EXPECT_TRUE(key == 0 || zel::view::actionOfKey(key, binding.control) == binding.action)
          << binding.trigger;
    }
    EXPECT_TRUE(triggers.insert(binding.trigger).second) << binding.trigger;
    reached.insert(binding.action);
  }
  EXPECT_EQ(reached.size(), static_cast<std::size_t>(Action::kQuit) + 1);
}

TEST(Bindings, keysMeanWhatTheirNamesSay) {
  EXPECT_EQ(zel::view::actionOfKey(SDLK_7, false), Action::kViewTop);
  EXPECT_EQ(zel::view::actionOfKey(SDLK_KP_7, false), Action::kViewTop);
  EXPECT_EQ(zel::view::actionOfKey(SDLK_KP_1, false), Action::kViewFront);
  EXPECT_EQ(zel::view::actionOfKey(SDLK_q, true), Action::kQuit);
  EXPECT_EQ(zel::view::actionOfKey(SDLK_KP_1, true), Action::kViewBack);
  EXPECT_EQ(zel::view::actionOfKey(SDLK_q, false), Action::kToggleOcclusion);
  EXPECT_FALSE(zel::view::actionOfKey(SDLK_e, true));
  EXPECT_FALSE(zel::view::actionOfKey(0, false));
  for (const zel::view::Binding& binding : zel::view::bindings()) {
    std::string names;
    for (const int key : binding.keys) {
      names += key == 0 ? "" : (names.empty() ? "" : ", ") + std::string(SDL_GetKeyName(key));
    }
    if (binding.input == Input::kKey) {
      EXPECT_EQ((binding.control ? "Ctrl+" : "") + names, binding.trigger);
    }
  }
}

}  // namespace
