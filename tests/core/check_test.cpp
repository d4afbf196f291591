#include "zel/core/detail/check.h"

#include <gtest/gtest.h>

namespace {

TEST(Check, endsTheProgramWhereChecksAreOnAndCostsNothingWhereNot) {
  int asked = 0;
  const auto isBroken = [&asked] {
    ++asked;
    return false;
  };
  ZEL_ASSERT(++asked > 0);
  ZEL_VALIDATE(++asked > 0);
  EXPECT_EQ(asked, ZEL_CHECKS);
  if (ZEL_CHECKS >= 1) {
    EXPECT_DEATH(ZEL_ASSERT(isBroken()), "check_test.cpp:[0-9]+: broken invariant: isBroken");
  } else {
    ZEL_ASSERT(isBroken());
  }
  if (ZEL_CHECKS >= 2) {
    EXPECT_DEATH(ZEL_VALIDATE(isBroken()), "broken invariant");
  } else {
    ZEL_VALIDATE(isBroken());
  }
  EXPECT_EQ(asked, ZEL_CHECKS);
}

}  // namespace
