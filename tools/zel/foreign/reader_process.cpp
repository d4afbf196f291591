#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <new>

#include "tools/zel/failure.h"
#include "tools/zel/foreign/foreign_mesh.h"
#include "tools/zel/foreign/mesh_message.h"
#include "tools/zel/foreign/reader_limits.h"
#include "zel/core/error.h"

namespace zel::program {

namespace {

constexpr const char* kReadWord = "--read-foreign";
constexpr int kAnswerPipe = 3;
constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20;

// Under AddressSanitizer addresses cannot be limited, and what it says must be seen.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kIsSanitized = true;
#else
constexpr bool kIsSanitized = false;
#endif

std::optional<std::uint64_t> memoryLimit;

/// What a reading process is told, as words of its command line.
struct ReadOrder {
  std::string format;
  std::string path;
  bool isNamed = false;
  ReaderLimits limits;
  pid_t parent = 0;

  [[nodiscard]] std::array<std::string, 8> words() const {
    return {"zel",
            kReadWord,
            format,
            path,
            isNamed ? "1" : "0",
            std::to_string(limits.memory),
            std::to_string(limits.processorTime),
            std::to_string(parent)};
  }

  [[nodiscard]] static std::optional<ReadOrder> of(int argc, char** argv) {
    if (argc != 8 || std::strcmp(argv[1], kReadWord) != 0) {
      return std::nullopt;
    }
    const auto number = [](const char* word, auto& value) {
      return std::from_chars(word, word + std::strlen(word), value).ec == std::errc();
    };
    ReadOrder order = {argv[2], argv[3], *argv[4] == '1', {}, 0};
    const bool areNumbers = number(argv[5], order.limits.memory) &&
                            number(argv[6], order.limits.processorTime) &&
                            number(argv[7], order.parent);
    return areNumbers ? std::optional(order) : std::nullopt;
  }
};

/// How a process ended.
struct ProcessEnd {
  int status = 0;
  std::uint64_t memory = 0;  ///< bytes that it had at once, at most
};

/// A process that ends with this object at the latest.
class ReaderProcess {
 public:
  /// @throws Failure when there can be none.
  ReaderProcess(const ReadOrder& order, const std::string& name, const FileDescriptor& pipe) {
    std::array<std::string, 8> words = order.words();
    std::array<char*, 9> pointers = {};
    for (std::size_t k = 0; k < words.size(); ++k) {
      pointers[k] = words[k].data();
    }
    posix_spawn_file_actions_t actions;
    int error = posix_spawn_file_actions_init(&actions);
    if (error == 0) {
      const auto add = [&error](int result) { error = error != 0 ? error : result; };
      add(posix_spawn_file_actions_adddup2(&actions, pipe.get(), kAnswerPipe));
      for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (!kIsSanitized || stream != STDERR_FILENO) {
          add(posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0));
        }
      }
      error = error != 0 ? error
                         : posix_spawn(&process_, "/proc/self/exe", &actions, nullptr,
                                       pointers.data(), environ);
      posix_spawn_file_actions_destroy(&actions);
    }
    if (error != 0) {
      process_ = -1;
      throw Failure(ExitCode::kExhausted, name, "no process can be started to read it",
                    systemText(error));
    }
  }
  ~ReaderProcess() { end(); }
  ReaderProcess(const ReaderProcess&) = delete;
  ReaderProcess& operator=(const ReaderProcess&) = delete;

  /// Ends the process if it still runs. One that is ending already ends as it would have.
  ProcessEnd end() {
    ProcessEnd how;
    if (process_ > 0) {
      kill(process_, SIGKILL);
      rusage usage{};
      while (wait4(process_, &how.status, 0, &usage) < 0 && errno == EINTR) {
      }
      how.memory = static_cast<std::uint64_t>(usage.ru_maxrss) * 1024;
      process_ = -1;
    }
    return how;
  }

 private:
  pid_t process_ = -1;
};

std::string memoryText(const ReaderLimits& limits) {
  return "reading it takes more than " + std::to_string(limits.memory / kMebibyte) +
         " MiB of memory; --max-memory may allow more";
}

/// Why there is no answer.
Failure silence(const std::string& name, const ReaderLimits& limits, const ProcessEnd& end) {
  if (WIFEXITED(end.status)) {
    constexpr int kNotLoaded = 127;
    return WEXITSTATUS(end.status) == kNotLoaded
               ? exhausted(name, "the process that reads it cannot start")
               : unreadable(name, "the library that reads it gave up");
  }
  const int signalNumber = WTERMSIG(end.status);
  if (signalNumber == SIGXCPU) {
    return exhausted(name, "reading it takes more than " + std::to_string(limits.processorTime) +
                               " s of processor time");
  }
  if (signalNumber == SIGKILL) {
    return exhausted(name, "the system ended the process that reads it");
  }
  // Libraries that do not look at what malloc() gives them crash when it is nothing.
  if (end.memory > limits.memory / 4 * 3) {
    return exhausted(name, memoryText(limits));
  }
  return unreadable(name, "the library that reads it crashed on it (signal " +
                              std::to_string(signalNumber) + ")");
}

/// The lists are as long as a message demands, see receiveAnswer(); all else is looked at here.
Mesh meshOf(const MeshArrays& arrays) {
  MeshSpans spans = arrays.spans();
  spans.triangleTexture = {};
  spans.quadTexture = {};
  Mesh mesh(spans);
  const auto giveTexture = [](const std::vector<float>& texture, Point2DArr& coords) {
    for (std::size_t k = 0; k + 1 < texture.size(); k += 2) {
      if (texture[k] == texture[k]) {
        setTextureCoord(coords, static_cast<int>(k / 2), {texture[k], texture[k + 1]});
      }
    }
  };
  giveTexture(arrays.triangleTexture, mesh.triangleTexture);
  giveTexture(arrays.quadTexture, mesh.quadTexture);
  return mesh;
}

const FileDescriptor& answerPipe() {
  static const FileDescriptor pipe(kAnswerPipe);
  return pipe;
}

std::array<char, 200> memoryRefusal;

[[noreturn]] void refuse(ExitCode code, const char* why) {
  sendRefusal(answerPipe(), code, why);
  _exit(0);
}

[[noreturn]] void refuseMemory() { refuse(ExitCode::kExhausted, memoryRefusal.data()); }

void lower(decltype(RLIMIT_AS) resource, std::uint64_t value, std::uint64_t last) {
  rlimit limit{};
  getrlimit(resource, &limit);
  limit.rlim_max = std::min<rlim_t>(limit.rlim_max, last);
  limit.rlim_cur = std::min<rlim_t>({limit.rlim_cur, limit.rlim_max, value});
  setrlimit(resource, &limit);
}

/// From here on nothing that this process does can harm the other one.
void confine(const ReadOrder& order) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != order.parent) {
    _exit(1);
  }
  std::snprintf(memoryRefusal.data(), memoryRefusal.size(), "%s", memoryText(order.limits).c_str());
  // Refused memory is told at once, before the library can take it for a fault of the file.
  std::set_new_handler(refuseMemory);
  lower(RLIMIT_CORE, 0, 0);
  lower(RLIMIT_CPU, order.limits.processorTime, order.limits.processorTime + 1);
  if (!kIsSanitized) {
    lower(RLIMIT_AS, order.limits.memory, order.limits.memory);
  }
}

}  // namespace

void limitForeignMemory(std::optional<std::uint64_t> bytes) { memoryLimit = bytes; }

Mesh readForeign(const InputFile& input, const std::string& format, Remarks& remarks) {
  ReadOrder order = {format, input.path(), input.isOwnFile(), limitsFor(input.path(), input.size()),
                     getpid()};
  order.limits.memory = memoryLimit.value_or(order.limits.memory);
  std::array<int, 2> ends = {};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw exhausted(input.name(), systemText(errno));
  }
  const FileDescriptor outlet(ends[0]);
  std::optional<FileDescriptor> inlet(std::in_place, ends[1]);
  ReaderProcess process(order, input.name(), *inlet);
  inlet.reset();
  const double seconds = 60 + 10 * static_cast<double>(order.limits.processorTime);
  bool isLate = false;
  const std::optional<ForeignAnswer> answer = receiveAnswer(outlet, seconds, isLate);
  const ProcessEnd end = process.end();
  if (!answer) {
    throw isLate ? exhausted(input.name(), "the process that reads it does not answer")
                 : silence(input.name(), order.limits, end);
  }
  if (answer->code != ExitCode::kDone) {
    throw answer->code == ExitCode::kExhausted ? exhausted(input.name(), answer->why)
                                               : unreadable(input.name(), answer->why);
  }
  remarks.insert(remarks.end(), answer->mesh.remarks.begin(), answer->mesh.remarks.end());
  return meshOf(answer->mesh.arrays);
}

void serveAsForeignReader(int argc, char** argv) {
  const std::optional<ReadOrder> order = ReadOrder::of(argc, argv);
  if (!order) {
    return;
  }
  confine(*order);
  try {
    const ForeignMesh mesh = readScene(order->path, order->format, order->isNamed);
    _exit(sendMesh(answerPipe(), mesh) ? 0 : 1);
  } catch (const Failure& failure) {
    refuse(ExitCode::kUnreadable, failure.why().c_str());
  } catch (const std::bad_alloc&) {
    refuseMemory();
  } catch (const Error& error) {
    error.code() == ErrorCode::kExhausted ? refuseMemory()
                                          : refuse(ExitCode::kUnreadable, error.reason());
  } catch (const std::exception& error) {
    refuse(ExitCode::kUnreadable, error.what());
  } catch (...) {
    refuse(ExitCode::kUnreadable, "the library that reads it gave up");
  }
}

}  // namespace zel::program
