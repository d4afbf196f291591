#pragma once

#include <string>

#include "tools/zel/json.h"

namespace zel::program {

/// What a subcommand found out, said once and printed for people or for programs.
class Report {
 public:
  /// Named values for programs.
  using Values = Json::Members;

  Report() = default;
  /// Begins with the file it is about, in both forms.
  explicit Report(const std::string& file);

  /// A row for people, "label  shown", and what of it programs get. A row that shows nothing is
  /// left out.
  void row(const std::string& label, const std::string& shown, Values values);
  /// A count: both get it.
  void count(const std::string& label, const std::string& key, long long number);
  /// A measure: people get six digits and the unit.
  void measure(const std::string& label, const std::string& key, double number,
               const std::string& unit = "");
  /// Something that is so or not.
  void answer(const std::string& label, const std::string& key, bool isSo,
              const std::string& yes = "yes", const std::string& no = "no");
  /// A line for people as it stands, and values for programs.
  void line(const std::string& shown, Values values);

  /// The form that was asked for, with its end of line.
  [[nodiscard]] std::string print(bool asJson) const;

 private:
  void add(Values values);

  std::string text_;
  Values values_;
};

}  // namespace zel::program
