// With ZEL_TEST_ABROAD set, every test of the program runs as on a desktop far away: under a
// decimal-comma locale, and with CR LF at the end of every line that it reads (see line_ends.h).

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>

#include "line_ends.h"
#include "support/comma_locale.h"

namespace {

class Abroad : public testing::Environment {
 public:
  void SetUp() override {
    if (zel::test::isAbroad()) {
      comma_ = std::make_unique<zel::test::CommaLocale>();
      if (!comma_->reachesC()) {
        std::fputs("no comma locale for C is installed: only the C++ half is tested\n", stderr);
      }
    }
  }
  void TearDown() override { comma_.reset(); }

 private:
  std::unique_ptr<zel::test::CommaLocale> comma_;
};

const auto* const kEnvironment = testing::AddGlobalTestEnvironment(new Abroad);

}  // namespace
