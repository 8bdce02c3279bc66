#pragma once

#include "platform/Process.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/process/SingleInstance.h"

namespace quorbit {

/// A process in a Linux session.
class LinuxProcess : public Process {
public:
    explicit LinuxProcess(Bundle bundle);

    Platform &platform() override { return platform_; }
    std::unique_ptr<Desktop> makeDesktop() override;
    bool claim() override;
    bool isStartedBySession() const override;
    void finishStart(std::function<QWindow *()> showWindow) override;
    void callAtEnd(std::function<void()> terminate) override;

private:
    LinuxPlatform platform_;
    const StartRequest request_; ///< read before the toolkit takes it out of the environment
    SingleInstance instance_;
};

} // namespace quorbit
