#pragma once

#include "daemon/ServiceState.h"

#include <QString>

#include <optional>
#include <vector>

namespace quorbit {

/// The text of the device-name field and what it takes over from the service.
struct NameDraft {
    QString text;
    std::optional<QString> reported; ///< the device name of the latest status

    bool operator==(const NameDraft &) const = default;
};

/// The field when the tab is shown.
NameDraft shownNameDraft(const ServiceState &service);
/// The field after the service published its state: a changed name fills an empty field and overwrites none.
NameDraft followedNameDraft(NameDraft draft, const ServiceState &service);
/// What the Return key in the field saves, if anything.
std::optional<DaemonSettings> committedName(const ServiceState &service, const QString &draft);

/// What the Overview tab shows, but for its fixed labels.
struct OverviewModel {
    /// The rows that need a status.
    struct Identity {
        QString deviceId;
        QString port;
        bool isPaused = false; ///< the dot: orange, else green
        QString statusText;

        bool operator==(const Identity &) const = default;
    };

    struct Peer {
        QString deviceId; ///< tells the rows apart
        QString shownId;
        QString label;

        bool operator==(const Peer &) const = default;
    };

    QString draftName;
    std::optional<Identity> identity;
    std::vector<Peer> peers;             ///< empty: the tab says so
    std::optional<QString> lastActivity; ///< absent: no such section

    bool operator==(const OverviewModel &) const = default;
};

OverviewModel overviewModel(const ServiceState &service, const NameDraft &draft);

} // namespace quorbit
