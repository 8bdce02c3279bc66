#pragma once

#include "platform/Clock.h"

#include <map>
#include <utility>
#include <vector>

namespace quorbit::test {

/// Time that stands still until the test lets it pass.
class FakeClock final : public Clock {
public:
    using Delay = std::chrono::milliseconds;

    /// Time of day and uptime when the test begins; both go on with advance().
    double startOfTest = 1'700'000'000;
    double uptimeAtStart = 3600;

    double now() const override { return startOfTest + seconds(); }
    double uptime() const override { return uptimeAtStart + seconds(); }

    std::unique_ptr<Alarm> after(Delay delay, std::function<void()> action) override {
        auto pending = std::make_shared<Pending>(Pending{std::move(action)});
        alarms_.emplace(elapsed_ + delay, pending);
        return std::make_unique<FakeAlarm>(std::move(pending));
    }

    /// Lets time pass and rings every alarm that falls due, in order, each at its own moment.
    void advance(Delay span) {
        const Delay end = elapsed_ + span;
        while (!alarms_.empty() && alarms_.begin()->first <= end) {
            const auto alarm = alarms_.extract(alarms_.begin());
            if (const auto pending = alarm.mapped().lock()) {
                elapsed_ = alarm.key();
                const auto action = std::move(pending->action);
                action();
            }
        }
        elapsed_ = end;
    }

    /// How long each alarm that is still set has to go, soonest first.
    std::vector<Delay> pending() const {
        std::vector<Delay> delays;
        for (const auto &[due, alarm] : alarms_) {
            if (!alarm.expired())
                delays.push_back(due - elapsed_);
        }
        return delays;
    }

private:
    struct Pending {
        std::function<void()> action;
    };
    class FakeAlarm final : public Alarm {
    public:
        explicit FakeAlarm(std::shared_ptr<Pending> pending) : pending_(std::move(pending)) {}

    private:
        std::shared_ptr<Pending> pending_;
    };

    double seconds() const { return std::chrono::duration<double>(elapsed_).count(); }

    Delay elapsed_{0};
    std::multimap<Delay, std::weak_ptr<Pending>> alarms_;
};

} // namespace quorbit::test
