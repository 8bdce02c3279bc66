#pragma once

#include "daemon/Records.h"

#include <optional>
#include <vector>

namespace quorbit {

/// Where the client stands with the service. `disconnected` means that start-up gave up; a service that stops
/// answering later leaves the state `connected` and the last good data in place.
enum class ConnectionState { starting, connected, disconnected };

/// Everything that the client publishes of the service: the last known good state.
struct ServiceState {
    ConnectionState connectionState = ConnectionState::starting;
    std::optional<Status> status;
    std::optional<DaemonSettings> settings;
    std::vector<Device> devices;
    std::vector<HistoryEntry> history;

    bool operator==(const ServiceState &) const = default;
};

} // namespace quorbit
