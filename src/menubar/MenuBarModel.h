#pragma once

#include "daemon/ServiceState.h"
#include "ui/look/TextColor.h"
#include "update/UpdateState.h"
#include "wording/HistoryItem.h"

#include <QString>

#include <optional>
#include <vector>

namespace quorbit {

/// Everything that the panel shows and that can change while the program runs. Texts are ready to be laid
/// out: one line each, of a length that costs nothing.
struct MenuBarModel {
    struct StatusDot {
        QString symbol;
        TextColor color = TextColor::yellow;
        QString spokenLabel;

        bool operator==(const StatusDot &) const = default;
    };

    /// A line of information: a connected peer or why there is none, the last activity, a file transfer.
    struct InfoRow {
        enum class Kind { peer, notice, lastActivity, transfer };

        Kind kind = Kind::notice;
        QString deviceId; ///< the identity of a peer's row; the other kinds occur once
        QString symbol;
        QString text;
        TextColor color = TextColor::secondary; ///< of the text; the symbol is always secondary

        bool operator==(const InfoRow &) const = default;
    };

    StatusDot dot;
    QString deviceName;
    std::optional<QString> availableVersion; ///< of the update that the badge announces
    std::vector<InfoRow> rows;
    bool isPaused = false;
    std::vector<HistoryItem> history;

    bool operator==(const MenuBarModel &) const = default;
};

/// What the panel shows of the published state, in the current interface language.
MenuBarModel menuBarModel(const ServiceState &service, const UpdateState &update);

} // namespace quorbit
