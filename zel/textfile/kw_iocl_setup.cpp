// Opening, closing, names and versions.

#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "zel/core/constants.h"
#include "zel/core/detail/refused_memory.h"
#include "zel/textfile/detail/platform_stdio.h"
#include "zel/textfile/detail/text_view.h"
#include "zel/textfile/kw_iocl.h"
#include "zel/textfile/paths.h"

namespace {

// Null when the file cannot be opened, for whatever reason.
FILE* openOrNull(const char* fileName, const char* mode) {
  return zel::answerOr<FILE*>(nullptr,
                              [&] { return zel::openStream(zel::viewOf(fileName).data(), mode); });
}

}  // namespace

KwIOCL::Handle::Handle(const Handle& other) noexcept : shared_(other.shared_) {}

KwIOCL::Handle& KwIOCL::Handle::operator=(const Handle& other) {
  if (shared_ != other.shared_) {
    close();
    shared_ = other.shared_;
    settle();
  }
  return *this;
}

KwIOCL::Handle::~Handle() { close(); }

// The file is the handle's from the call on: when no memory is left it is closed.
void KwIOCL::Handle::adopt(FILE* file, bool isReadOnly, bool isWritten) {
  shared_ = zel::answerOr<std::shared_ptr<Stream>>(nullptr, [&] {
    return std::make_shared<Stream>(Stream{file, isReadOnly, isWritten, false});
  });
  isOwner_ = shared_ != nullptr;
  if (!isOwner_) {
    std::fclose(file);
    throw zel::kOpenFailure;
  }
}

void KwIOCL::Handle::noteFailure() const {
  FILE* file = get();
  if (std::ferror(file) != 0) {
    shared_->isWritten = shared_->isWritten || zel::isBeingWritten(file);
    shared_->hasLost = shared_->hasLost || shared_->isWritten;
    std::clearerr(file);
  }
}

void KwIOCL::Handle::seek(std::int64_t offset, int origin) const {
  // Afterwards nobody can tell whether the stream was written to.
  shared_->isWritten = shared_->isWritten || zel::isBeingWritten(get());
  zel::seek(get(), offset, origin);
  noteFailure();
}

void KwIOCL::Handle::close() noexcept {
  if (isOwner_ && shared_->file != nullptr) {
    const bool isWritten = shared_->isWritten || zel::isBeingWritten(shared_->file);
    const bool hasArrived = zel::flushAndClose(shared_->file);
    const bool hasLost = shared_->hasLost || (isWritten && !hasArrived);
    owesFailure_ = owesFailure_ || (hasLost && !shared_->isReadOnly);
    shared_->file = nullptr;
  }
  shared_.reset();
  isOwner_ = false;
}

void KwIOCL::Handle::settle() {
  if (std::exchange(owesFailure_, false)) {
    throw zel::kWriteFailure;
  }
}

KwIOCL::KwIOCL(const KwIOCL& other) = default;
KwIOCL& KwIOCL::operator=(const KwIOCL& other) = default;
KwIOCL::~KwIOCL() = default;

int KwIOCL::OpenM(const char* fileName, const char* mode) {
  stream_.close();
  const std::string_view modeText = zel::viewOf(mode);
  FILE* file = modeText.empty() ? nullptr : openOrNull(fileName, mode);
  if (file == nullptr) {
    throw zel::kOpenFailure;
  }
  const bool isForReading = modeText.find('r') != std::string_view::npos;
  const bool isForBoth = modeText.find('+') != std::string_view::npos;
  stream_.adopt(file, isForReading && !isForBoth, !isForReading);
  SetFileNameM(fileName);
  ioType_ = modeText.find('b') != std::string_view::npos ? 1 : 0;
  fileLength_ = zel::seek(file, 0, SEEK_END) == 0 ? zel::tell(file) : 0;
  std::rewind(file);
  stream_.settle();
  return 1;
}

int KwIOCL::CloseM() {
  stream_.close();
  stream_.settle();
  return 1;
}

int KwIOCL::CreateIndirectlyM(FILE* file, const char* fileName, const char* versionStr,
                              int versionNum) {
  if (file == nullptr || file != stream_.get()) {
    stream_.close();
    if (file != nullptr) {
      stream_.adopt(file, !zel::takesWrites(file), zel::isBeingWritten(file));
    }
  }
  SetFileNameM(fileName);
  SetVersionStringM(versionStr);
  SetVersionNumM(versionNum);
  stream_.settle();
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
