#pragma once

#include "platform/Clock.h"

#include <QObject>

#include <coroutine>
#include <memory>
#include <optional>
#include <stop_token>
#include <utility>

/// Waits for coroutines that can be cut short. An owner of coroutines keeps a std::stop_source, passes its
/// token to every wait, and requests the stop first thing in its destructor: each of its coroutines is then
/// resumed once, inside that call, leaves by the exception Stopped, and never touches the owner again.
///
/// Name a wait before awaiting it (`Sleep pause(...); co_await pause;`): g++ 12 may destroy a temporary in
/// the operand of co_await twice. Of a named wait it awaits a copy, because QCoro's await_transform() returns
/// a reference; so waits can be copied as long as nothing waits for them.
namespace quorbit {

/// Leaves a coroutine whose owner is going away. Not a std::exception, so that handlers of failures let it
/// pass.
struct Stopped {};

/// The part that all waits share: resumes the coroutine exactly once, by the event or by the stop.
class StoppableWait {
public:
    StoppableWait(const StoppableWait &other) : token_(other.token_) {}
    StoppableWait &operator=(const StoppableWait &) = delete;

protected:
    explicit StoppableWait(std::stop_token token) : token_(std::move(token)) {}
    ~StoppableWait() = default;

    bool isStopped() const { return token_.stop_requested(); }
    void resumeOnStop(std::coroutine_handle<> waiting) {
        waiting_ = waiting;
        stopping_.emplace(token_, Resume{this});
    }
    void resume() {
        if (const auto waiting = std::exchange(waiting_, nullptr))
            waiting.resume();
    }
    void throwIfStopped() const {
        if (isStopped())
            throw Stopped{};
    }

private:
    struct Resume {
        StoppableWait *wait;
        void operator()() const { wait->resume(); }
    };

    std::stop_token token_;
    std::coroutine_handle<> waiting_;
    std::optional<std::stop_callback<Resume>> stopping_;
};

/// co_await Sleep(clock, 2s, token): throws Stopped when the stop comes first.
class Sleep : StoppableWait {
public:
    Sleep(Clock &clock, std::chrono::milliseconds delay, std::stop_token token)
        : StoppableWait(std::move(token)), clock_(clock), delay_(delay) {}
    Sleep(const Sleep &other) : StoppableWait(other), clock_(other.clock_), delay_(other.delay_) {}

    bool await_ready() const { return isStopped(); }
    void await_suspend(std::coroutine_handle<> waiting) {
        alarm_ = clock_.after(delay_, [this] { resume(); });
        resumeOnStop(waiting);
    }
    void await_resume() const { throwIfStopped(); }

private:
    Clock &clock_;
    std::chrono::milliseconds delay_;
    std::unique_ptr<Clock::Alarm> alarm_;
};

/// The next time that a signal is emitted; throws Stopped when the stop comes first.
template <class Object, class Method>
class Signal : StoppableWait {
public:
    Signal(Object *object, Method signal, std::stop_token token)
        : StoppableWait(std::move(token)), object_(object), signal_(signal) {}
    ~Signal() { QObject::disconnect(connection_); }

    bool await_ready() const { return isStopped(); }
    void await_suspend(std::coroutine_handle<> waiting) {
        connection_ = QObject::connect(object_, signal_, [this] { resume(); });
        resumeOnStop(waiting);
    }
    void await_resume() const { throwIfStopped(); }

private:
    Object *object_;
    Method signal_;
    QMetaObject::Connection connection_;
};

} // namespace quorbit
