#include "zel/io/detail/input.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <istream>
#include <limits>
#include <system_error>
#include <utility>

#include "zel/core/detail/file_name.h"
#include "zel/core/detail/platform_stream.h"

namespace zel {

namespace {

constexpr const char* kReading = "cannot read";

class FileOrigin : public ByteOrigin {
 public:
  explicit FileOrigin(const std::string& name) : name_(name) {
    errno = 0;
    file_.reset(std::fopen(presentFileName(name.c_str()).c_str(), "rb"));
    if (file_ == nullptr) {
      throw systemError(ErrorCode::kUnreadable, errno, name);
    }
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);  // what reads here has a buffer of its own
    findSize();
  }

  std::size_t read(char* bytes, std::size_t size) override {
    std::size_t got = 0;
    while (got < size) {
      errno = 0;
      got += std::fread(bytes + got, 1, size - got, file_.get());
      if (got == size || std::feof(file_.get()) != 0) {
        break;
      }
      if (errno != EINTR) {
        throw systemError(ErrorCode::kUnreadable, errno, name_);
      }
      std::clearerr(file_.get());
    }
    taken_ += got;
    return got;
  }
  std::optional<std::uint64_t> bytesLeft() override {
    if (!size_) {
      return std::nullopt;
    }
    return *size_ - std::min(*size_, taken_);
  }
  bool stepBack(std::uint64_t bytes) override {
    if (!size_ || bytes > taken_ ||
        seek(file_.get(), -static_cast<std::int64_t>(bytes), SEEK_CUR) != 0) {
      return false;
    }
    taken_ -= bytes;
    return true;
  }

 private:
  // What has no length, or claims none although it has content, is read to its end.
  void findSize() {
    if (seek(file_.get(), 0, SEEK_END) == 0) {
      const std::int64_t size = tell(file_.get());
      if (size > 0 && size < std::numeric_limits<std::int64_t>::max()) {
        size_ = static_cast<std::uint64_t>(size);
      }
      seek(file_.get(), 0, SEEK_SET);
    }
  }

  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::string name_;
  std::unique_ptr<std::FILE, Closer> file_;
  std::optional<std::uint64_t> size_;
  std::uint64_t taken_ = 0;
};

class MemoryOrigin : public ByteOrigin {
 public:
  explicit MemoryOrigin(std::string_view bytes) : bytes_(bytes) {}
  std::size_t read(char* bytes, std::size_t size) override {
    const std::size_t got = std::min(size, bytes_.size() - taken_);
    std::copy_n(bytes_.data() + taken_, got, bytes);
    taken_ += got;
    return got;
  }
  std::optional<std::uint64_t> bytesLeft() override { return bytes_.size() - taken_; }
  bool stepBack(std::uint64_t bytes) override {
    taken_ -= static_cast<std::size_t>(bytes);
    return true;
  }
  std::optional<std::string_view> inMemory() override { return bytes_.substr(taken_); }

 private:
  std::string_view bytes_;
  std::size_t taken_ = 0;
};

class StreamOrigin : public ByteOrigin {
 public:
  StreamOrigin(std::istream& stream, const std::string& name) : stream_(stream), name_(name) {}
  std::size_t read(char* bytes, std::size_t size) override {
    if (stream_.eof()) {
      return 0;
    }
    stream_.read(bytes, static_cast<std::streamsize>(size));
    if (stream_.bad() || (stream_.fail() && !stream_.eof())) {
      throw Error(ErrorCode::kUnreadable, kReading, "the stream failed", name_);
    }
    return static_cast<std::size_t>(stream_.gcount());
  }

 private:
  std::istream& stream_;
  std::string name_;
};

}  // namespace

Error systemError(ErrorCode code, int error, const std::string& file) {
  if (error == ENOMEM) {
    return Error::outOfMemory();
  }
  const char* const what = code == ErrorCode::kUnreadable ? kReading : "cannot write";
  return {code, what, error == 0 ? "unknown error" : std::generic_category().message(error), file};
}

Input::Input(std::string name, std::unique_ptr<ByteOrigin> origin, bool isFile)
    : name_(std::move(name)), isFile_(isFile), origin_(std::move(origin)) {}

Input Input::ofFile(const std::string& name) {
  return {name, std::make_unique<FileOrigin>(name), true};
}

std::optional<Input> Input::beside(const std::string& name) const {
  namespace fs = std::filesystem;
  const fs::path path = pathOfName(name);
  if (!isFile_ || name.empty() || path.is_absolute()) {
    return std::nullopt;
  }
  const fs::path file = pathOfName(presentFileName(name_.c_str())).parent_path() / path;
  std::error_code error;
  if (!fs::is_regular_file(file, error)) {  // what is none may make the opening wait
    return std::nullopt;
  }
  try {
    return ofFile(nameOfPath(file));
  } catch (const Error&) {
    return std::nullopt;
  }
}

Input Input::ofBytes(std::span<const std::byte> bytes, const std::string& name) {
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  return {name, std::make_unique<MemoryOrigin>(text)};
}

Input Input::ofStream(std::istream& stream, const std::string& name) {
  return {name, std::make_unique<StreamOrigin>(stream, name)};
}

std::string_view Input::peek(std::size_t size) {
  const std::size_t known = ahead_.size() - aheadTaken_;
  if (known < size) {
    ahead_.resize(aheadTaken_ + size);
    const std::size_t got = origin_->read(ahead_.data() + aheadTaken_ + known, size - known);
    ahead_.resize(aheadTaken_ + known + got);
  }
  return {ahead_.data() + aheadTaken_, std::min(size, ahead_.size() - aheadTaken_)};
}

std::size_t Input::read(char* bytes, std::size_t size) {
  const std::size_t known = std::min(size, ahead_.size() - aheadTaken_);
  std::copy_n(ahead_.data() + aheadTaken_, known, bytes);
  aheadTaken_ += known;
  const std::size_t got = known < size ? known + origin_->read(bytes + known, size - known) : known;
  position_ += got;
  return got;
}

std::optional<std::uint64_t> Input::bytesLeft() const {
  const std::optional<std::uint64_t> left = origin_->bytesLeft();
  if (!left) {
    return std::nullopt;
  }
  return *left + (ahead_.size() - aheadTaken_);
}

bool Input::rewindTo(std::uint64_t position) {
  const std::uint64_t unread = ahead_.size() - aheadTaken_;
  if (!origin_->stepBack(position_ - position + unread)) {
    return false;
  }
  ahead_.clear();
  aheadTaken_ = 0;
  position_ = position;
  return true;
}

std::string_view Input::takeAll() {
  const std::size_t known = ahead_.size() - aheadTaken_;
  if (const std::optional<std::string_view> rest = origin_->inMemory()) {
    position_ += known + rest->size();
    return {rest->data() - known, rest->size() + known};
  }
  // One byte more than expected shows the end; without an expectation the room doubles.
  constexpr std::size_t kFirstRoom = std::size_t{1} << 16;
  const std::optional<std::uint64_t> left = bytesLeft();
  std::size_t room = left ? static_cast<std::size_t>(*left) + 1 : kFirstRoom;
  std::size_t size = 0;
  all_ = std::make_unique_for_overwrite<char[]>(room);
  while (const std::size_t got = read(all_.get() + size, room - size)) {
    size += got;
    if (size == room) {
      auto larger = std::make_unique_for_overwrite<char[]>(room * 2);
      std::memcpy(larger.get(), all_.get(), size);
      all_ = std::move(larger);
      room *= 2;
    }
  }
  return {all_.get(), size};
}

Error Input::fault(const std::string& why, FilePlace place) const {
  return {ErrorCode::kUnreadable, kReading, why, name_, place};
}

}  // namespace zel
