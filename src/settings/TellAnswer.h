#pragma once

#include <QObject>
#include <QPointer>

#include <QCoroTask>

#include <exception>
#include <optional>
#include <utility>

namespace quorbit {

/// Tells the answer of a request, unless its asker is gone by then or the request failed. Copies its
/// arguments, so that it may outlive whoever starts it.
template <class Answer, class Tell>
QCoro::Task<> tellAnswer(QCoro::Task<Answer> request, QPointer<QObject> asker, Tell tell) {
    Answer answer = co_await request;
    if (asker)
        tell(std::move(answer));
}

/// Tells also, by an absent answer, that the request failed.
template <class Answer, class Tell>
QCoro::Task<> tellOutcome(QCoro::Task<Answer> request, QPointer<QObject> asker, Tell tell) {
    std::optional<Answer> answer;
    try {
        answer = co_await request;
    } catch (const std::exception &) {
        // It stays absent.
    }
    if (asker)
        tell(std::move(answer));
}

} // namespace quorbit
