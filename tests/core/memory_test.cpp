#include "zel/core/memory.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

TEST(Memory, blocksGrowWithTheirContentEvenFromNothing) {
  char* block = static_cast<char*>(slMalloc(0));
  ASSERT_NE(block, nullptr);
  block = static_cast<char*>(slRealloc(block, 4));
  ASSERT_NE(block, nullptr);
  std::memcpy(block, "abc", 4);
  block = static_cast<char*>(slRealloc(block, 4096));
  EXPECT_STREQ(block, "abc");
  block = static_cast<char*>(slRealloc(block, 0));
  EXPECT_NE(block, nullptr);
  slFree(block);
  slFree(nullptr);
  EXPECT_EQ(kwErrorMessage(40), 0);
}

}  // namespace
