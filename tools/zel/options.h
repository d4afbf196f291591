#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zel::program {

/// One flag, option or positional argument: how it is written, what it takes and where that goes.
/// The command line, the help, the manual page and the completions are all made from it.
class Option {
 public:
  enum class Kind {
    kFlag,      ///< stands alone: --json
    kValue,     ///< takes a word: --from obj
    kArgument,  ///< a word by its place: INPUT
  };
  /// Takes one word; answers why it cannot be taken, or nothing.
  using Take = std::function<std::string(const std::string& word)>;

  /// @param names "--long", "-s,--long", or the name of a positional argument.
  /// @param word  what help calls the word it takes, for example "FILE"; unused for flags.
  /// @param help  one line for people.
  Option(Kind kind, const std::string& names, std::string word, std::string help, Take take);

  /// The command line is wrong without it.
  Option& required();
  /// It takes several words: an argument all that stand there, an option one each time.
  Option& repeatable();
  /// Each word is split at this character.
  Option& separatedBy(char separator);
  /// Only these words are taken.
  Option& oneOf(std::vector<std::string> choices);
  /// Other words are taken too, but these are offered while it is typed. @param offer asked late.
  Option& suggesting(std::function<std::vector<std::string>()> offer);
  /// Only numbers in [lowest, highest] are taken.
  Option& within(double lowest, double highest);
  /// Only numbers of 0 or more are taken: distances, parts, node numbers.
  Option& notNegative();
  /// Only words for which `check` answers nothing are taken; else it answers why not.
  Option& checkedBy(Take check);
  /// The two cannot be given together. @param other must live as long as this.
  Option& excludes(const Option& other);
  /// What holds when it is not given, for the help.
  Option& byDefault(std::string text);

  [[nodiscard]] Kind kind() const { return kind_; }
  /// "--json", or the name of a positional argument.
  [[nodiscard]] const std::string& name() const { return name_; }
  /// "-q", or nothing.
  [[nodiscard]] const std::string& shortName() const { return shortName_; }
  /// Both names, separated by a comma.
  [[nodiscard]] std::string names() const;
  [[nodiscard]] const std::string& word() const { return word_; }
  [[nodiscard]] const std::string& help() const { return help_; }
  [[nodiscard]] const std::string& defaultText() const { return default_; }
  /// The only words that are taken, or those that are offered; empty when any may stand there.
  [[nodiscard]] std::vector<std::string> offered() const { return offer_ ? offer_() : choices_; }
  [[nodiscard]] const Option* excluded() const { return excluded_; }
  [[nodiscard]] bool isRequired() const { return isRequired_; }
  [[nodiscard]] bool isRepeatable() const { return isRepeatable_; }

  /// Hands a word of the command line to its place. @return why it cannot be taken, or nothing.
  [[nodiscard]] std::string take(const std::string& word) const;

 private:
  [[nodiscard]] std::string takeOne(const std::string& word) const;

  Kind kind_;
  std::string name_;
  std::string shortName_;
  std::string word_;
  std::string help_;
  std::string default_;
  std::vector<std::string> choices_;
  std::function<std::vector<std::string>()> offer_;
  std::vector<Take> takers_;  ///< the checks, then what stores the word
  const Option* excluded_ = nullptr;
  char separator_ = '\0';
  bool isRequired_ = false;
  bool isRepeatable_ = false;
};

/// What a subcommand can be told, and what its help says beside that. Targets must live as long
/// as this; those of options that are not given stay as they are. Numbers are read by the rules of
/// C, with a point, in every locale.
class Options {
 public:
  Options() = default;
  Options(const Options&) = delete;
  Options& operator=(const Options&) = delete;
  Options(Options&&) = default;
  Options& operator=(Options&&) = default;

  Option& flag(const std::string& names, bool& target, std::string help);

  /// An option that takes a word. What the target holds beforehand is told as the default, unless
  /// it is empty, 0 or absent. A list can be given several times.
  /// @tparam Target std::string, int, double, std::optional<double>, or a std::vector of texts or
  ///                whole numbers.
  template <class Target>
  Option& value(const std::string& names, const std::string& word, Target& target,
                std::string help);

  /// A word by its place; they are filled in the order in which they are declared.
  /// @tparam Target std::string, or std::vector<std::string> for all words that are left.
  template <class Target>
  Option& argument(const std::string& name, Target& target, std::string help);

  /// A paragraph for the end of the help. Lines that begin with a blank keep their form, all
  /// others may be broken anew.
  void note(std::string paragraph) { notes_.push_back(std::move(paragraph)); }
  /// A command line that shows how it is used.
  void example(std::string line) { examples_.push_back(std::move(line)); }

  [[nodiscard]] const std::deque<Option>& all() const { return options_; }
  [[nodiscard]] const std::vector<std::string>& notes() const { return notes_; }
  [[nodiscard]] const std::vector<std::string>& examples() const { return examples_; }

 private:
  template <class Target>
  Option& add(Option::Kind kind, const std::string& names, const std::string& word, Target& target,
              std::string help);

  std::deque<Option> options_;  ///< a deque, for they know each other by address
  std::vector<std::string> notes_;
  std::vector<std::string> examples_;
};

}  // namespace zel::program
