#include "tools/zel/command_line.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <cstdint>
#include <deque>

#include "tools/zel/failure.h"

namespace zel::program {

namespace {

constexpr const char* kMissingWord = "the word that it takes is missing";

bool takesNextWord(const Option& option, const std::string& word) {
  return option.kind() == Option::Kind::kValue && !word.empty() &&
         (word == option.name() || word == option.shortName());
}

/// The words that each option was given, found by CLI11; what they mean is our own affair.
class Sorter {
 public:
  explicit Sorter(const std::string& verb) : verb_(verb) {
    app_.set_help_flag();
    app_.allow_extras();
  }
  // CLI11 keeps the addresses of the lists of words.
  Sorter(const Sorter&) = delete;
  Sorter& operator=(const Sorter&) = delete;

  void declare(const Options& options) {
    for (const Option& option : options.all()) {
      Given& given = given_.emplace_back(&option);
      const auto keep = [&given](const CLI::results_t& words) {
        given.words = words;
        return true;
      };
      if (option.kind() == Option::Kind::kFlag) {
        app_.add_flag_function(option.names(), [&given](std::int64_t) { given.words = {""}; })
            ->disable_flag_override();
      } else if (option.kind() == Option::Kind::kValue) {
        app_.add_option(option.names(), keep)
            ->allow_extra_args(false)
            ->expected(1)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
      }
    }
  }

  void sort(std::vector<std::string> words) {
    for (const std::string& word : words) {
      if (word == "--") {
        break;
      }
      if (word.starts_with("--") && word.find('=') == word.size() - 1) {
        throw misuse(word, kMissingWord);
      }
    }
    std::ranges::reverse(words);
    try {
      app_.parse(words);
    } catch (const CLI::ParseError& error) {
      const std::string text = error.what();
      std::string name = text.substr(0, text.find_first_of(": "));
      name.insert(0, name.starts_with('-') ? "" : "--");
      const bool isMissing = dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr &&
                             text.find(':') != std::string::npos;
      throw misuse(name, isMissing ? kMissingWord : "it takes no word");
    }
  }

  /// The words that no option took. @throws Failure for an option that does not exist.
  void placeArguments() {
    bool areAllArguments = false;
    for (const std::string& word : app_.remaining()) {
      if (!areAllArguments && word == "--") {
        areAllArguments = true;
        continue;
      }
      if (!areAllArguments && word.size() > 1 && word[0] == '-') {
        throw misuse(word, "no such option");
      }
      const auto place = std::ranges::find_if(given_, &Given::hasRoom);
      if (place == given_.end()) {
        throw misuse(word, "one word too many");
      }
      place->words.push_back(word);
    }
  }

  void hand(const Options& options) const {
    for (const Option& option : options.all()) {
      hand(entryOf(option));
    }
  }

 private:
  struct Given {
    explicit Given(const Option* what) : option(what) {}
    const Option* option;
    std::vector<std::string> words;  ///< one that is empty for a flag
    [[nodiscard]] bool hasRoom() const {
      return option->kind() == Option::Kind::kArgument && (option->isRepeatable() || words.empty());
    }
  };

  [[nodiscard]] const Given& entryOf(const Option& option) const {
    return *std::ranges::find(given_, &option, &Given::option);
  }

  void hand(const Given& given) const {
    const Option& option = *given.option;
    if (given.words.empty() && option.isRequired()) {
      throw misuse(verb_, option.name() + " is missing");
    }
    if (given.words.size() > 1 && !option.isRepeatable()) {
      throw misuse(option.name(), "it is given twice");
    }
    for (const std::string& word : given.words) {
      if (option.excluded() != nullptr && !entryOf(*option.excluded()).words.empty()) {
        throw misuse(option.name(), "it cannot stand beside " + option.excluded()->name());
      }
      const std::string why = option.take(word);
      if (!why.empty()) {
        throw misuse(option.name(), why);
      }
    }
  }

  std::string verb_;
  CLI::App app_;
  std::deque<Given> given_;
};

}  // namespace

const Verb& verbNamed(const ProgramUsage& usage, const std::string& name) {
  const auto verb = std::ranges::find(usage.verbs, name, &Verb::name);
  if (verb == usage.verbs.end()) {
    throw misuse(name, "no such subcommand");
  }
  return *verb;
}

std::optional<std::size_t> findVerb(const std::vector<std::string>& words, const Options& common) {
  for (std::size_t k = 0; k < words.size(); ++k) {
    if (words[k].empty() || words[k][0] != '-') {
      return k;
    }
    k += std::ranges::any_of(common.all(),
                             [&](const Option& option) { return takesNextWord(option, words[k]); });
  }
  return std::nullopt;
}

void parseWords(const std::vector<std::string>& words, const Options& common, const Verb& verb,
                const std::function<bool()>& isDone) {
  Sorter sorter(verb.name);
  sorter.declare(common);
  sorter.declare(verb.options);
  sorter.sort(words);
  sorter.hand(common);
  if (!isDone()) {
    sorter.placeArguments();
    sorter.hand(verb.options);
  }
}

}  // namespace zel::program
