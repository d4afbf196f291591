#include "tools/zel/help_text.h"

#include <sstream>

#include "tools/zel/exit_code.h"

namespace zel::program {

namespace {

constexpr std::size_t kWidth = 88;
constexpr std::size_t kColumn = 26;

/// Fills lines with the words of a text. The first begins at column `at`, the others at `indent`.
std::string filled(const std::string& text, std::size_t at, std::size_t indent) {
  std::istringstream words(text);
  std::string lines;
  std::size_t column = at;
  for (std::string word; words >> word;) {
    if (column > indent && column + 1 + word.size() > kWidth) {
      lines += "\n" + std::string(indent, ' ');
      column = indent;
    } else if (!lines.empty()) {
      lines += ' ';
      ++column;
    }
    lines += word;
    column += word.size();
  }
  return lines + "\n";
}

/// A paragraph whose lines that begin with a blank stay as they are.
std::string paragraph(const std::string& note) {
  std::istringstream lines(note);
  std::string text;
  for (std::string line; std::getline(lines, line);) {
    text += line.starts_with(' ') ? line + "\n" : filled(line, 0, 0);
  }
  return text;
}

std::string row(const std::string& left, const std::string& right) {
  std::string line = "  " + left;
  if (line.size() + 2 > kColumn) {
    line += "\n";
    return line + std::string(kColumn, ' ') + filled(right, kColumn, kColumn);
  }
  line.resize(kColumn, ' ');
  return line + filled(right, kColumn, kColumn);
}

std::string rows(const std::string& title, const Options& options, bool areArguments) {
  std::string text;
  for (const Option& option : options.all()) {
    if ((option.kind() == Option::Kind::kArgument) == areArguments) {
      text += row(shownName(option), explained(option));
    }
  }
  return text.empty() ? text : "\n" + title + ":\n" + text;
}

}  // namespace

std::string shownName(const Option& option) {
  if (option.kind() == Option::Kind::kArgument) {
    return option.name() + (option.isRepeatable() ? "..." : "");
  }
  const std::string names =
      option.shortName().empty() ? option.name() : option.shortName() + ", " + option.name();
  return names + (option.word().empty() ? "" : " " + option.word());
}

std::string explained(const Option& option) {
  std::string text = option.help();
  if (!option.defaultText().empty()) {
    text += " (" + option.defaultText() + ")";
  }
  return text;
}

std::string synopsis(const Verb& verb) {
  std::string text = "zel " + verb.name;
  std::string required;
  std::string arguments;
  bool hasOthers = false;
  for (const Option& option : verb.options.all()) {
    if (option.kind() == Option::Kind::kArgument) {
      const std::string name = shownName(option);
      arguments += option.isRequired() ? " " + name : " [" + name + "]";
    } else if (option.isRequired()) {
      required += " " + option.name() + " " + option.word();
    } else {
      hasOthers = true;
    }
  }
  return text + arguments + required + (hasOthers ? " [OPTIONS]" : "");
}

std::string versionText() { return std::string("zel ") + ZEL_VERSION + "\n"; }

std::string helpText(const ProgramUsage& usage) {
  std::string text =
      "zel: look into, weld, convert and compare 3D meshes\n\n"
      "Usage: zel SUBCOMMAND [OPTIONS] ...\n\n"
      "Subcommands:\n";
  for (const Verb& verb : usage.verbs) {
    text += row(verb.name, verb.summary);
  }
  text += rows("Options of all subcommands", usage.common, false) + "\nExit codes:\n";
  for (const ExitCodeMeaning& code : kExitCodes) {
    text += "  " + std::to_string(static_cast<int>(code.code)) + "  " + code.meaning + "\n";
  }
  return text + "\nzel help SUBCOMMAND tells about one subcommand.\n";
}

std::string helpText(const Verb& verb, const Options& common) {
  std::string text =
      "zel " + verb.name + ": " + verb.summary + "\n\nUsage: " + synopsis(verb) + "\n";
  text += rows("Arguments", verb.options, true);
  text += rows("Options", verb.options, false);
  text += rows("Options of all subcommands", common, false);
  for (const std::string& note : verb.options.notes()) {
    text += "\n" + paragraph(note);
  }
  text += "\n";
  for (const std::string& example : verb.options.examples()) {
    text += "Example: " + example + "\n";
  }
  return text;
}

}  // namespace zel::program
