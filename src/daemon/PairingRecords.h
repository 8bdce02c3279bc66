#pragma once

#include "wire/Wire.h"

#include <QString>

#include <optional>

/// The bodies of the two pairing requests; private to the service client.
namespace quorbit::pairing {

struct ShowRequest {
    static constexpr auto fields() { return std::tuple{}; }
    bool operator==(const ShowRequest &) const = default;
};

struct ShowReply {
    QString pin;

    static constexpr auto fields() { return std::tuple{wire::Field{"pin", &ShowReply::pin}}; }
    bool operator==(const ShowReply &) const = default;
};

struct ConnectRequest {
    QString host;
    QString pin;

    static constexpr auto fields() {
        return std::tuple{wire::Field{"host", &ConnectRequest::host},
                          wire::Field{"pin", &ConnectRequest::pin}};
    }
    bool operator==(const ConnectRequest &) const = default;
};

struct ConnectReply {
    bool ok = false;
    std::optional<QString> error;

    static constexpr auto fields() {
        return std::tuple{wire::Field{"ok", &ConnectReply::ok}, wire::Field{"error", &ConnectReply::error}};
    }
    bool operator==(const ConnectReply &) const = default;
};

} // namespace quorbit::pairing
