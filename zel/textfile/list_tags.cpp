#include "zel/textfile/list_tags.h"

#include "zel/textfile/detail/tag_texts.h"
#include "zel/textfile/detail/text_view.h"

namespace {

int writeTag(char* out, const zel::TagText& tag, const char* name) {
  for (const std::string_view part : {tag.head, zel::viewOf(name), tag.tail}) {
    zel::copyText(out, part);
    out += part.size();
  }
  return 1;
}

}  // namespace

int slGetArrBeginStr(char* out, const char* name) { return writeTag(out, zel::kBeginTag, name); }

int slGetArrIndexStr(char* out, const char* name) { return writeTag(out, zel::kIndexTag, name); }

int slGetArrEndStr(char* out, const char* name) { return writeTag(out, zel::kEndTag, name); }
