// What the program tells about itself: help, manual page, completions, errors of usage.

#include <map>
#include <regex>
#include <sstream>

#include "tests/cli/program_fixture.h"
#include "tests/cli/sample_meshes.h"
#include "tests/support/comma_locale.h"

namespace zel::test {

namespace {

class Help : public ProgramTest {
 protected:
  [[nodiscard]] std::string out(const Arguments& arguments) const {
    const ProgramRun done = run(arguments);
    EXPECT_EQ(done.exitCode, 0) << testing::PrintToString(arguments) << done.err;
    return done.out;
  }

  /// The long options of each subcommand, as its help lists them.
  [[nodiscard]] std::map<std::string, std::vector<std::string>> optionsOfVerbs() const {
    static const std::regex verb("\n  ([a-z]+) +[A-Z]");
    static const std::regex option("\n  (?:-., )?(--[a-z-]+)");
    std::map<std::string, std::vector<std::string>> found;
    const std::string all = out({"help"});
    for (std::sregex_iterator hit(all.begin(), all.end(), verb), end; hit != end; ++hit) {
      const std::string help = out({"help", (*hit)[1]});
      for (std::sregex_iterator at(help.begin(), help.end(), option); at != end; ++at) {
        found[(*hit)[1]].push_back((*at)[1]);
      }
    }
    return found;
  }

  /// What a shell answers to a script.
  [[nodiscard]] std::string shell(const std::string& name, const std::string& script) const {
    write("script", script);
    const std::string command = "cd '" + dir_.path().string() + "' && " + name + " ./script 2>&1";
    std::string answer;
    FILE* const pipe = popen(command.c_str(), "r");
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
      answer += static_cast<char>(c);
    }
    EXPECT_EQ(pclose(pipe), 0) << answer;
    return answer;
  }
};

bool hasShell(const char* name) {
  return std::system(("command -v " + std::string(name) + " >/dev/null").c_str()) == 0;
}

/// The part of a text between a mark and the next one of its kind.
std::string section(const std::string& text, const std::string& mark, const std::string& next) {
  const std::size_t start = text.find(mark);
  if (start == std::string::npos) {
    return {};
  }
  return text.substr(start, text.find(next, start + mark.size()) - start);
}

}  // namespace

TEST_F(Help, isTheSameByEveryWay) {
  EXPECT_EQ(out({"help"}), out({"--help"}));
  EXPECT_EQ(out({"help", "weld"}), out({"weld", "--help"}));
  EXPECT_EQ(out({"help", "weld"}), out({"-h", "weld", "--nonsense", "--tolerance", "x"}));
  EXPECT_EQ(out({"version"}), out({"--version"}));
  EXPECT_EQ(out({"version"}).rfind("zel ", 0), 0U);
}

TEST_F(Help, everyOptionIsInTheManualAndTheCompletions) {
  const std::string manual = std::regex_replace(out({"help", "--man"}), std::regex(R"(\\-)"), "-");
  const std::string bash = out({"completion", "bash"});
  const std::string zsh = out({"completion", "zsh"});
  const std::string fish = out({"completion", "fish"});
  const auto verbs = optionsOfVerbs();
  EXPECT_GE(verbs.size(), 15U);
  for (const auto& [verb, options] : verbs) {
    const std::string manualPart =
        section(manual, ".SS zel " + verb, ".SS ") + section(manual, ".SH OPTIONS", ".SH ");
    const std::string bashPart = section(bash, "    " + verb + ")\n", "esac");
    const std::string zshPart = section(zsh, "        " + verb + ")\n", ";;");
    EXPECT_GE(options.size(), 4U) << verb;
    for (const std::string& option : options) {
      const std::string claim = verb + " " + option;
      EXPECT_NE(manualPart.find(option), std::string::npos) << claim;
      EXPECT_NE(bashPart.find(option), std::string::npos) << claim;
      EXPECT_NE(zshPart.find(option), std::string::npos) << claim;
      EXPECT_TRUE(
          std::regex_search(fish, std::regex("zel( -n '__fish_seen_subcommand_from " + verb +
                                             "')?( -s .)? -l " + option.substr(2) + " ")))
          << claim;
    }
  }
}

TEST_F(Help, shellsCompleteWithIt) {
  for (const char* name : {"bash", "zsh", "fish"}) {
    write(name, out({"completion", name}));
  }
  const auto bash = [this](const std::string& words, int place) {
    return shell("bash", ". ./bash; COMP_WORDS=(" + words + "); COMP_CWORD=" +
                             std::to_string(place) + "; _zel; echo ${COMPREPLY[*]}");
  };
  EXPECT_EQ(bash("zel we", 1), "weld\n");
  EXPECT_EQ(bash("zel -q weld --tol", 3), "--tolerance\n");
  EXPECT_EQ(bash("zel view --up ''", 3), "y z\n");
  EXPECT_EQ(bash("zel weld ''", 2), "\n");
  EXPECT_EQ(bash("zel completion z", 2), "zsh\n");
  if (hasShell("zsh")) {
    EXPECT_EQ(shell("zsh -n", out({"completion", "zsh"})), "");
  }
  if (hasShell("fish")) {
    EXPECT_EQ(shell("fish", "source fish; complete -C 'zel view --up ' | cut -c1-6"),
              "y\tAxis\nz\tAxis\n");
    EXPECT_NE(shell("fish", "source fish; complete -C 'zel weld --t'").find("--tolerance\t"),
              std::string::npos);
  }
}

TEST_F(Help, groffReadsTheManualWithoutRemark) {
  if (!hasShell("groff")) {
    GTEST_SKIP() << "no groff";
  }
  write("zel.1", out({"help", "--man"}));
  const std::string page = shell("sh", "groff -man -Tascii -ww zel.1 | grep -c Example:");
  EXPECT_EQ(page, std::to_string(optionsOfVerbs().size()) + "\n");
}

TEST_F(Help, aWrongCommandLineGetsOneLineForOneFault) {
  write("a.obj", tetrahedronObj());
  const struct {
    Arguments arguments;
    const char* line;
  } cases[] = {
      {{}, "SUBCOMMAND: wrong usage: it is missing; zel help lists them"},
      {{"-q"}, "SUBCOMMAND: wrong usage: it is missing; zel help lists them"},
      {{"nonsense"}, "nonsense: wrong usage: no such subcommand"},
      {{"help", "nonsense"}, "nonsense: wrong usage: no such subcommand"},
      {{"info"}, "info: wrong usage: FILES is missing"},
      {{"info", "a.obj", "--nonsense", "-z"}, "--nonsense: wrong usage: no such option"},
      {{"info", "a.obj", "--json=yes"}, "--json: wrong usage: it takes no word"},
      {{"info", "a.obj", "a.obj", "--from", "off?"},
       "--from: wrong usage: \"off?\" is no format that is read; zel formats lists them"},
      {{"convert", "a.obj", "b.zel", "--to", "off"},
       "--to: wrong usage: \"off\" is no format that is written; zel formats lists them"},
      {{"convert", "a.obj"},
       "a.obj: wrong usage: name a file to write, or say --in-place for a file to replace"},
      {{"diff", "a.obj", "a.obj", "a.obj", "b.obj"}, "a.obj: wrong usage: one word too many"},
      {{"diff", "a.obj", "a.obj", "--tolerance"},
       "--tolerance: wrong usage: the word that it takes is missing"},
      {{"diff", "--tolerance=", "a.obj", "a.obj"},
       "--tolerance=: wrong usage: the word that it takes is missing"},
      {{"diff", "a.obj", "a.obj", "--tolerance", "1,5"},
       "--tolerance: wrong usage: \"1,5\" is no number of 0 or more"},
      {{"diff", "a.obj", "a.obj", "--tolerance", "-1"},
       "--tolerance: wrong usage: \"-1\" is no number of 0 or more"},
      {{"weld", "a.obj", "b.zel", "--tolerance", "nan"},
       "--tolerance: wrong usage: \"nan\" is no number of 0 or more"},
      {{"weld", "a.obj", "b.zel", "--relative", "inf"},
       "--relative: wrong usage: \"inf\" is no number of 0 or more"},
      {{"weld", "a.obj", "b.zel", "--tolerance", "0", "--tolerance", "1"},
       "--tolerance: wrong usage: it is given twice"},
      {{"weld", "a.obj", "b.zel", "--relative", "0", "--tolerance", "1"},
       "--relative: wrong usage: it cannot stand beside --tolerance"},
      {{"render", "a.obj", "-o", "a.png", "--yaw", "1e999"},
       "--yaw: wrong usage: \"1e999\" is no number"},
      {{"render", "a.obj", "-o", "a.png", "--width", "99.5"},
       "--width: wrong usage: \"99.5\" is no whole number"},
      {{"view", "a.obj", "--up", "x"}, "--up: wrong usage: \"x\" is none of y, z"},
      {{"demo", "--triangles", "5"},
       "--triangles: wrong usage: \"5\" is no number from 1000 to 10000000"},
      {{"fit", "a.obj", "--points", "1,,2"},
       "--points: wrong usage: \"\" is no number of 0 or more"},
      {{"no\nsuch"}, "no?such: wrong usage: no such subcommand"},
  };
  for (const auto& [arguments, line] : cases) {
    const ProgramRun done = run(arguments);
    EXPECT_EQ(done.exitCode, 2) << line;
    EXPECT_EQ(done.err, "zel: " + std::string(line) + "\n");
    EXPECT_EQ(done.out, "") << line;
  }
  EXPECT_FALSE(exists("b.zel"));
}

TEST_F(Help, wordsThatLookLikeOthersAreTakenAsTheyStand) {
  write("-a.obj", tetrahedronObj());
  write("[a,b].obj", tetrahedronObj());
  expectSuccess({"info", "--", "-a.obj"});
  expectSuccess({"info", "[a,b].obj", "./-a.obj"});
  expectSuccess({"diff", "-q", "[a,b].obj", "--from=obj", "--", "-a.obj"});
}

TEST_F(Help, numbersHaveAPointInEveryLocale) {
  const CommaLocale comma;
  if (!comma.reachesC()) {
    GTEST_SKIP() << "no locale with a comma";
  }
  write("a.obj", tetrahedronObj());
  const Arguments lines[] = {
      {"diff", "a.obj", "a.obj", "--tolerance", "0.5"},
      {"weld", "a.obj", "b.zel", "--tolerance", "1.5e-3"},
      {"weld", "a.obj", "c.zel", "--relative", "0.001"},
      {"render", "a.obj", "-o", "a.png", "--yaw", "-20.5", "--pitch", "12.25", "--width", "64"},
  };
  for (const Arguments& arguments : lines) {
    const ProgramRun german = run(arguments, {.environment = {"LC_ALL=de_DE"}});
    const bool hasDrawn = arguments[0] != "render" || german.exitCode != 6;
    EXPECT_EQ(german.exitCode, hasDrawn ? 0 : 6) << german.err;
  }
  Arguments wrong = lines[0];
  wrong.back() = "0,5";
  EXPECT_EQ(run(wrong, {.environment = {"LC_ALL=de_DE"}}).exitCode, 2);
  EXPECT_EQ(run({"info", "a.obj", "--json"}, {.environment = {"LC_ALL=de_DE"}}).out,
            run({"info", "a.obj", "--json"}).out);
}

}  // namespace zel::test
