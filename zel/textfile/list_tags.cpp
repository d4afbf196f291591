#include "zel/textfile/list_tags.h"

#include <initializer_list>
#include <string_view>

#include "zel/textfile/detail/text_view.h"

namespace {

int joinText(char* out, std::initializer_list<std::string_view> parts) {
  for (const std::string_view part : parts) {
    zel::copyText(out, part);
    out += part.size();
  }
  return 1;
}

}  // namespace

int slGetArrBeginStr(char* out, const char* name) {
  return joinText(out, {zel::viewOf(name), "_LIST_BEGIN"});
}

int slGetArrIndexStr(char* out, const char* name) {
  return joinText(out, {"INDEX_OF_", zel::viewOf(name), "_LIST"});
}

int slGetArrEndStr(char* out, const char* name) {
  return joinText(out, {zel::viewOf(name), "_LIST_END"});
}
