#pragma once

#include "update/Manifest.h"

#include <QDateTime>

#include <optional>
#include <variant>

namespace quorbit {

enum class FailureReason { network, server, parse, unknown };

/// The progress or outcome of the latest check.
namespace check {
struct Idle {
    bool operator==(const Idle &) const = default;
};
struct Checking {
    bool operator==(const Checking &) const = default;
};
struct UpToDate {
    QString currentVersion;
    bool operator==(const UpToDate &) const = default;
};
struct Available {
    AvailableUpdate update;
    bool operator==(const Available &) const = default;
};
struct Failed {
    FailureReason reason = FailureReason::unknown;
    bool operator==(const Failed &) const = default;
};
} // namespace check

using CheckState =
    std::variant<check::Idle, check::Checking, check::UpToDate, check::Available, check::Failed>;

enum class DownloadState { idle, downloading, done, failed };

/// Everything that the update checker publishes.
struct UpdateState {
    std::optional<AvailableUpdate> available; ///< kept across failed checks
    CheckState state;
    std::optional<QDateTime> lastChecked;
    DownloadState downloadState = DownloadState::idle;

    bool operator==(const UpdateState &) const = default;
};

} // namespace quorbit
