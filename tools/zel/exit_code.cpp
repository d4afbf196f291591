#include "tools/zel/exit_code.h"

namespace zel::program {

std::string exitCodeTable() {
  return "Exit codes:\n"
         "  0  done\n"
         "  1  a check or comparison found something\n"
         "  2  wrong usage\n"
         "  3  an input cannot be read or is malformed\n"
         "  4  an output cannot be written\n"
         "  5  out of memory or over a limit\n"
         "  6  no graphics\n";
}

}  // namespace zel::program
