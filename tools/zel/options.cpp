#include "tools/zel/options.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "tools/zel/number_text.h"

namespace zel::program {

namespace {

std::string quoted(const std::string& word) { return '"' + word + '"'; }

/// A bound for people: whole ones without an exponent.
std::string plainText(double bound) {
  const auto whole = static_cast<long long>(bound);
  return static_cast<double>(whole) == bound ? std::to_string(whole) : shortText(bound);
}

std::string joined(const std::vector<std::string>& words, const char* between) {
  std::string text;
  for (const std::string& word : words) {
    text += (text.empty() ? "" : between) + word;
  }
  return text;
}

// How a word becomes a value of each type; the answer is why it cannot.
std::string readWord(const std::string& word, std::string& value) {
  value = word;
  return {};
}

std::string readWord(const std::string& word, int& value) {
  const auto number = readNumber<int>(word);
  value = number.value_or(value);
  return number ? std::string() : quoted(word) + " is no whole number";
}

std::string readWord(const std::string& word, double& value) {
  const auto number = readNumber<double>(word);
  value = number.value_or(value);
  return number ? std::string() : quoted(word) + " is no number";
}

std::string readWord(const std::string& word, std::optional<double>& value) {
  return readWord(word, value.emplace());
}

template <class Value>
std::string readWord(const std::string& word, std::vector<Value>& values) {
  return readWord(word, values.emplace_back());
}

std::string defaultOf(const std::string& value) { return value; }
std::string defaultOf(double value) { return value == 0 ? std::string() : shortText(value); }
std::string defaultOf(int value) { return value == 0 ? std::string() : std::to_string(value); }
template <class Other>
std::string defaultOf(const Other& /*value*/) {
  return {};
}

template <class Target>
constexpr bool kIsList = false;
template <class Value>
constexpr bool kIsList<std::vector<Value>> = true;

}  // namespace

Option::Option(Kind kind, const std::string& names, std::string word, std::string help, Take take)
    : kind_(kind), word_(std::move(word)), help_(std::move(help)), takers_{std::move(take)} {
  const std::size_t comma = names.find(',');
  name_ = comma == std::string::npos ? names : names.substr(comma + 1);
  shortName_ = comma == std::string::npos ? "" : names.substr(0, comma);
}

std::string Option::names() const { return shortName_.empty() ? name_ : shortName_ + "," + name_; }

Option& Option::required() {
  isRequired_ = true;
  return *this;
}

Option& Option::repeatable() {
  isRepeatable_ = true;
  return *this;
}

Option& Option::separatedBy(char separator) {
  separator_ = separator;
  return *this;
}

Option& Option::oneOf(std::vector<std::string> choices) {
  choices_ = std::move(choices);
  return *this;
}

Option& Option::suggesting(std::function<std::vector<std::string>()> offer) {
  offer_ = std::move(offer);
  return *this;
}

Option& Option::within(double lowest, double highest) {
  return checkedBy([lowest, highest](const std::string& word) {
    const auto number = readNumber<double>(word);
    const bool isWithin = number && lowest <= *number && *number <= highest;
    return isWithin ? std::string()
                    : quoted(word) + " is no number from " + plainText(lowest) + " to " +
                          plainText(highest);
  });
}

Option& Option::notNegative() {
  return checkedBy([](const std::string& word) {
    return readNumber<double>(word).value_or(-1) >= 0 ? std::string()
                                                      : quoted(word) + " is no number of 0 or more";
  });
}

Option& Option::checkedBy(Take check) {
  takers_.insert(std::prev(takers_.end()), std::move(check));
  return *this;
}

Option& Option::excludes(const Option& other) {
  excluded_ = &other;
  return *this;
}

Option& Option::byDefault(std::string text) {
  default_ = std::move(text);
  return *this;
}

std::string Option::take(const std::string& word) const {
  if (separator_ == '\0') {
    return takeOne(word);
  }
  for (std::size_t start = 0; start <= word.size();) {
    const std::size_t end = std::min(word.find(separator_, start), word.size());
    std::string why = takeOne(word.substr(start, end - start));
    if (!why.empty()) {
      return why;
    }
    start = end + 1;
  }
  return {};
}

std::string Option::takeOne(const std::string& word) const {
  if (!choices_.empty() && std::ranges::find(choices_, word) == choices_.end()) {
    return quoted(word) + " is none of " + joined(choices_, ", ");
  }
  for (const Take& taker : takers_) {
    std::string why = taker(word);
    if (!why.empty()) {
      return why;
    }
  }
  return {};
}

Option& Options::flag(const std::string& names, bool& target, std::string help) {
  const auto set = [&target](const std::string&) {
    target = true;
    return std::string();
  };
  return options_.emplace_back(Option::Kind::kFlag, names, "", std::move(help), set);
}

template <class Target>
Option& Options::add(Option::Kind kind, const std::string& names, const std::string& word,
                     Target& target, std::string help) {
  const auto store = [&target](const std::string& given) { return readWord(given, target); };
  Option& option = options_.emplace_back(kind, names, word, std::move(help), store);
  option.byDefault(defaultOf(target));
  return kIsList<Target> ? option.repeatable() : option;
}

template <class Target>
Option& Options::value(const std::string& names, const std::string& word, Target& target,
                       std::string help) {
  return add(Option::Kind::kValue, names, word, target, std::move(help));
}

template <class Target>
Option& Options::argument(const std::string& name, Target& target, std::string help) {
  return add(Option::Kind::kArgument, name, name, target, std::move(help));
}

using Text = std::string;
template Option& Options::value(const Text&, const Text&, Text&, Text);
template Option& Options::value(const Text&, const Text&, int&, Text);
template Option& Options::value(const Text&, const Text&, double&, Text);
template Option& Options::value(const Text&, const Text&, std::optional<double>&, Text);
template Option& Options::value(const Text&, const Text&, std::vector<Text>&, Text);
template Option& Options::value(const Text&, const Text&, std::vector<int>&, Text);
template Option& Options::argument(const Text&, Text&, Text);
template Option& Options::argument(const Text&, std::vector<Text>&, Text);

}  // namespace zel::program
