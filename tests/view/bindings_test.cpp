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

TEST(Bindings, everyActionCanBeReachedAndNoInputMeansTwoThings) {
  std::set<Action> reached;
  std::set<std::string> triggers;
  for (const zel::view::Binding& binding : zel::view::bindings()) {
    const auto found = binding.input == Input::kKey
                           ? zel::view::actionOfKey(binding.key, binding.control)
                           : zel::view::actionOfInput(binding.input);
    EXPECT_EQ(found, binding.action) << binding.trigger;
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
  EXPECT_FALSE(zel::view::actionOfKey(SDLK_q, false));
  EXPECT_FALSE(zel::view::actionOfKey(SDLK_e, true));
  for (const zel::view::Binding& binding : zel::view::bindings()) {
    if (binding.input == Input::kKey && !binding.control) {
      EXPECT_STREQ(SDL_GetKeyName(binding.key), binding.trigger);
    }
  }
}

}  // namespace
