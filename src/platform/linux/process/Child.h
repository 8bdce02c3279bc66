#pragma once

#include "platform/Platform.h"

#include <QObject>
#include <QPointer>

#include <sys/types.h>

namespace quorbit {

/// A process that this one started, from its start until it is reaped; then the object deletes itself.
class Child : public QObject {
    Q_OBJECT

public:
    Child(pid_t pid, QObject *parent);
    ~Child() override;

    pid_t pid() const { return pid_; }
    /// Reaps the process when it has ended, so that no zombie is left.
    bool hasEnded();
    /// Sends SIGTERM to this very process, never to another one that was given its number later.
    void terminate();

private:
    pid_t pid_;
    int pidfd_;
    bool ended_ = false;
};

class ChildHandle : public ChildProcess {
public:
    explicit ChildHandle(Child *child) : child_(child) {}

    bool isRunning() override { return child_ && !child_->hasEnded(); }
    void terminate() override {
        if (isRunning())
            child_->terminate();
    }

private:
    QPointer<Child> child_;
};

} // namespace quorbit
