#pragma once

#include <QObject>

#include <functional>
#include <memory>

namespace quorbit {

/// Calls a function exactly once when the program ends: after the event loop, in exit(), when the
/// display is gone, or when this object goes. From then on the program has less than a second left,
/// however long its other parts would take to end.
class TerminationHook : public QObject {
    Q_OBJECT

public:
    explicit TerminationHook(std::function<void()> terminate, QObject *parent = nullptr);
    ~TerminationHook() override;

private:
    std::shared_ptr<std::function<void()>> terminate_;
};

} // namespace quorbit
