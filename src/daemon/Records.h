#pragma once

#include "wire/Wire.h"

#include <QString>

#include <map>
#include <optional>
#include <vector>

/// The records of the service's HTTP interface. Members bear the names of their JSON keys, but for
/// HistoryEntry.
namespace quorbit {

/// A peer that is connected now.
struct PeerStatus {
    QString device_id;
    QString name;

    static constexpr auto fields() {
        using wire::Field;
        return std::tuple{Field{"device_id", &PeerStatus::device_id}, Field{"name", &PeerStatus::name}};
    }
    bool operator==(const PeerStatus &) const = default;
};

/// The file transfer that is running.
struct FileXfer {
    std::optional<QString> name;
    std::optional<qint64> count;
    qint64 sent = 0;
    qint64 total = 0;
    bool sending = false; ///< true when this computer sends

    static constexpr auto fields() {
        using wire::Field;
        return std::tuple{Field{"name", &FileXfer::name}, Field{"count", &FileXfer::count},
                          Field{"sent", &FileXfer::sent}, Field{"total", &FileXfer::total},
                          Field{"sending", &FileXfer::sending}};
    }
    bool operator==(const FileXfer &) const = default;
};

/// Who this computer is and what its service is doing.
struct Status {
    QString device_id;
    QString device_name;
    std::optional<QString> platform;
    qint64 port = 0;
    bool paused = false;
    std::vector<PeerStatus> peers;
    std::optional<QString> last_activity;
    std::optional<bool> accessibility_granted; ///< absent: the service does not know
    std::optional<bool> accessibility_needs_restart;
    std::optional<QString> version;
    std::optional<double> local_screen_w;
    std::optional<double> local_screen_h;
    std::optional<std::vector<std::vector<double>>> local_displays;
    std::optional<FileXfer> file_xfer;

    static constexpr auto fields() {
        using wire::Field;
        return std::tuple{Field{"device_id", &Status::device_id},
                          Field{"device_name", &Status::device_name},
                          Field{"platform", &Status::platform},
                          Field{"port", &Status::port},
                          Field{"paused", &Status::paused},
                          Field{"peers", &Status::peers},
                          Field{"last_activity", &Status::last_activity},
                          Field{"accessibility_granted", &Status::accessibility_granted},
                          Field{"accessibility_needs_restart", &Status::accessibility_needs_restart},
                          Field{"version", &Status::version},
                          Field{"local_screen_w", &Status::local_screen_w},
                          Field{"local_screen_h", &Status::local_screen_h},
                          Field{"local_displays", &Status::local_displays},
                          Field{"file_xfer", &Status::file_xfer}};
    }
    bool operator==(const Status &) const = default;
};

/// A screen's rectangle on the shared desk, in the service's units, y pointing down.
struct ScreenPlacement {
    double x = 0;
    double y = 0;
    double w = 0;
    double h = 0;

    static constexpr auto fields() {
        using wire::Field;
        return std::tuple{Field{"x", &ScreenPlacement::x}, Field{"y", &ScreenPlacement::y},
                          Field{"w", &ScreenPlacement::w}, Field{"h", &ScreenPlacement::h}};
    }
    bool operator==(const ScreenPlacement &) const = default;
};

/// Placements by device identifier.
using ScreenLayout = std::map<QString, ScreenPlacement>;

/// The service's whole configuration. It is always written back whole: copy it, change one member, send the
/// copy.
struct DaemonSettings {
    QString device_name;
    qint64 port = 0;
    qint64 file_size_cap_mb = 0; ///< the largest file that is synced, in megabytes
    bool sync_text = false;
    bool sync_image = false;
    bool sync_files = false;
    bool kvm_enabled = false;
    QString kvm_side;
    std::optional<bool> kvm_master;
    std::optional<qint64> kvm_switch_delay_ms;
    std::optional<qint64> kvm_corner_size;
    std::optional<bool> kvm_swap_modifiers;
    std::optional<double> kvm_sensitivity;
    std::optional<ScreenLayout> kvm_screens; ///< as the service reports them
    std::optional<ScreenLayout> kvm_layout;  ///< as the user arranged them
    std::optional<QString> kvm_master_id;
    std::optional<qint64> kvm_layout_ver;

    static constexpr auto fields() {
        using wire::Field;
        return std::tuple{Field{"device_name", &DaemonSettings::device_name},
                          Field{"port", &DaemonSettings::port},
                          Field{"file_size_cap_mb", &DaemonSettings::file_size_cap_mb},
                          Field{"sync_text", &DaemonSettings::sync_text},
                          Field{"sync_image", &DaemonSettings::sync_image},
                          Field{"sync_files", &DaemonSettings::sync_files},
                          Field{"kvm_enabled", &DaemonSettings::kvm_enabled},
                          Field{"kvm_side", &DaemonSettings::kvm_side},
                          Field{"kvm_master", &DaemonSettings::kvm_master},
                          Field{"kvm_switch_delay_ms", &DaemonSettings::kvm_switch_delay_ms},
                          Field{"kvm_corner_size", &DaemonSettings::kvm_corner_size},
                          Field{"kvm_swap_modifiers", &DaemonSettings::kvm_swap_modifiers},
                          Field{"kvm_sensitivity", &DaemonSettings::kvm_sensitivity},
                          Field{"kvm_screens", &DaemonSettings::kvm_screens},
                          Field{"kvm_layout", &DaemonSettings::kvm_layout},
                          Field{"kvm_master_id", &DaemonSettings::kvm_master_id},
                          Field{"kvm_layout_ver", &DaemonSettings::kvm_layout_ver}};
    }
    bool operator==(const DaemonSettings &) const = default;
};

/// A paired device, whether connected or not.
struct Device {
    QString device_id;
    QString name;
    std::optional<QString> platform;
    std::optional<QString> fingerprint;
    std::optional<bool> online;
    std::optional<qint64> last_seen; ///< milliseconds since 1970-01-01 UTC
    std::optional<qint64> paired_at;

    static constexpr auto fields() {
        using wire::Field;
        return std::tuple{Field{"device_id", &Device::device_id}, Field{"name", &Device::name},
                          Field{"platform", &Device::platform},   Field{"fingerprint", &Device::fingerprint},
                          Field{"online", &Device::online},       Field{"last_seen", &Device::last_seen},
                          Field{"paired_at", &Device::paired_at}};
    }
    bool operator==(const Device &) const = default;
};

/// An item of the clipboard history. Two of its members are spelled differently on the wire.
struct HistoryEntry {
    qint64 id = 0;
    std::optional<QString> type; ///< "text", "image", "files" or something newer
    std::optional<QString> preview;
    std::optional<QString> source;
    std::optional<qint64> ts;

    static constexpr auto fields() {
        using wire::Field;
        return std::tuple{Field{"id", &HistoryEntry::id}, Field{"type", &HistoryEntry::type},
                          Field{"source", &HistoryEntry::source}, Field{"label", &HistoryEntry::preview},
                          Field{"time", &HistoryEntry::ts}};
    }
    bool operator==(const HistoryEntry &) const = default;
};

/// The service's answer to a settings save.
struct UpdateResult {
    bool ok = false;
    std::optional<bool> need_restart; ///< the change takes effect only after the service restarts

    static constexpr auto fields() {
        using wire::Field;
        return std::tuple{Field{"ok", &UpdateResult::ok}, Field{"need_restart", &UpdateResult::need_restart}};
    }
    bool operator==(const UpdateResult &) const = default;
};

inline std::size_t qHash(const PeerStatus &peer, std::size_t seed = 0) {
    return wire::hash(peer, seed);
}
inline std::size_t qHash(const Device &device, std::size_t seed = 0) {
    return wire::hash(device, seed);
}
inline std::size_t qHash(const HistoryEntry &entry, std::size_t seed = 0) {
    return wire::hash(entry, seed);
}

} // namespace quorbit
