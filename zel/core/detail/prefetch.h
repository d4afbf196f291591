#pragma once

namespace zel {

/// Asks for the memory at an address, which will be looked at soon. Never fails, whatever the
/// address.
inline void prefetch([[maybe_unused]] const void* address) {
#if defined(__GNUC__)
  __builtin_prefetch(address);
#endif
}

}  // namespace zel
