#pragma once

#include <ctime>

namespace quorbit {

/// Milliseconds for which `action` keeps this process computing; other programs' load does not count.
template <class Action>
double computingTime(const Action &action) {
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    };
    const double begin = now();
    action();
    return now() - begin;
}

} // namespace quorbit
