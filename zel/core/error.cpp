#include "zel/core/error.h"

#include <algorithm>
#include <new>

namespace zel {

struct Error::Texts {
  std::string line;
  std::string file;
  std::string action;
  std::string reason;
  FilePlace place;
};

namespace {

constexpr const char* kMemoryAction = "cannot go on";
constexpr const char* kMemoryReason = "out of memory";
constexpr const char* kMemoryLine = "cannot go on: out of memory";

std::string inOneLine(const std::string& file, FilePlace place, const std::string& action,
                      const std::string& reason) {
  std::string line = file;
  if (place.line > 0) {
    line += ":" + std::to_string(place.line);
  } else if (place.byte >= 0) {
    line += ": byte " + std::to_string(place.byte);
  }
  for (const std::string* part : {&action, &reason}) {
    if (!part->empty()) {
      line += (line.empty() ? "" : ": ") + *part;
    }
  }
  std::ranges::replace_if(
      line, [](unsigned char c) { return c < 0x20 || c == 0x7F; }, '?');
  return line;
}

}  // namespace

Error::Error(ErrorCode code, const std::string& what, const std::string& why,
             const std::string& file, FilePlace place) noexcept
    : code_(code) {
  try {
    texts_ = std::make_shared<const Texts>(
        Texts{inOneLine(file, place, what, why), file, what, why, place});
  } catch (const std::bad_alloc&) {
    code_ = ErrorCode::kExhausted;
  }
}

Error::~Error() = default;

Error Error::outOfMemory() noexcept { return Error(ErrorCode::kExhausted); }

const char* Error::what() const noexcept {
  return texts_ != nullptr ? texts_->line.c_str() : kMemoryLine;
}

const char* Error::file() const noexcept { return texts_ != nullptr ? texts_->file.c_str() : ""; }

const char* Error::action() const noexcept {
  return texts_ != nullptr ? texts_->action.c_str() : kMemoryAction;
}

const char* Error::reason() const noexcept {
  return texts_ != nullptr ? texts_->reason.c_str() : kMemoryReason;
}

FilePlace Error::place() const noexcept { return texts_ != nullptr ? texts_->place : FilePlace{}; }

}  // namespace zel
