// Every output may be one of the inputs: nothing that a function has written is read again.

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "differential/exported_name.h"
#include "differential/functions.h"

namespace {

using namespace zel::test;  // NOLINT

TEST(Overlay, outputsMayTakeThePlaceOfInputs) {
  SceneMaker scenes(192);
  std::map<std::string, int> differing;
  std::size_t pairs = 0;
  for (const Function& function : kFunctions) {
    pairs += function.overlays().size();
  }
  EXPECT_GT(pairs, 250U);
  for (int i = 0; i < 4000; ++i) {
    const Scene scene = scenes.next();
    for (const Function& function : kFunctions) {
      for (const Overlay& pair : function.overlays()) {
        if (!function.allows(pair, scene)) {
          ++differing[exportedName(function.address()) + ", argument " +
                      std::to_string(pair.output) + " over " + std::to_string(pair.input)];
        }
      }
    }
  }
  for (const auto& [name, count] : differing) {
    ADD_FAILURE() << name << " differs in " << count << " calls";
  }
}

}  // namespace
