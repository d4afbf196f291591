#include "zel/textfile/file_version.h"

#include <string>
#include <string_view>

#include "zel/core/constants.h"
#include "zel/core/detail/refused_memory.h"
#include "zel/core/platform.h"
#include "zel/textfile/detail/text_view.h"

namespace {

struct Version {
  std::string_view tag;
  int number;
};

constexpr Version kVersions[] = {
    {"zel1.0", 10},   {"zel1.1", 11},   {"zel1.2", 12}, {"zel1.3", 13},     {"zel1.4", 14},
    {"zel3.0", 30},   {"zel3.1", 31},   {"zel3.2", 32}, {"zel3.3", 33},     {"zel3.4", 34},
    {"zel3.5", 35},   {"zel3.6", 36},   {"zel3.7", 37}, {"zel3.8", 38},     {"zel3.9", 39},
    {"zel4.0", 40},   {"zel4.1", 41},   {"zel4.2", 42}, {"zel4.3", 43},     {"zel4.4", 44},
    {"zel4.5", 45},   {"zel4.6", 46},   {"zel4.7", 47}, {"zel4.008", 4008}, {"MAC1.00", 100},
    {"MAC1.01", 101}, {"MAC1.02", 102},
};

struct Message {
  int code;
  std::string_view gbk;
};

// GBK bytes; the text in UTF-8 stands beside each.
constexpr Message kMessages[] = {
    {107, "\xCE\xC4\xBC\xFE\xB6\xC1\xC8\xA1\xCA\xA7\xB0\xDC"},  // 文件读取失败
    {108, "\xCE\xC4\xBC\xFE\xB1\xA3\xB4\xE6\xCA\xA7\xB0\xDC"},  // 文件保存失败
    {109, "\xCE\xC4\xBC\xFE\xB4\xF2\xBF\xAA\xCA\xA7\xB0\xDC"},  // 文件打开失败
    {110, "\xCE\xC4\xBC\xFE\xC0\xE0\xD0\xCD\xB2\xBB\xB6\xD4"},  // 文件类型不对
    {111, "\xCE\xC4\xBC\xFE\xB0\xE6\xB1\xBE\xB2\xBB\xB6\xD4"},  // 文件版本不对
    {112, "\xCE\xC6\xC0\xED\xCE\xC4\xBC\xFE\xB4\xF2\xBF\xAA\xCA\xA7\xB0\xDC"},  // 纹理文件打开失败
    {113, "\xCE\xC6\xC0\xED\xCE\xC4\xBC\xFE\xC0\xE0\xD0\xCD\xB2\xBB\xB6\xD4"},  // 纹理文件类型不对
    {114, "\xCE\xC6\xC0\xED\xCE\xC4\xBC\xFE\xB0\xE6\xB1\xBE\xB2\xBB\xB6\xD4"},  // 纹理文件版本不对
    {142, "\xCA\xFD\xBE\xDD\xB4\xED\xCE\xF3"},                                  // 数据错误
};
constexpr std::string_view kUnknownError = "\xCE\xB4\xD6\xAA\xB4\xED\xCE\xF3";  // 未知错误

std::string_view messageOf(int code) {
  for (const Message& message : kMessages) {
    if (message.code == code) {
      return message.gbk;
    }
  }
  return kUnknownError;
}

}  // namespace

int slGetFileVersion(const char* tag) {
  const std::string_view text = zel::viewOf(tag);
  for (const Version& version : kVersions) {
    if (version.tag == text) {
      return version.number;
    }
  }
  throw zel::kVersionFailure;
}

int slFileMessage(int code, const char* name) {
  const std::string_view message = messageOf(code);
  const std::string text = zel::answerOr<std::string>({}, [&] {
    std::string whole(message);
    if (name != nullptr) {
      whole.append(": ").append(name);
    }
    return whole;
  });
  static_cast<void>(zel::answerOr(0, [&] {
    zel::platform().showMessage(text.empty() ? message.data() : text.c_str());
    return 1;
  }));
  return 1;
}
