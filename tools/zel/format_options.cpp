#include "tools/zel/format_options.h"

#include "tools/zel/failure.h"
#include "tools/zel/file_format.h"

namespace zel::program {

namespace {

/// @param find inputFormat or outputFormat, which throw for a format that they do not know.
template <class Find>
Option::Take checkedBy(Find find, const char* why) {
  return [find, why](const std::string& word) {
    try {
      (void)find("", word);
      return std::string();
    } catch (const Failure&) {
      return "\"" + word + "\" is no format that is " + why + "; zel formats lists them";
    }
  };
}

std::vector<std::string> formatNames(bool areWritten) {
  std::vector<std::string> names;
  for (const KnownFormat& format : knownFormats()) {
    if (format.isWritten || !areWritten) {
      names.push_back(format.name);
    }
  }
  return names;
}

}  // namespace

void declareFrom(Options& options, std::string& target, const std::string& help) {
  options.value("--from", "FORMAT", target, help)
      .checkedBy(checkedBy(inputFormat, "read"))
      .suggesting([] { return formatNames(false); });
}

void declareTo(Options& options, std::string& target) {
  options.value("--to", "FORMAT", target, "Write as this format, whatever the name says")
      .checkedBy(checkedBy(outputFormat, "written"))
      .suggesting([] { return formatNames(true); });
}

}  // namespace zel::program
