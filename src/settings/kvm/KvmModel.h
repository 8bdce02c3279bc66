#pragma once

#include "daemon/ServiceState.h"
#include "settings/canvas/ScreenLayout.h"
#include "ui/look/TextColor.h"

#include <QString>

#include <optional>
#include <vector>

namespace quorbit {

template <typename Value>
struct PickerOption {
    QString label;
    Value value{};

    bool operator==(const PickerOption &) const = default;
};

/// What the pickers offer, in their order.
std::vector<PickerOption<qint64>> switchDelayOptions(); ///< milliseconds
std::vector<PickerOption<qint64>> cornerSizeOptions();
std::vector<PickerOption<double>> sensitivityOptions();

/// What the KVM tab shows, but for its fixed labels and tips.
struct KvmModel {
    struct StatusLine {
        TextColor dot = TextColor::green;
        QString text;

        bool operator==(const StatusLine &) const = default;
    };

    /// What the canvas arranges.
    struct Canvas {
        ScreenDesk desk;
        QString masterID;

        bool operator==(const Canvas &) const = default;
    };

    struct FooterLine {
        QString symbol;
        QString text;
        TextColor color = TextColor::secondary;

        bool operator==(const FooterLine &) const = default;
    };

    struct Accessibility {
        QString symbol;
        TextColor color = TextColor::green;
        QString title;
        QString description;
        bool offersGrant = false; ///< the two buttons

        bool operator==(const Accessibility &) const = default;
    };

    bool isEnabled = false;
    std::optional<StatusLine> statusLine;
    bool showsRestartHint = false;
    std::optional<Canvas> canvas; ///< absent: there is no other computer to arrange
    std::vector<FooterLine> masterFooter;
    bool swapsModifiers = false;
    /// Indices into the options; absent when the stored value is none of them.
    std::optional<std::size_t> switchDelay;
    std::optional<std::size_t> cornerSize;
    std::optional<std::size_t> sensitivity;
    Accessibility accessibility;

    bool operator==(const KvmModel &) const = default;
};

/// Absent while there are no settings: the tab says that it is loading. `isTrusted` is whether this process
/// itself may drive keyboard and pointer; it counts when the service does not say.
std::optional<KvmModel> kvmModel(const ServiceState &service, bool isTrusted, bool showsRestartHint);

/// This computer, once its status is known, and then every paired device.
std::vector<DeviceCard> deviceCards(const ServiceState &service);

} // namespace quorbit
