#pragma once

#include <string>

#include "tools/zel/json.h"

namespace zel::program {

/// Whether the build put three.js into the program; without it there is no page.
[[nodiscard]] bool canMakeReportPage();

/// A page that needs nothing beside itself. @param data what page.js reads; none of its texts can
/// become markup or script.
[[nodiscard]] std::string reportPage(const Json& data);

}  // namespace zel::program
