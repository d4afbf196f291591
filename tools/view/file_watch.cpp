#include "tools/view/file_watch.h"

#include <system_error>
#include <utility>

namespace zel::view {

FileWatch::FileWatch(std::string file) : file_(std::move(file)), known_(look()), latest_(known_) {}

FileWatch::Stamp FileWatch::look() const {
  std::error_code error;
  Stamp stamp;
  stamp.size = std::filesystem::file_size(file_, error);
  if (error) {
    return {};
  }
  stamp.written = std::filesystem::last_write_time(file_, error);
  stamp.exists = !error;
  return stamp;
}

bool FileWatch::hasChanged(Time now) {
  const Stamp stamp = file_.empty() ? Stamp{} : look();
  if (stamp != latest_) {
    latest_ = stamp;
    since_ = now;
  }
  if (!latest_.exists || latest_ == known_ || now - since_ < kRest) {
    return false;
  }
  known_ = latest_;
  return true;
}

}  // namespace zel::view
