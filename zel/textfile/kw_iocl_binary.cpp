// Raw bytes: the binary form of every value.

#include <algorithm>
#include <cstring>
#include <string_view>

#include "zel/core/constants.h"
#include "zel/textfile/detail/platform_stdio.h"
#include "zel/textfile/detail/text_view.h"
#include "zel/textfile/kw_iocl.h"

namespace {

constexpr std::size_t kChunk = 256;

}  // namespace

void KwIOCL::writeBytes(const void* bytes, std::size_t size) {
  if (std::fwrite(bytes, 1, size, writable()) != size) {
    throw zel::kWriteFailure;
  }
}

void KwIOCL::writeString(const char* text, std::size_t size) {
  const auto count = static_cast<std::int32_t>(size);
  writeBytes(&count, sizeof count);
  writeBytes(text, size);
}

void KwIOCL::readBytes(void* bytes, std::size_t size) {
  if (std::fread(bytes, 1, size, readable()) != size) {
    throw zel::kReadFailure;
  }
}

// A count is believed only when the file can hold that many bytes.
int KwIOCL::readCount() {
  std::int32_t count = 0;
  readBytes(&count, sizeof count);
  if (count < 0 || count > zel::bytesLeft(readable())) {
    throw zel::kReadFailure;
  }
  return count;
}

void KwIOCL::readString(char* text) {
  const int count = readCount();
  readBytes(text, static_cast<std::size_t>(count));
  text[count] = '\0';
}

// Reads a string past, whatever its length, and tells whether it is `text`.
bool KwIOCL::nextStringEquals(std::string_view text) {
  const auto count = static_cast<std::size_t>(readCount());
  bool equal = count == text.size();
  for (std::size_t done = 0; done < count;) {
    char chunk[kChunk];
    const std::size_t part = std::min(count - done, kChunk);
    readBytes(chunk, part);
    equal = equal && std::memcmp(chunk, text.data() + done, part) == 0;
    done += part;
  }
  return equal;
}

void KwIOCL::OutputRsM(const float* values, int count) {
  if (isText()) {
    throw zel::kWriteFailure;
  }
  writeBytes(values, sizeof(float) * static_cast<std::size_t>(std::max(count, 0)));
}

void KwIOCL::InputRsM(float* values, int count) {
  const std::size_t size = sizeof(float) * static_cast<std::size_t>(std::max(count, 0));
  if (isText() || stream_.get() == nullptr || std::fread(values, 1, size, stream_.get()) != size) {
    throw zel::kWriteFailure;
  }
}
