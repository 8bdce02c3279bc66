#include "settings/devices/DevicesModel.h"

#include "wording/DisplayLine.h"
#include "wording/TextRules.h"
#include "wording/TimeFormats.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

bool isOnline(const Device &device) {
    return device.online.value_or(false);
}

/// Whether the badge says when the device was last seen.
bool showsLastSeen(const Device &device) {
    return !isOnline(device) && device.last_seen.value_or(0) >= 1;
}

QString badge(const Device &device, qint64 now, const TimeFormats &formats) {
    if (isOnline(device))
        return qtTrId("devices.online");
    if (!showsLastSeen(device))
        return qtTrId("devices.offline");
    return qtTrId("devices.lastseen") + u' ' + formats.relative(*device.last_seen, now);
}

QString shortFingerprint(const Device &device) {
    QString digits = device.fingerprint.value_or(QString());
    digits.remove("sha256:"_L1);
    return qtTrId("devices.fp") + u' ' + displayLine(firstCharacters(digits, 12)) + u'…';
}

} // namespace

DevicesModel devicesModel(const ServiceState &service, const std::optional<Device> &pendingUnpair, qint64 now,
                          const TimeFormats &formats) {
    DevicesModel model;
    model.rows.reserve(service.devices.size());
    for (const Device &device : service.devices)
        model.rows.push_back({.deviceId = device.device_id,
                              .symbol = device.platform == u"darwin"_s ? u"laptopcomputer"_s : u"pc"_s,
                              .name = displayName(device.name),
                              .badge = badge(device, now, formats),
                              .badgeColor = isOnline(device) ? TextColor::green : TextColor::secondary,
                              .fingerprint = shortFingerprint(device)});
    if (pendingUnpair)
        model.confirmation = DevicesModel::Confirmation{
            pendingUnpair->device_id, qtTrId("devices.unpair.message").arg(displayName(pendingUnpair->name))};
    return model;
}

std::optional<std::chrono::milliseconds> devicesModelHoldsFor(const ServiceState &service, qint64 now) {
    std::optional<std::chrono::milliseconds> soonest;
    for (const Device &device : service.devices) {
        if (!showsLastSeen(device))
            continue;
        const auto holds = TimeFormats::relativeHoldsFor(*device.last_seen, now);
        soonest = std::min(soonest.value_or(holds), holds);
    }
    return soonest;
}

} // namespace quorbit
