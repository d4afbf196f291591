#pragma once

#include <string_view>

namespace zel::program {

/// A file that the build put into the program.
struct EmbeddedFile {
  std::string_view text;    ///< empty when the build did not find it
  std::string_view sha256;  ///< of the text, as 64 hexadecimal digits
};

extern const EmbeddedFile kReportTemplate;  ///< page.html
extern const EmbeddedFile kReportStyle;     ///< page.css
extern const EmbeddedFile kReportScript;    ///< page.js
extern const EmbeddedFile kReportNotice;    ///< the licence of what others wrote
extern const EmbeddedFile kThreeScript;     ///< three.js, which draws
extern const EmbeddedFile kOrbitScript;     ///< its controls

}  // namespace zel::program
