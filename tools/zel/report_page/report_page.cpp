#include "tools/zel/report_page/report_page.h"

#include <string_view>
#include <utility>
#include <vector>

#include "tools/zel/number_text.h"
#include "tools/zel/report_page/base64.h"
#include "tools/zel/report_page/embedded_files.h"

namespace zel::program {

namespace {

/// How a content policy names a script or style that may run.
std::string policyName(const EmbeddedFile& file) {
  std::vector<std::byte> digest;
  for (std::size_t at = 0; at + 2 <= file.sha256.size(); at += 2) {
    int byte = 0;
    std::from_chars(&file.sha256[at], &file.sha256[at] + 2, byte, 16);
    digest.push_back(static_cast<std::byte>(byte));
  }
  return " 'sha256-" + base64(digest) + "'";
}

std::string policy() {
  return "default-src 'none'; base-uri 'none'; form-action 'none'; img-src data:; script-src" +
         policyName(kThreeScript) + policyName(kOrbitScript) + policyName(kReportScript) +
         "; style-src" + policyName(kReportStyle);
}

/// JSON that holds no '<', so nothing in it ends its element or begins another.
std::string inertText(const Json& data) {
  std::string text;
  for (const char c : data.line()) {
    if (c == '<') {
      text += "\\u003c";
    } else {
      text += c;
    }
  }
  return text;
}

std::string script(const EmbeddedFile& file) {
  return "<script>" + std::string(file.text) + "</script>\n";
}

}  // namespace

bool canMakeReportPage() { return !kThreeScript.text.empty() && !kOrbitScript.text.empty(); }

std::string reportPage(const Json& data) {
  const std::vector<std::pair<std::string_view, std::string>> parts = {
      {"@POLICY@", policy()},
      {"@STYLE@", std::string(kReportStyle.text)},
      {"@NOTICE@", std::string(kReportNotice.text)},
      {"@DATA@", inertText(data)},
      {"@SCRIPTS@", script(kThreeScript) + script(kOrbitScript) + script(kReportScript)}};
  std::string page;
  std::string_view rest = kReportTemplate.text;
  for (const auto& [mark, text] : parts) {  // in the order of the template: no text is searched
    const std::size_t at = rest.find(mark);
    page += rest.substr(0, at);
    page += text;
    rest.remove_prefix(at + mark.size());
  }
  return page += rest;
}

}  // namespace zel::program
