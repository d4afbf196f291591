#include "tools/zel/foreign/mesh_message.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <limits>

namespace zel::program {

namespace {

constexpr std::uint64_t kMark = 0x7a656c4d65736831;
constexpr std::uint64_t kMostRemarks = 1000;
constexpr std::uint64_t kLongestText = 4096;

/// What every message begins with. Both ends are the same program on the same machine.
struct Head {
  std::uint64_t mark = kMark;
  std::int64_t code = 0;
  std::uint64_t why = 0;                      ///< bytes of the reason, which follows
  std::array<std::uint64_t, 6> lengths = {};  ///< of the arrays, which follow in this order
  std::uint64_t remarks = 0;                  ///< which come last
};

struct RemarkHead {
  std::int64_t kind = 0;
  std::int64_t count = 0;
  std::uint64_t length = 0;
};

template <class Mesh, class Visit>
bool eachArray(Mesh& mesh, Visit visit) {
  return visit(0, mesh.points) && visit(1, mesh.triangles) && visit(2, mesh.quads) &&
         visit(3, mesh.nodeNormals) && visit(4, mesh.triangleTexture) && visit(5, mesh.quadTexture);
}

template <class Value>
bool send(const FileDescriptor& pipe, const Value* values, std::size_t count) {
  return pipe.writeAll(reinterpret_cast<const char*>(values), count * sizeof(Value));
}

bool areBelievable(const std::array<std::uint64_t, 6>& lengths) {
  const auto fits = [](std::uint64_t length, std::uint64_t wanted) {
    return length == 0 || length == wanted;
  };
  const auto& [points, triangles, quads, normals, triangleTexture, quadTexture] = lengths;
  constexpr std::uint64_t kMost = std::numeric_limits<int>::max();
  return std::ranges::all_of(lengths, [](std::uint64_t length) { return length <= 3 * kMost; }) &&
         points % 3 == 0 && triangles % 3 == 0 && quads % 4 == 0 && fits(normals, points) &&
         fits(triangleTexture, 2 * triangles) && fits(quadTexture, 2 * quads);
}

/// The end of a pipe from which a message comes.
class Receiver {
 public:
  Receiver(const FileDescriptor& pipe, double seconds)
      : pipe_(pipe),
        end_(std::chrono::steady_clock::now() +
             std::chrono::milliseconds(static_cast<long long>(1e3 * seconds))) {}

  [[nodiscard]] bool isLate() const { return isLate_; }

  bool take(void* target, std::size_t size) {
    for (char* bytes = static_cast<char*>(target); size > 0;) {
      const ssize_t got = wait() ? read(pipe_.get(), bytes, size) : 0;
      if (got < 0 && errno == EINTR) {
        continue;
      }
      if (got <= 0) {
        return false;
      }
      bytes += got;
      size -= static_cast<std::size_t>(got);
    }
    return true;
  }

  template <class List>
  bool takeList(List& list, std::uint64_t length) {
    constexpr std::size_t kAtOnce = std::size_t{1} << 20;
    while (list.size() < length) {
      const std::size_t first = list.size();
      list.resize(first + static_cast<std::size_t>(
                              std::min<std::uint64_t>(std::max(first, kAtOnce), length - first)));
      if (!take(&list[first], (list.size() - first) * sizeof(list[0]))) {
        return false;
      }
    }
    return true;
  }

 private:
  bool wait() {
    using std::chrono::milliseconds;
    constexpr long long kAtMost = 60'000;
    pollfd waited = {pipe_.get(), POLLIN, 0};
    int ready = 0;
    while (ready == 0 || (ready < 0 && errno == EINTR)) {
      const auto left =
          std::chrono::duration_cast<milliseconds>(end_ - std::chrono::steady_clock::now()).count();
      if (left <= 0) {
        isLate_ = true;
        return false;
      }
      ready = poll(&waited, 1, static_cast<int>(std::min<long long>(left, kAtMost)));
    }
    return ready > 0;
  }

  const FileDescriptor& pipe_;
  std::chrono::steady_clock::time_point end_;
  bool isLate_ = false;
};

bool takeRemarks(Receiver& receiver, std::uint64_t count, Remarks& remarks) {
  for (std::uint64_t k = 0; k < count; ++k) {
    RemarkHead head;
    Remark remark;
    if (!receiver.take(&head, sizeof(head)) || head.length > kLongestText || head.kind < 0 ||
        head.kind > static_cast<int>(Remark::Kind::kNote) ||
        !receiver.takeList(remark.text, head.length)) {
      return false;
    }
    remark.kind = static_cast<Remark::Kind>(head.kind);
    remark.count = head.count;
    remarks.push_back(std::move(remark));
  }
  return true;
}

}  // namespace

bool sendMesh(const FileDescriptor& pipe, const ForeignMesh& mesh) {
  Head head;
  head.remarks = mesh.remarks.size();
  (void)eachArray(mesh.arrays, [&](std::size_t k, const auto& list) {
    head.lengths[k] = list.size();
    return true;
  });
  bool isSent = send(pipe, &head, 1) && eachArray(mesh.arrays, [&](std::size_t, const auto& list) {
                  return send(pipe, list.data(), list.size());
                });
  for (const Remark& remark : mesh.remarks) {
    const RemarkHead first = {static_cast<std::int64_t>(remark.kind), remark.count,
                              remark.text.size()};
    isSent = isSent && send(pipe, &first, 1) && send(pipe, remark.text.data(), remark.text.size());
  }
  return isSent;
}

bool sendRefusal(const FileDescriptor& pipe, ExitCode code, const char* why) noexcept {
  Head head;
  head.code = static_cast<std::int64_t>(code);
  head.why = std::min<std::uint64_t>(std::strlen(why), kLongestText);
  return send(pipe, &head, 1) && send(pipe, why, static_cast<std::size_t>(head.why));
}

std::optional<ForeignAnswer> receiveAnswer(const FileDescriptor& pipe, double seconds,
                                           bool& isLate) {
  Receiver receiver(pipe, seconds);
  ForeignAnswer answer;
  Head head;
  const auto takeAll = [&] {
    if (!receiver.take(&head, sizeof(head)) || head.mark != kMark || head.why > kLongestText ||
        head.remarks > kMostRemarks || !areBelievable(head.lengths)) {
      return false;
    }
    answer.code = static_cast<ExitCode>(head.code);
    if (answer.code != ExitCode::kDone && answer.code != ExitCode::kUnreadable &&
        answer.code != ExitCode::kExhausted) {
      return false;
    }
    return receiver.takeList(answer.why, head.why) &&
           eachArray(answer.mesh.arrays,
                     [&](std::size_t k, auto& list) {
                       return receiver.takeList(list, head.lengths[k]);
                     }) &&
           takeRemarks(receiver, head.remarks, answer.mesh.remarks);
  };
  const bool isWhole = takeAll();
  isLate = receiver.isLate();
  return isWhole ? std::optional(std::move(answer)) : std::nullopt;
}

}  // namespace zel::program
