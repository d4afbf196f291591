#include "tools/zel/completion.h"

#include <utility>

namespace zel::program {

namespace {

/// What may stand in the place of a word.
enum class Place { kFile, kOffered, kOther };

Place placeOf(const Option& option) {
  if (!option.offered().empty()) {
    return Place::kOffered;
  }
  const bool isFile = option.kind() == Option::Kind::kArgument || option.word() == "FILE";
  return isFile ? Place::kFile : Place::kOther;
}

std::string offeredText(const Option& option) {
  std::string text;
  for (const std::string& word : option.offered()) {
    text += (text.empty() ? "" : " ") + word;
  }
  return text;
}

/// A text in which `special` characters stand behind a `mark`.
std::string marked(const std::string& text, const std::string& special, const std::string& mark) {
  std::string safe;
  for (const char c : text) {
    safe += (special.find(c) != std::string::npos ? mark : "") + c;
  }
  return safe;
}

template <class Visit>
void forEachOption(const Options& common, const Options& own, Visit visit) {
  for (const Options* const options : {&own, &common}) {
    for (const Option& option : options->all()) {
      visit(option);
    }
  }
}

std::string verbNames(const ProgramUsage& usage) {
  std::string names;
  for (const Verb& verb : usage.verbs) {
    names += (names.empty() ? "" : " ") + verb.name;
  }
  return names;
}

std::string bashFlags(const Options& common, const Options& own) {
  std::string names;
  forEachOption(common, own, [&](const Option& option) {
    if (option.kind() != Option::Kind::kArgument) {
      names += (names.empty() ? "" : " ") + option.name();
    }
  });
  return names;
}

/// The branch of a subcommand: what may follow the word before, then what else may stand there.
std::string bashBranch(const Verb& verb, const Options& common) {
  std::string values;
  std::string arguments;
  forEachOption(common, verb.options, [&](const Option& option) {
    const Place place = placeOf(option);
    if (option.kind() == Option::Kind::kArgument) {
      arguments += offeredText(option);
    } else if (option.kind() == Option::Kind::kValue) {
      const std::string names =
          option.shortName().empty() ? option.name() : option.shortName() + " | " + option.name();
      values += "        " + names + ") " +
                (place == Place::kOffered ? "offer='" + offeredText(option) + "'"
                 : place == Place::kFile  ? "offer=''"
                                          : "offer='' files=no") +
                " ;;\n";
    }
  });
  return "    " + verb.name + ")\n      case $before in\n" + values + "        *) flags='" +
         bashFlags(common, verb.options) + "' offer='" + arguments + "' ;;\n      esac\n      ;;\n";
}

/// An entry of zsh's _arguments.
std::string zshEntry(const Option& option) {
  const Place place = placeOf(option);
  std::string word;
  if (option.kind() != Option::Kind::kFlag) {
    word = ":" + option.word() + ":" +
           (place == Place::kFile      ? "_files"
            : place == Place::kOffered ? "(" + offeredText(option) + ")"
                                       : " ");
  }
  if (option.kind() == Option::Kind::kArgument) {
    return "'" +
           std::string(option.isRepeatable() ? "*"
                       : option.isRequired() ? ""
                                             : ":") +
           word + "'";
  }
  const std::string help =
      "[" + marked(marked(option.help(), "[]\\", "\\"), "'", "'\\'") + "]" + word + "'";
  if (option.shortName().empty()) {
    return "'" + std::string(option.isRepeatable() ? "*" : "") + option.name() + help;
  }
  return "'(" + option.shortName() + " " + option.name() + ")'{" + option.shortName() + "," +
         option.name() + "}'" + help;
}

std::string zshEntries(const Options& common, const Options& own, const std::string& indent) {
  std::string text;
  forEachOption(common, own,
                [&](const Option& option) { text += " \\\n" + indent + zshEntry(option); });
  return text + "\n";
}

std::string fishQuoted(const std::string& text) { return "'" + marked(text, "'\\", "\\") + "'"; }

/// The line of an option or of a positional argument.
std::string fishEntry(const Option& option, const std::string& condition) {
  const std::string start = "complete -c zel" + condition;
  const Place place = placeOf(option);
  if (option.kind() == Option::Kind::kArgument) {
    return place == Place::kFile ? start + " -F\n"
                                 : start + " -a " + fishQuoted(offeredText(option)) + "\n";
  }
  std::string text = start;
  if (!option.shortName().empty()) {
    text += " -s " + option.shortName().substr(1);
  }
  text += " -l " + option.name().substr(2);
  if (option.kind() == Option::Kind::kValue) {
    text += place == Place::kFile      ? " -r -F"
            : place == Place::kOffered ? " -x -a " + fishQuoted(offeredText(option))
                                       : " -x";
  }
  return text + " -d " + fishQuoted(option.help()) + "\n";
}

}  // namespace

std::string bashCompletion(const ProgramUsage& usage) {
  std::string text =
      "# Completion of zel for bash, made by: zel completion bash\n"
      "_zel() {\n"
      "  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}\n"
      "  local verb='' flags='' offer='' files=yes k\n"
      "  for ((k = 1; k < COMP_CWORD; k++)); do\n"
      "    [[ ${COMP_WORDS[k]} == -* ]] || { verb=${COMP_WORDS[k]}; break; }\n"
      "  done\n"
      "  case $verb in\n"
      "    '') flags='" +
      bashFlags(usage.common, {}) + "' offer='" + verbNames(usage) + "' files=no ;;\n";
  for (const Verb& verb : usage.verbs) {
    text += bashBranch(verb, usage.common);
  }
  return text +
         "  esac\n"
         "  [[ $word == -* ]] && offer=$flags\n"
         "  COMPREPLY=($(compgen -W \"$offer\" -- \"$word\"))\n"
         "  [[ $files == yes ]] || compopt +o default 2>/dev/null\n"
         "}\n"
         "complete -o default -F _zel zel\n";
}

std::string zshCompletion(const ProgramUsage& usage) {
  std::string text =
      "#compdef zel\n"
      "# Completion of zel for zsh, made by: zel completion zsh\n"
      "_zel() {\n"
      "  local curcontext=$curcontext state line\n"
      "  typeset -A opt_args\n"
      "  local -a verbs=(\n";
  for (const Verb& verb : usage.verbs) {
    text += "    '" + verb.name + ":" + marked(verb.summary, "'", "'\\'") + "'\n";
  }
  text += "  )\n  _arguments -C -S" + zshEntries(usage.common, {}, "    ");
  text.insert(text.size() - 1, " \\\n    '1: :->verb' '*:: :->rest'");
  text +=
      "  case $state in\n"
      "    verb) _describe subcommand verbs ;;\n"
      "    rest)\n"
      "      case $words[1] in\n";
  for (const Verb& verb : usage.verbs) {
    text += "        " + verb.name + ")\n          _arguments -S" +
            zshEntries(usage.common, verb.options, "            ") + "          ;;\n";
  }
  return text + "      esac\n      ;;\n  esac\n}\n_zel \"$@\"\n";
}

std::string fishCompletion(const ProgramUsage& usage) {
  std::string text =
      "# Completion of zel for fish, made by: zel completion fish\n"
      "complete -c zel -f\n";
  for (const Option& option : usage.common.all()) {
    text += fishEntry(option, "");
  }
  for (const Verb& verb : usage.verbs) {
    text += "complete -c zel -n __fish_use_subcommand -a " + verb.name + " -d " +
            fishQuoted(verb.summary) + "\n";
    const std::string condition = " -n '__fish_seen_subcommand_from " + verb.name + "'";
    std::string before;
    for (const Option& option : verb.options.all()) {
      std::string entry = fishEntry(option, condition);
      text += entry == before ? "" : entry;  // two files by place look alike
      before = std::move(entry);
    }
  }
  return text;
}

}  // namespace zel::program
