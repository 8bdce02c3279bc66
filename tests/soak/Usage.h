#pragma once

#include <cstddef>
#include <cstdint>

namespace quorbit::test {

/// What the process holds at a moment.
struct Usage {
    std::int64_t heap = 0;    ///< bytes
    std::int64_t objects = 0; ///< below the windows, the application and the given root
    std::int64_t widgets = 0;
    std::int64_t descriptors = 0;
    std::int64_t threads = 0;
};

/// Whether this build replaces the allocator by that of the address sanitizer.
constexpr bool isSanitized() {
#ifdef __SANITIZE_ADDRESS__
    return true;
#else
    return false;
#endif
}

Usage currentUsage();

} // namespace quorbit::test
