#include "settings/overview/OverviewModel.h"

#include "settings/SettingsEdit.h"
#include "wording/DisplayLine.h"
#include "wording/TextRules.h"

#include <QCoreApplication>

namespace quorbit {

namespace {

std::optional<QString> reportedName(const ServiceState &service) {
    if (!service.status)
        return std::nullopt;
    return service.status->device_name;
}

} // namespace

NameDraft shownNameDraft(const ServiceState &service) {
    const std::optional<QString> name = reportedName(service);
    return {.text = name.value_or(QString()), .reported = name};
}

NameDraft followedNameDraft(NameDraft draft, const ServiceState &service) {
    const std::optional<QString> name = reportedName(service);
    // The same state is published over and over; a field that the user has emptied stays empty.
    if (name == draft.reported)
        return draft;
    draft.reported = name;
    if (name && draft.text.isEmpty())
        draft.text = *name;
    return draft;
}

std::optional<DaemonSettings> committedName(const ServiceState &service, const QString &draft) {
    if (!service.settings || draft == service.settings->device_name || isBlank(draft))
        return std::nullopt;
    return edited(service.settings, &DaemonSettings::device_name, draft);
}

OverviewModel overviewModel(const ServiceState &service, const NameDraft &draft) {
    OverviewModel model{.draftName = draft.text, .identity = {}, .peers = {}, .lastActivity = {}};
    if (!service.status)
        return model;
    const Status &status = *service.status;
    model.identity = OverviewModel::Identity{.deviceId = displayLine(status.device_id),
                                             .port = QString::number(status.port),
                                             .isPaused = status.paused,
                                             .statusText = status.paused ? qtTrId("overview.status.paused")
                                                                         : qtTrId("overview.status.running")};
    for (const PeerStatus &peer : status.peers)
        model.peers.push_back({peer.device_id, displayLine(peer.device_id), displayName(peer.name)});
    const QString activity = displayLine(status.last_activity.value_or(QString()));
    if (!activity.isEmpty())
        model.lastActivity = activity;
    return model;
}

} // namespace quorbit
