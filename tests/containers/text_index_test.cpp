#include "zel/containers/detail/text_index.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Chains that ran empty once counted as texts, so every change of a text made the table grow.
TEST(TextIndex, tableFollowsTheTextsAndNotTheirChanges) {
  zel::TextIndex index;
  std::vector<std::string> texts(100, std::string(1, '\0'));
  for (const std::string& text : texts) {
    index.cover(text);
  }
  for (std::size_t change = 0; change < 20000; ++change) {
    std::string& text = texts[change % texts.size()];
    const int slot = static_cast<int>(change % texts.size());
    index.forget(slot, text);
    text = std::to_string(change) + '\0';
    index.learn(slot, text);
  }
  EXPECT_LE(index.tableLength(), 8 * texts.size());
  const auto textOf = [&texts](int slot) {
    return std::string_view(texts[static_cast<std::size_t>(slot)]);
  };
  EXPECT_EQ(index.lowestMatch("19942", textOf), 42);
  EXPECT_EQ(index.lowestMatch("19842", textOf), -1);
}

}  // namespace
