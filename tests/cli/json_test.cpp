// docs/json.md names every key that --json prints, with its type, and no other.

#include <algorithm>
#include <map>
#include <regex>

#include "tests/cli/program_fixture.h"
#include "tests/cli/sample_meshes.h"

namespace zel::test {

namespace {

/// Keys and their types as a table of the page tells them.
using Keys = std::map<std::string, std::string>;

class JsonAnswers : public ProgramTest {};

/// All tables under "## zel NAME".
std::map<std::string, Keys> documentedKeys() {
  static const std::regex line("## zel ([a-z]+)|\\| `([A-Za-z.]+)` \\| ([a-z?-]+) \\|");
  const std::string page = readFile(ZEL_SOURCE_DIR "/docs/json.md");
  std::map<std::string, Keys> commands;
  std::string command;
  for (std::sregex_iterator hit(page.begin(), page.end(), line), end; hit != end; ++hit) {
    if ((*hit)[1].matched) {
      command = (*hit)[1];
    } else {
      EXPECT_TRUE(commands[command].emplace((*hit)[2], (*hit)[3]).second) << *(hit->begin() + 2);
    }
  }
  return commands;
}

bool isOfType(const Json& value, const std::string& type) {
  if (type.back() == '?') {
    return value.is_null() || isOfType(value, type.substr(0, type.size() - 1));
  }
  const bool isPoint = value.is_array() && value.size() == 3 && value[0].is_number();
  return type == "text"     ? value.is_string()
         : type == "whole"  ? value.is_number_integer()
         : type == "number" ? value.is_number()
         : type == "yes-no" ? value.is_boolean()
         : type == "point"  ? isPoint
         : type == "list"   ? value.is_array()
                            : type == "object" && value.is_object();
}

/// Takes every key of an answer, those of objects in it too, out of what is still expected.
void strike(const Json& answer, const std::string& prefix, const Keys& documented, Keys& left) {
  for (const auto& [name, value] : answer.items()) {
    const std::string key = prefix + name;
    const auto type = documented.find(key);
    ASSERT_NE(type, documented.end()) << key << " is not documented";
    EXPECT_TRUE(isOfType(value, type->second)) << key << " is no " << type->second << ": " << value;
    left.erase(key);
    if (value.is_object()) {
      strike(value, key + ".", documented, left);
    }
  }
}

}  // namespace

TEST_F(JsonAnswers, haveTheKeysOfThePageAndNoOther) {
  write("a.obj", tetrahedronObj());
  write("empty.obj", "\n");
  const std::map<std::string, std::vector<Arguments>> runs = {
      {"info", {{"a.obj"}, {"empty.obj"}}},
      {"check", {{"a.obj"}, {"empty.obj"}}},
      {"diff", {{"a.obj", "a.obj"}, {"a.obj", "empty.obj"}}},
      {"weld", {{"a.obj", "w.zel"}, {"empty.obj", "w.zel"}}},
      {"unfold", {{"a.obj", "u.zel"}, {"empty.obj", "u.zel"}}},
      {"fit", {{"a.obj"}, {"empty.obj"}}},
      {"formats", {{}}},
  };
  const std::map<std::string, Keys> documented = documentedKeys();
  EXPECT_EQ(documented.size(), runs.size());
  for (const auto& [command, lines] : runs) {
    SCOPED_TRACE(command);
    ASSERT_TRUE(documented.contains(command));
    Keys left = documented.at(command);
    for (Arguments arguments : lines) {
      arguments.insert(arguments.begin(), command);
      arguments.emplace_back("--json");
      const ProgramRun done = run(arguments);
      ASSERT_LE(done.exitCode, 1) << done.err;
      ASSERT_EQ(std::ranges::count(done.out, '\n'), 1);
      const Json answer = Json::parse(done.out);
      for (const Json& each : answer.is_array() ? answer : Json::array({answer})) {
        strike(each, "", documented.at(command), left);
      }
    }
    EXPECT_TRUE(left.empty()) << "never printed: " << left.begin()->first;
  }
}

TEST_F(JsonAnswers, ofEveryCommandThatHasThemAreOnThePage) {
  const std::map<std::string, Keys> documented = documentedKeys();
  const std::string fish = run({"completion", "fish"}).out;
  static const std::regex flag("__fish_seen_subcommand_from ([a-z]+)' -l json ");
  std::size_t commands = 0;
  for (std::sregex_iterator hit(fish.begin(), fish.end(), flag), end; hit != end; ++hit) {
    EXPECT_TRUE(documented.contains((*hit)[1])) << *(hit->begin() + 1);
    ++commands;
  }
  EXPECT_EQ(commands, documented.size());
}

}  // namespace zel::test
