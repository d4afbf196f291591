// docs/exported-names.md lists every exported class and function of the global namespace; the
// library's symbol table must agree with it in both directions, and hold the classes' methods too.

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
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

/// The classes' methods that are not private, as `Class::method`, read from the headers that the
/// list names. Constructors, operators, pure methods and accessors in lower case have no classic
/// name.
std::set<std::string> declaredMethods() {
  static const std::regex classHead("class ZEL_API (\\w+).*");
  static const std::regex method("  [^ /][^(]*?\\b(\\w+)\\(.*");
  std::set<std::string> methods;
  for (const auto& file : std::filesystem::recursive_directory_iterator(ZEL_SOURCE_DIR "/zel")) {
    std::ifstream header(file.path());
    std::string owner;
    for (std::string line; file.path().extension() == ".h" && std::getline(header, line);) {
      std::smatch match;
      if (std::regex_match(line, match, classHead)) {
        owner = match[1];
      } else if (line == " private:" || line == "};") {
        owner.clear();
      } else if (!owner.empty() && std::regex_match(line, match, method) && match[1] != owner &&
                 line.find("= 0;") == std::string::npos &&
                 (std::isupper(match.str(1).front()) != 0 || match.str(1).back() == 'M')) {
        methods.insert(owner + "::" + match.str(1));
      }
    }
  }
  return methods;
}

/// The head of a demangled symbol, `name` or `Class::method`; empty for what is not the
/// interface's: `namespace zel`, the standard library, templates, tables of the compiler.
std::string interfaceName(const std::string& symbol) {
  static const std::regex head(
      "^(?:(?:typeinfo|vtable|typeinfo name) for )?(\\w+)(::\\w+)?(?:::|\\(|$)");
  std::smatch match;
  if (!std::regex_search(symbol, match, head)) {
    return {};
  }
  const std::string name = match[1];
  return name == "zel" || name == "std" || name.front() == '_' ? std::string()
                                                               : name + match.str(2);
}

/// Functions and classes, and `Class::method` of every method.
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
    if (const std::string name = interfaceName(symbol); !name.empty()) {
      names.insert(name);
      names.insert(name.substr(0, name.find(':')));
    }
  }
  return names;
}

TEST(ExportedNames, listAndLibraryAgree) {
  const std::set<std::string> documented = documentedNames();
  const std::set<std::string> exported = exportedNames();
  ASSERT_GT(exported.size(), 100U) << "no symbols found";
  for (const std::string& name : exported) {
    if (name.find(':') == std::string::npos) {
      EXPECT_EQ(documented.count(name), 1U) << name << " is exported but not listed";
    }
  }
  for (const std::string& name : documented) {
    EXPECT_EQ(exported.count(name), 1U) << name << " is listed but not exported";
  }
}

TEST(ExportedNames, everyMethodIsASymbol) {
  const std::set<std::string> exported = exportedNames();
  const std::set<std::string> declared = declaredMethods();
  ASSERT_GT(declared.size(), 400U) << "no methods found";
  for (const std::string& method : declared) {
    EXPECT_EQ(exported.count(method), 1U) << method << " has no symbol";
  }
}

}  // namespace
