#include "tools/view/session_script.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using zel::view::parseScript;

TEST(SessionScript, readsStepsAndSkipsRemarks) {
  const auto steps = parseScript("# a tour\n\n key F\r\ndrag left 1 2 3 -4 shift\ndrop a b.obj\n");
  ASSERT_EQ(steps.size(), 3U);
  EXPECT_EQ(steps[0].command, "key");
  EXPECT_EQ(zel::view::numberIn(steps[1], 4), -4);
  EXPECT_EQ(zel::view::textIn(steps[2]), "a b.obj");
}

TEST(SessionScript, namesTheLineThatIsNoStep) {
  for (const char* bad : {"jump", "key", "key NoSuchKey", "key Ctrl+", "drag left 1 2 3",
                          "drag up 1 2 3 4", "drag left 1 2 3 4 ctrl", "wheel x", "wheel 1 2",
                          "wait 99999999999", "cursor 1", "drop", "title x"}) {
    try {
      (void)parseScript(std::string("title\n") + bad + "\n");
      ADD_FAILURE() << bad;
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), "line 2 is no step of a session");
    }
  }
}

}  // namespace
