#include "zel/io/detail/text_cursor.h"

#include <string>

#include "zel/core/detail/number_scan.h"

namespace zel {

double outOfRangeReal(std::string_view number) {
  return scanReal(std::string(number).c_str()).value;
}

}  // namespace zel
