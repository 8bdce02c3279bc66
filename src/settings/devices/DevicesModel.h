#pragma once

#include "daemon/ServiceState.h"
#include "ui/look/TextColor.h"

#include <QString>

#include <chrono>
#include <optional>
#include <vector>

namespace quorbit {

class TimeFormats;

/// What the Devices tab shows, but for its fixed labels.
struct DevicesModel {
    struct Row {
        QString deviceId;
        QString symbol;
        QString name;
        QString badge;
        TextColor badgeColor = TextColor::secondary;
        QString fingerprint; ///< with its label, shortened

        bool operator==(const Row &) const = default;
    };

    /// The question before a device is removed.
    struct Confirmation {
        QString deviceId;
        QString message;

        bool operator==(const Confirmation &) const = default;
    };

    std::vector<Row> rows; ///< empty: the tab shows how to begin
    std::optional<Confirmation> confirmation;

    bool operator==(const DevicesModel &) const = default;
};

/// `pendingUnpair` is the device whose removal awaits confirmation; `now` is in milliseconds since 1970-01-01
/// UTC.
DevicesModel devicesModel(const ServiceState &service, const std::optional<Device> &pendingUnpair, qint64 now,
                          const TimeFormats &formats);

/// After how long the passing of time alone may change what devicesModel() says; absent if it never does.
std::optional<std::chrono::milliseconds> devicesModelHoldsFor(const ServiceState &service, qint64 now);

} // namespace quorbit
