// With ZEL_TEST_COMMA set, every test of the program runs under a decimal-comma locale.

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "support/comma_locale.h"

namespace {

class CommaEnvironment : public testing::Environment {
 public:
  void SetUp() override {
    if (std::getenv("ZEL_TEST_COMMA") != nullptr) {
      comma_ = std::make_unique<zel::test::CommaLocale>();
    }
  }
  void TearDown() override { comma_.reset(); }

 private:
  std::unique_ptr<zel::test::CommaLocale> comma_;
};

const auto* const kEnvironment = testing::AddGlobalTestEnvironment(new CommaEnvironment);

}  // namespace
