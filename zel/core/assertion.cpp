#include "zel/core/assertion.h"

#include <cstdio>

#include "zel/core/platform.h"

int slCheck(int value, int flag) { return flag != 0 ? value : 0; }

void slAssert(int code, const char* text, int condition) {
  if (condition != 0) {
    return;
  }
  std::FILE* log = std::fopen("machine.log", "a");
  if (log == nullptr) {
    return;
  }
  const zel::UtcTime now = zel::platform().utcTime();
  std::fprintf(log, "%d%d%d  %d:%d\n", now.year, now.month, now.day, now.hour, now.minute);
  std::fprintf(log, "%d   %s\n", code, text != nullptr ? text : "");
  std::fclose(log);
}
