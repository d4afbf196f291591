#include "zel/containers/detail/text_index.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "zel/containers/detail/twins.h"

namespace {

// Chains that ran empty once counted as texts, so every change of a text made the table grow.
TEST(TextTable, followsTheTextsAndNotTheirChanges) {
  zel::TextTable table;
  std::vector<std::string> texts(100, std::string(1, '\0'));
  table.reserve(100);
  for (int slot = 0; slot < 100; ++slot) {
    table.put(slot, texts[static_cast<std::size_t>(slot)]);
  }
  for (std::size_t change = 0; change < 20000; ++change) {
    std::string& text = texts[change % texts.size()];
    const int slot = static_cast<int>(change % texts.size());
    table.remove(slot, text);
    text = std::to_string(change) + '\0';
    table.put(slot, text);
    ASSERT_TRUE(table.isFiled(slot, text));
  }
  EXPECT_TRUE(table.validate());
  EXPECT_LE(table.length(), 10 * texts.size());
  const auto textOf = [&texts](int slot) {
    return std::string_view(texts[static_cast<std::size_t>(slot)]);
  };
  EXPECT_EQ(table.lowestMatch("19942", textOf), 42);
  EXPECT_EQ(table.lowestMatch("19842", textOf), -1);
}

TEST(Twins, keepTheLowestFirst) {
  std::mt19937 random(3);
  zel::Twins twins;
  std::vector<int> members{50};
  int head = 50;
  const auto isMember = [&](int slot) {
    return std::find(members.begin(), members.end(), slot) != members.end();
  };
  for (int step = 0; step < 20000; ++step) {
    const auto slot = static_cast<int>(random() % 200);
    if (!isMember(slot)) {
      twins.add(head, slot);
      members.push_back(slot);
    } else if (members.size() > 1) {
      ASSERT_TRUE(twins.remove(head, slot));
      members.erase(std::find(members.begin(), members.end(), slot));
    } else {
      ASSERT_FALSE(twins.remove(head, slot));
    }
    ASSERT_EQ(head, *std::min_element(members.begin(), members.end()));
    std::vector<int> seen;
    const auto see = [&](int other) {
      seen.push_back(other);
      return false;
    };
    twins.any(head, see);
    ASSERT_EQ(seen.front(), head);
    ASSERT_TRUE(std::is_permutation(seen.begin(), seen.end(), members.begin(), members.end()));
    ASSERT_EQ(twins.isBelowHead(slot), isMember(slot) && slot != head);
  }
}

}  // namespace
