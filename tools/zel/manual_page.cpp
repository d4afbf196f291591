#include <algorithm>
#include <sstream>

#include "tools/zel/exit_code.h"
#include "tools/zel/help_text.h"

namespace zel::program {

namespace {

/// A line of text for groff, with nothing in it that it would take for a request or a hyphen.
std::string roffLine(const std::string& text) {
  std::string safe = text.starts_with('.') || text.starts_with('\'') ? "\\&" : "";
  for (const char c : text) {
    safe += c == '\\' ? "\\e" : c == '-' ? "\\-" : std::string(1, c);
  }
  return safe + "\n";
}

std::string title(const std::string& request, const std::string& text) {
  return request + " " + roffLine(text);
}

std::string entry(const std::string& name, const std::string& text) {
  return ".TP\n.B " + roffLine(name) + roffLine(text);
}

std::string entries(const Options& options) {
  std::string text;
  for (const Option& option : options.all()) {
    text += entry(shownName(option), explained(option));
  }
  return text;
}

/// A paragraph; lines that begin with a blank keep their form.
std::string paragraph(const std::string& note) {
  std::string text = ".PP\n";
  bool keepsForm = false;
  std::istringstream lines(note);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with(' ') != keepsForm) {
      keepsForm = !keepsForm;
      text += keepsForm ? ".PP\n.nf\n" : ".fi\n.PP\n";
    }
    text += roffLine(line);
  }
  return keepsForm ? text + ".fi\n" : text;
}

std::string chapter(const Verb& verb) {
  std::string text = title(".SS", synopsis(verb)) + roffLine(verb.summary + ".");
  text += entries(verb.options);
  for (const std::string& note : verb.options.notes()) {
    text += paragraph(note);
  }
  text += ".PP\nExample:\n.PP\n.nf\n";
  for (const std::string& example : verb.options.examples()) {
    text += roffLine("    " + example);
  }
  return text + ".fi\n";
}

}  // namespace

std::string manualPage(const ProgramUsage& usage) {
  std::string text = ".TH ZEL 1 \"\" \"" + versionText();
  text.back() = '"';
  text +=
      " \"User Commands\"\n"
      ".SH NAME\n"
      "zel \\- look into, weld, convert and compare 3D meshes\n"
      ".SH SYNOPSIS\n"
      ".B zel\n"
      ".I SUBCOMMAND\n"
      ".RI [ OPTIONS ]\n"
      ".I ...\n"
      ".SH DESCRIPTION\n"
      "Results go to standard output, all else to standard error. A failure is told in one line,\n"
      "zel: FILE: WHAT: WHY. The name \\- stands for standard input or standard output.\n"
      ".SH OPTIONS OF ALL SUBCOMMANDS\n";
  text += entries(usage.common) + ".SH SUBCOMMANDS\n";
  for (const Verb& verb : usage.verbs) {
    text += chapter(verb);
  }
  text += ".SH EXIT STATUS\n";
  for (const ExitCodeMeaning& code : kExitCodes) {
    text += entry(std::to_string(static_cast<int>(code.code)), code.meaning);
  }
  return text;
}

}  // namespace zel::program
