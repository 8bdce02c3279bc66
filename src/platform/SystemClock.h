#pragma once

#include "platform/Clock.h"

namespace quorbit {

/// The computer's own clock and the main thread's timers.
class SystemClock : public Clock {
public:
    double now() const override;
    double uptime() const override;
    std::unique_ptr<Alarm> after(std::chrono::milliseconds delay, std::function<void()> action) override;
};

} // namespace quorbit
