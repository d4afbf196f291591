// Opening, closing, names and versions.

#include <cstring>
#include <memory>
#include <new>

#include "zel/core/constants.h"
#include "zel/core/memory.h"
#include "zel/textfile/detail/platform_stdio.h"
#include "zel/textfile/detail/text_view.h"
#include "zel/textfile/kw_iocl.h"
#include "zel/textfile/paths.h"

namespace {

// Null when the file cannot be opened, for whatever reason.
FILE* openOrNull(const char* fileName, const char* mode) {
  try {
    return zel::openStream(zel::viewOf(fileName).data(), mode);
  } catch (const std::bad_alloc&) {
    kwErrorMessage(zel::kOutOfMemory);
    return nullptr;
  }
}

}  // namespace

KwIOCL::Handle::Handle(const Handle& other) noexcept : shared_(other.shared_) {}

KwIOCL::Handle& KwIOCL::Handle::operator=(const Handle& other) {
  if (shared_ != other.shared_) {
    const bool flushed = close();
    shared_ = other.shared_;
    if (!flushed) {
      throw zel::kWriteFailure;
    }
  }
  return *this;
}

KwIOCL::Handle::~Handle() { static_cast<void>(close()); }

// The file is the handle's from the call on: when no memory is left it is closed.
void KwIOCL::Handle::adopt(FILE* file) {
  try {
    shared_ = std::make_shared<FILE*>(file);
    isOwner_ = true;
  } catch (const std::bad_alloc&) {
    std::fclose(file);
    kwErrorMessage(zel::kOutOfMemory);
    throw zel::kOpenFailure;
  }
}

bool KwIOCL::Handle::close() noexcept {
  bool flushed = true;
  if (isOwner_ && *shared_ != nullptr) {
    flushed = zel::flushAndClose(*shared_);
    *shared_ = nullptr;
  }
  shared_.reset();
  isOwner_ = false;
  return flushed;
}

KwIOCL::KwIOCL(const KwIOCL& other) = default;
KwIOCL& KwIOCL::operator=(const KwIOCL& other) = default;
KwIOCL::~KwIOCL() = default;

int KwIOCL::OpenM(const char* fileName, const char* mode) {
  CloseM();
  const std::string_view modeText = zel::viewOf(mode);
  FILE* file = modeText.empty() ? nullptr : openOrNull(fileName, mode);
  if (file == nullptr) {
    throw zel::kOpenFailure;
  }
  stream_.adopt(file);
  SetFileNameM(fileName);
  ioType_ = modeText.find('b') != std::string_view::npos ? 1 : 0;
  fileLength_ = zel::seek(file, 0, SEEK_END) == 0 ? zel::tell(file) : 0;
  std::rewind(file);
  return 1;
}

int KwIOCL::CloseM() {
  if (!stream_.close()) {
    throw zel::kWriteFailure;
  }
  return 1;
}

int KwIOCL::CreateIndirectlyM(FILE* file, const char* fileName, const char* versionStr,
                              int versionNum) {
  if (file == nullptr || file != stream_.get()) {
    CloseM();
    if (file != nullptr) {
      stream_.adopt(file);
    }
  }
  SetFileNameM(fileName);
  SetVersionStringM(versionStr);
  SetVersionNumM(versionNum);
  return 1;
}

void KwIOCL::SetFileNameM(const char* fileName) {
  zel::copyTruncated(fileName_, zel::viewOf(fileName));
}

const char* KwIOCL::GetFileNameM() const { return fileName_; }

void KwIOCL::GetFilePathM(char* path) const { slGetPathAndName(fileName_, path, nullptr); }

void KwIOCL::SetVersionStringM(const char* version) {
  zel::copyTruncated(versionStr_, zel::viewOf(version));
}

const char* KwIOCL::GetVersionStrM() const { return versionStr_; }

void KwIOCL::SetVersionNumM(int number) { versionNum_ = number; }

int KwIOCL::GetVersionNumM(int* number) const {
  *number = versionNum_;
  return 1;
}

int KwIOCL::GetIoTypeM() const { return ioType_; }

FILE* KwIOCL::GetFileDescriptM() const { return stream_.get(); }
