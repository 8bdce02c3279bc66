#pragma once

#include "platform/Platform.h"

#include <QString>

#include <memory>
#include <optional>

namespace quorbit {

/// Starts the service's executable and ends it again, provided that this run started it.
class ServiceLauncher {
public:
    explicit ServiceLauncher(Platform &platform) : platform_(platform) {}

    /// Starts the service; false when there is no executable to start or when starting failed, which is
    /// logged.
    bool launch();
    /// Tells a service that launch() started, and that still runs, to terminate.
    void terminate();

private:
    /// The executable inside the bundle, else the place beside the program's own, which may be empty.
    std::optional<QString> locateHelper() const;

    Platform &platform_;
    std::unique_ptr<ChildProcess> process_;
};

} // namespace quorbit
