#include "platform/SystemClock.h"

#include <QTimer>

#include <ctime>
#include <utility>

namespace quorbit {

namespace {

class TimerAlarm : public Clock::Alarm {
public:
    TimerAlarm(std::chrono::milliseconds delay, std::function<void()> action) {
        timer_.setSingleShot(true);
        timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, std::move(action));
        timer_.start(delay);
    }

private:
    QTimer timer_;
};

double seconds(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

} // namespace

double SystemClock::now() const {
    return seconds(CLOCK_REALTIME);
}

double SystemClock::uptime() const {
    // On Linux, unlike elsewhere, CLOCK_MONOTONIC stands still while the computer sleeps.
    return seconds(CLOCK_MONOTONIC);
}

std::unique_ptr<Clock::Alarm> SystemClock::after(std::chrono::milliseconds delay,
                                                 std::function<void()> action) {
    return std::make_unique<TimerAlarm>(delay, std::move(action));
}

} // namespace quorbit
