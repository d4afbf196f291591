#include "tools/zel/command.h"

#include <new>
#include <stdexcept>
#include <system_error>

#include "tools/zel/failure.h"
#include "zel/core/error.h"

namespace zel::program {

Failure caughtFailure(const std::string& file) {
  try {
    throw;
  } catch (const Failure& failure) {
    return failure;
  } catch (const Error& error) {
    std::string named = error.file();
    named = named.empty() ? file : named;
    if (error.place().line > 0) {
      named += ":" + std::to_string(error.place().line);
    } else if (error.place().byte >= 0) {
      named += ": byte " + std::to_string(error.place().byte);
    }
    return {static_cast<ExitCode>(error.code()), named, error.action(), error.reason()};
  } catch (const std::bad_alloc&) {
    return exhausted(file, "out of memory");
  } catch (const std::length_error&) {
    return exhausted(file, "out of memory");
  } catch (const std::system_error& error) {
    // As when a thread cannot be started.
    const bool isShortage = error.code() == std::errc::resource_unavailable_try_again ||
                            error.code() == std::errc::not_enough_memory;
    return isShortage ? exhausted(file, error.what()) : unreadable(file, error.what());
  } catch (const std::exception& error) {
    return unreadable(file, error.what());
  } catch (const int code) {  // of the classic interface
    return unreadable(file, "error " + std::to_string(code));
  }
}

ExitCode guarded(const std::string& file, const Console& console,
                 const std::function<ExitCode()>& work) {
  try {
    try {
      return work();
    } catch (...) {
      const Failure failure = caughtFailure(file);
      console.complain(failure);
      return failure.code();
    }
  } catch (const std::bad_alloc&) {  // refused to what tells of the failure
    console.complainOfMemory(file.c_str());
    return ExitCode::kExhausted;
  }
}

ExitCode forEachFile(const std::vector<std::string>& files, const Console& console,
                     const std::function<ExitCode(const std::string&)>& work) {
  ExitCode worst = ExitCode::kDone;
  for (const std::string& file : files) {
    worst = worse(worst, guarded(file, console, [&] { return work(file); }));
  }
  return worst;
}

}  // namespace zel::program
