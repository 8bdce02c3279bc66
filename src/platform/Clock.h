#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace quorbit {

/// Time as the program sees it; tests put their own in its place.
class Clock {
public:
    /// A pending call; destroying it cancels the call.
    class Alarm {
    public:
        virtual ~Alarm() = default;
    };

    virtual ~Clock() = default;

    /// Seconds since 1970-01-01 UTC.
    virtual double now() const = 0;
    /// Seconds that the computer has been awake since it booted.
    virtual double uptime() const = 0;
    /// Calls `action` once, on the main thread, when `delay` has passed. The alarm may be destroyed within
    /// the call.
    [[nodiscard]] virtual std::unique_ptr<Alarm> after(std::chrono::milliseconds delay,
                                                       std::function<void()> action) = 0;
};

} // namespace quorbit
