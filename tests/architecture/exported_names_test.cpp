// docs/exported-names.md lists every exported name of the global namespace; the library's symbol
// table must agree with it in both directions.

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "support/temp_dir.h"

namespace {

std::set<std::string> documentedNames() {
  static const std::regex row("\\| `(\\w+)` \\| [^|]+ \\| `zel/[^|]+` \\|");
  std::istringstream text(zel::test::readFile(ZEL_SOURCE_DIR "/docs/exported-names.md"));
  std::set<std::string> names;
  std::string line;
  while (std::getline(text, line)) {
    std::smatch match;
    if (std::regex_match(line, match, row)) {
      names.insert(match[1]);
    }
  }
  return names;
}

/// The function's or class's name at the head of a demangled symbol; empty for what is not the
/// interface's: `namespace zel`, the standard library, tables of the compiler.
std::string interfaceName(const std::string& symbol) {
  static const std::regex head("^(?:(?:typeinfo|vtable|typeinfo name) for )?(\\w+)(?:::|\\(|$)");
  std::smatch match;
  if (!std::regex_search(symbol, match, head)) {
    return {};
  }
  const std::string name = match[1];
  return name == "zel" || name == "std" || name.front() == '_' ? std::string() : name;
}

std::set<std::string> exportedNames() {
  const std::unique_ptr<FILE, int (*)(FILE*)> table(
      popen("nm -DC --defined-only '" ZEL_LIBRARY "'", "r"), pclose);
  std::set<std::string> names;
  char line[4096];
  while (table != nullptr && std::fgets(line, sizeof line, table.get()) != nullptr) {
    std::istringstream fields(line);
    std::string address;
    std::string kind;
    std::string symbol;
    fields >> address >> kind >> std::ws;
    std::getline(fields, symbol);
    // Weak symbols are inline code of the standard library and its like.
    if (const std::string name = interfaceName(symbol); !name.empty() && kind != "W") {
      names.insert(name);
    }
  }
  return names;
}

TEST(ExportedNames, listAndLibraryAgree) {
  const std::set<std::string> documented = documentedNames();
  const std::set<std::string> exported = exportedNames();
  ASSERT_GT(exported.size(), 100U) << "no symbols found";
  for (const std::string& name : exported) {
    EXPECT_EQ(documented.count(name), 1U) << name << " is exported but not listed";
  }
  for (const std::string& name : documented) {
    EXPECT_EQ(exported.count(name), 1U) << name << " is listed but not exported";
  }
}

}  // namespace
