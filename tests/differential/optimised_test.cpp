// The library as the optimiser made it must do, to the bit, what the same source does unoptimised.
//
// gcc 12's SLP vectoriser drops the rounding of (double)(float)x where two such values stand side
// by side: a quarter of the matrices of slGenVectToZMatrix differed and a sixth of the results of
// slGetShereIntersect and slCircumCenter3D.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "differential/exported_name.h"
#include "differential/functions.h"

namespace {

using namespace zel::test;  // NOLINT

/// The library's code as it was compiled without optimisation, beside libzel.
class Unoptimised : public testing::Test {
 protected:
  const std::unique_ptr<void, int (*)(void*)> module_{
      dlopen(ZEL_UNOPTIMISED, RTLD_NOW | RTLD_LOCAL), dlclose};
};

TEST_F(Unoptimised, everyExportedFunctionIsCompared) {
  std::set<std::string> compared;
  for (const Function& function : kFunctions) {
    EXPECT_TRUE(compared.insert(exportedName(function.address())).second) << "twice or unnamed";
  }
  const std::unique_ptr<FILE, int (*)(FILE*)> table(
      popen("nm -D --defined-only --format=posix '" ZEL_UNOPTIMISED "'", "r"), pclose);
  char name[1000];
  char kind = 0;
  std::size_t exported = 0;
  while (std::fscanf(table.get(), "%999s %c%*[^\n]", name, &kind) == 2) {
    if (kind == 'T') {
      ++exported;
      EXPECT_EQ(compared.count(name), 1U) << name << " is missing from the table";
    }
  }
  EXPECT_EQ(exported, compared.size());
}

TEST_F(Unoptimised, agreesToTheBit) {
  constexpr int kScenes = 20000;
  ASSERT_NE(module_, nullptr) << dlerror();
  std::map<const void*, const void*> twins;
  for (const Function& function : kFunctions) {
    const void* twin = dlsym(module_.get(), exportedName(function.address()).c_str());
    ASSERT_NE(twin, nullptr) << exportedName(function.address());
    ASSERT_NE(twin, function.address());
    twins[function.address()] = twin;
  }
  std::map<std::string, int> differing;
  SceneMaker scenes(191);
  for (int i = 0; i < kScenes; ++i) {
    const Scene scene = scenes.next();
    for (const Function& function : kFunctions) {
      if (!function.agreesWith(twins[function.address()], scene)) {
        ++differing[exportedName(function.address())];
      }
    }
  }
  for (const auto& [name, count] : differing) {
    ADD_FAILURE() << name << " differs in " << count << " of " << kScenes << " calls";
  }
}

}  // namespace
