#pragma once

#include <QObject>
#include <QPointer>

#include <QCoroTask>

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

} // namespace quorbit
