#include "menubar/MenuBarModel.h"

#include "wording/DisplayLine.h"
#include "wording/TextRules.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>
#include <limits>
#include <span>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

using InfoRow = MenuBarModel::InfoRow;

constexpr std::size_t shownHistoryEntries = 8;

/// Many times what anybody has; a service gone wrong may tell of any number. Fewer than the rows of a list,
/// which the rows that follow the peers have to fit in.
constexpr std::size_t mostPeers = 100;

MenuBarModel::StatusDot statusDot(const ServiceState &service) {
    switch (service.connectionState) {
    case ConnectionState::starting:
        return {u"ellipsis.circle.fill"_s, TextColor::yellow, qtTrId("menu.status.starting")};
    case ConnectionState::connected:
        if (service.status && service.status->paused)
            return {u"pause.circle.fill"_s, TextColor::orange, qtTrId("menu.status.paused")};
        return {u"checkmark.circle.fill"_s, TextColor::green, qtTrId("menu.status.connected")};
    case ConnectionState::disconnected:
        break;
    }
    return {u"exclamationmark.circle.fill"_s, TextColor::red, qtTrId("menu.status.disconnected")};
}

InfoRow peerRow(const PeerStatus &peer) {
    // What kind of computer a peer is can be told from its identifier alone.
    const bool isLaptop = peer.device_id.startsWith("10b"_L1);
    const QString name = displayLine(peer.name);
    return {.kind = InfoRow::Kind::peer,
            .deviceId = peer.device_id,
            .symbol = isLaptop ? u"laptopcomputer"_s : u"pc"_s,
            .text = name.isEmpty() ? displayName(peer.device_id) : name,
            .color = TextColor::primary};
}

InfoRow noPeersRow(const ServiceState &service) {
    InfoRow row{.kind = InfoRow::Kind::notice,
                .deviceId = {},
                .symbol = {},
                .text = {},
                .color = TextColor::secondary};
    if (service.connectionState == ConnectionState::disconnected) {
        row.symbol = u"wifi.exclamationmark"_s;
        row.text = qtTrId("menu.daemon_disconnected");
        row.color = TextColor::red;
    } else if (!service.devices.empty()) {
        row.symbol = u"antenna.radiowaves.left.and.right"_s;
        row.text = qtTrId("menu.waiting_peer");
    } else {
        row.symbol = u"person.badge.plus"_s;
        row.text = qtTrId("menu.no_devices");
    }
    return row;
}

// A sender may well report more than the total, so only what no transfer can be is cut off: less than
// nothing, and what 64 bits cannot hold.
qint64 percentage(const FileXfer &transfer) {
    if (transfer.total < 1 || transfer.sent < 0)
        return 0;
    __extension__ using Wide = __int128;
    const Wide percent = static_cast<Wide>(transfer.sent) * 100 / transfer.total;
    return static_cast<qint64>(std::min<Wide>(percent, std::numeric_limits<qint64>::max()));
}

InfoRow transferRow(const FileXfer &transfer) {
    return {.kind = InfoRow::Kind::transfer,
            .deviceId = {},
            .symbol = transfer.sending ? u"arrow.up.circle"_s : u"arrow.down.circle"_s,
            .text = displayLine(transfer.name.value_or(QString())) + u" · "_s +
                    QString::number(percentage(transfer)) + u'%',
            .color = TextColor::secondary};
}

std::vector<InfoRow> infoRows(const ServiceState &service) {
    std::vector<InfoRow> rows;
    const std::optional<Status> &status = service.status;
    // Peers come before the connection state, so those of the last good status stay listed.
    if (status && !status->peers.empty()) {
        const std::span shown(status->peers.data(), std::min(status->peers.size(), mostPeers));
        std::transform(shown.begin(), shown.end(), std::back_inserter(rows), peerRow);
        if (const std::size_t rest = status->peers.size() - shown.size(); rest > 0)
            rows.push_back({.kind = InfoRow::Kind::notice,
                            .deviceId = {},
                            .symbol = u"pc"_s,
                            .text = moreNotShown(rest),
                            .color = TextColor::secondary});
    } else {
        rows.push_back(noPeersRow(service));
    }
    const QString activity = displayLine(status ? status->last_activity.value_or(QString()) : QString());
    if (!activity.isEmpty())
        rows.push_back({.kind = InfoRow::Kind::lastActivity,
                        .deviceId = {},
                        .symbol = u"clock"_s,
                        .text = activity,
                        .color = TextColor::secondary});
    if (status && status->file_xfer)
        rows.push_back(transferRow(*status->file_xfer));
    return rows;
}

} // namespace

MenuBarModel menuBarModel(const ServiceState &service, const UpdateState &update) {
    MenuBarModel model;
    model.dot = statusDot(service);
    model.deviceName = service.status ? displayName(service.status->device_name) : qtTrId("common.dash");
    if (update.available)
        model.availableVersion = displayLine(update.available->version);
    model.rows = infoRows(service);
    model.isPaused = service.status && service.status->paused;
    const std::size_t shown = std::min(service.history.size(), shownHistoryEntries);
    model.history.reserve(shown);
    for (const HistoryEntry &entry : std::span(service.history).first(shown))
        model.history.push_back({entry.id, historyKindSymbol(entry.type),
                                 displayLine(entry.preview.value_or(QString())),
                                 displayLine(entry.source.value_or(QString()))});
    return model;
}

} // namespace quorbit
