#pragma once

#include "async/Waiting.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QTimer>

#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <variant>

namespace quorbit::test {

/// How a coroutine ended, once it has.
template <class T>
struct Outcome {
    std::optional<std::conditional_t<std::is_void_v<T>, std::monostate, T>> value;
    std::exception_ptr failure;
    bool stopped = false;

    bool ended() const { return value || failure || stopped; }
};

template <class T>
QCoro::Task<> watch(QCoro::Task<T> task, std::shared_ptr<Outcome<T>> outcome) {
    try {
        if constexpr (std::is_void_v<T>) {
            co_await task;
            outcome->value.emplace();
        } else {
            outcome->value = co_await task;
        }
    } catch (const Stopped &) {
        outcome->stopped = true;
    } catch (...) {
        outcome->failure = std::current_exception();
    }
}

/// Follows a coroutine without waiting for it.
template <class T>
std::shared_ptr<Outcome<T>> outcomeOf(QCoro::Task<T> task) {
    auto outcome = std::make_shared<Outcome<T>>();
    watch(std::move(task), outcome);
    return outcome;
}

/// Lets events pass until the coroutine has ended; its result or failure.
template <class T>
T finish(QCoro::Task<T> task) {
    const auto outcome = outcomeOf(std::move(task));
    QTimer patience; // QTest::qWaitFor() would sleep between any two events.
    patience.setSingleShot(true);
    patience.start(20'000);
    while (!outcome->ended() && patience.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (!outcome->ended())
        throw std::logic_error("the coroutine does not end");
    if (outcome->failure)
        std::rethrow_exception(outcome->failure);
    if (outcome->stopped)
        throw Stopped{};
    if constexpr (!std::is_void_v<T>)
        return *std::move(outcome->value);
}

} // namespace quorbit::test
