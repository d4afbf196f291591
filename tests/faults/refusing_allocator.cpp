#include "faults/refusing_allocator.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <new>

#include "zel/core/constants.h"

namespace {

/// What the calling thread's requests meet.
struct Requests {
  bool isArmed;
  bool forGood;
  long granted;  // before the first refusal; below 0 behind it
  bool hasReport;
};
thread_local Requests requests{};

bool isRefused() {
  if (!requests.isArmed) {
    return false;
  }
  const long left = requests.granted--;
  return left == 0 || (left < 0 && requests.forGood);
}

/// Says no as the system's own heap does.
bool refuses() {
  if (!isRefused()) {
    return false;  // without a look at errno: the sanitizers ask before they are set up
  }
  errno = ENOMEM;
  return true;
}

}  // namespace

// The C library's own heap, or the sanitizer's, by the names that no program replaces.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZEL_HEAP(name) __interceptor_##name
#else
#define ZEL_HEAP(name) __libc_##name
#endif

extern "C" {
void* ZEL_HEAP(malloc)(std::size_t size);
void* ZEL_HEAP(calloc)(std::size_t count, std::size_t size);
void* ZEL_HEAP(realloc)(void* block, std::size_t size);

void* malloc(std::size_t size) { return refuses() ? nullptr : ZEL_HEAP(malloc)(size); }
void* calloc(std::size_t count, std::size_t size) {
  return refuses() ? nullptr : ZEL_HEAP(calloc)(count, size);
}
void* realloc(void* block, std::size_t size) {
  return refuses() ? nullptr : ZEL_HEAP(realloc)(block, size);
}

/// The linker leads every report of the library here.
int __wrap__Z14kwErrorMessagei(int code) {
  requests.hasReport = requests.hasReport || code == zel::kOutOfMemory;
  return 0;
}
}

// Not inlined: gcc would take the free() for the wrong end of a new it also sees.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return std::malloc(size);
}
[[gnu::noinline]] void* operator new(std::size_t size) {
  void* const block = std::malloc(size);
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  return block;
}
[[gnu::noinline]] void* operator new[](std::size_t size) { return operator new(size); }
[[gnu::noinline]] void operator delete(void* block) noexcept { std::free(block); }
[[gnu::noinline]] void operator delete(void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}
[[gnu::noinline]] void operator delete[](void* block) noexcept { std::free(block); }
[[gnu::noinline]] void operator delete[](void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}

namespace zel::test {

Told RefusingHeap::during(const std::function<void()>& work) {
  Told told;
  std::string escaped;
  requests = {true, forGood_, granted_, false};
  try {
    work();
  } catch (int code) {
    told.thrown = code;
  } catch (const Error& error) {
    told.error = error.code();
  } catch (const std::exception& error) {
    requests.isArmed = false;
    escaped = error.what();
  }
  requests.isArmed = false;
  hasRefused_ = requests.granted < 0;
  told.hasReport = requests.hasReport;
  EXPECT_EQ(escaped, "") << "came out";
  return told;
}

int refuseEachRequest(const std::string& name,
                      const std::function<std::string(RefusingHeap&)>& attempt) {
  int refusals = 0;
  for (const bool forGood : {false, true}) {
    for (long granted = 0; !testing::Test::HasFailure(); ++granted) {
      SCOPED_TRACE(name + ", request " + std::to_string(granted) +
                   (forGood ? " and all behind it" : ""));
      RefusingHeap heap(granted, forGood);
      const std::string problem = attempt(heap);
      EXPECT_EQ(problem, "");
      if (!heap.hasRefused()) {
        break;
      }
      ++refusals;
    }
  }
  return refusals;
}

}  // namespace zel::test
