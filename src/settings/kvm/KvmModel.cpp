#include "settings/kvm/KvmModel.h"

#include "wording/DisplayLine.h"
#include "wording/TextRules.h"

#include <QCoreApplication>

#include <algorithm>
#include <span>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

/// Many times what fits on a desk. The relations between the screens take time that grows with the square of
/// their number: minutes for the thousands that a service gone wrong may tell of.
constexpr std::size_t mostScreens = 200;

const PeerStatus *connectedPeer(const ServiceState &service, const QString &id) {
    if (!service.status)
        return nullptr;
    const auto &peers = service.status->peers;
    const auto peer =
        std::find_if(peers.begin(), peers.end(), [&id](const auto &each) { return each.device_id == id; });
    return peer == peers.end() ? nullptr : &*peer;
}

bool isAccessibilityGranted(const ServiceState &service, bool isTrusted) {
    return service.status ? service.status->accessibility_granted.value_or(isTrusted) : isTrusted;
}

QString masterID(const ServiceState &service) {
    return service.settings ? service.settings->kvm_master_id.value_or(QString()) : QString();
}

QString selfID(const ServiceState &service) {
    return service.status ? service.status->device_id : QString();
}

QString masterName(const ServiceState &service, const QString &master) {
    const PeerStatus *peer = connectedPeer(service, master);
    QString name = displayLine(peer ? peer->name : QString());
    const auto device = std::find_if(service.devices.begin(), service.devices.end(),
                                     [&master](const Device &each) { return each.device_id == master; });
    if (name.isEmpty() && device != service.devices.end())
        name = displayLine(device->name);
    return name.isEmpty() ? displayName(firstCharacters(master, 8)) : name;
}

/// The first thing that still stands in the way of sharing, or that nothing does.
std::optional<KvmModel::StatusLine> statusLine(const ServiceState &service, bool isTrusted) {
    if (!service.settings || !service.settings->kvm_enabled)
        return std::nullopt;
    const auto line = [](TextColor dot, const QString &text) { return KvmModel::StatusLine{dot, text}; };
    if (!isAccessibilityGranted(service, isTrusted))
        return line(TextColor::orange, qtTrId("kvm.status.need_ax"));
    if (!service.status || service.status->peers.empty())
        return line(TextColor::orange, qtTrId("kvm.status.waiting"));
    const QString master = masterID(service);
    if (master.isEmpty())
        return line(TextColor::orange, qtTrId("kvm.status.no_master"));
    if (master == service.status->device_id)
        return line(TextColor::green, qtTrId("kvm.status.ready"));
    const QString name = masterName(service, master);
    if (connectedPeer(service, master))
        return line(TextColor::green, qtTrId("kvm.status.controlled").arg(name));
    return line(TextColor::orange, qtTrId("kvm.status.master_off").arg(name));
}

std::vector<KvmModel::FooterLine> masterFooter(const ServiceState &service,
                                               const std::vector<DeviceCard> &cards) {
    const QString master = masterID(service);
    if (master.isEmpty())
        return {{u"exclamationmark.triangle.fill"_s, qtTrId("kvm.master.none"), TextColor::orange}};
    if (master == selfID(service))
        return {{u"keyboard"_s, qtTrId("kvm.master.local_footer"), TextColor::secondary}};
    const auto card =
        std::find_if(cards.begin(), cards.end(), [&](const DeviceCard &each) { return each.id == master; });
    const QString name = card != cards.end() ? displayName(card->name) : u"?"_s;
    std::vector<KvmModel::FooterLine> lines{
        {u"keyboard"_s, qtTrId("kvm.master.peer_global").arg(name), TextColor::secondary}};
    if (card != cards.end() && card->platform.value_or(QString()).toLower() == "linux"_L1)
        lines.push_back({u"command"_s, qtTrId("kvm.master.linux_hotkey"), TextColor::secondary});
    return lines;
}

KvmModel::Accessibility accessibility(const ServiceState &service, bool isTrusted) {
    const bool isGranted = isAccessibilityGranted(service, isTrusted);
    if (service.status && service.status->accessibility_needs_restart.value_or(false))
        return {u"arrow.clockwise.circle.fill"_s, TextColor::accent,
                qtTrId("kvm.accessibility.needs_restart"), qtTrId("kvm.accessibility.needs_restart_desc"),
                !isGranted};
    if (isGranted)
        return {u"checkmark.shield.fill"_s, TextColor::green, qtTrId("kvm.accessibility.granted"),
                qtTrId("kvm.accessibility.granted_desc"), false};
    return {u"exclamationmark.shield.fill"_s, TextColor::orange, qtTrId("kvm.accessibility.not_granted"),
            qtTrId("kvm.accessibility.not_granted_desc"), true};
}

template <typename Value>
std::optional<std::size_t> chosen(const std::vector<PickerOption<Value>> &options,
                                  const std::optional<Value> &stored) {
    const Value value = stored.value_or(Value{});
    const auto option =
        std::find_if(options.begin(), options.end(), [&](const auto &each) { return each.value == value; });
    if (option == options.end())
        return std::nullopt;
    return static_cast<std::size_t>(std::distance(options.begin(), option));
}

} // namespace

std::vector<PickerOption<qint64>> switchDelayOptions() {
    return {{qtTrId("kvm.switch_delay.off"), 0}, {u"100 ms"_s, 100}, {u"250 ms"_s, 250}, {u"500 ms"_s, 500}};
}

std::vector<PickerOption<qint64>> cornerSizeOptions() {
    return {{qtTrId("kvm.corner_size.off"), 0}, {u"16 px"_s, 16}, {u"32 px"_s, 32}, {u"64 px"_s, 64}};
}

std::vector<PickerOption<double>> sensitivityOptions() {
    return {{qtTrId("kvm.sensitivity.auto"), 0.0},
            {u"1.0×"_s, 1.0},
            {u"1.5×"_s, 1.5},
            {u"2.0×"_s, 2.0},
            {u"3.0×"_s, 3.0}};
}

std::vector<DeviceCard> deviceCards(const ServiceState &service) {
    std::vector<DeviceCard> cards;
    const std::span devices(service.devices.data(), std::min(service.devices.size(), mostScreens));
    cards.reserve(devices.size() + 1);
    if (const auto &status = service.status)
        cards.push_back(
            {status->device_id, status->device_name, status->platform.value_or(u"darwin"_s), true});
    // Who is connected is what the status says; the device's own account of it may be older.
    for (const Device &device : devices)
        cards.push_back({device.device_id, device.name, device.platform,
                         connectedPeer(service, device.device_id) != nullptr});
    return cards;
}

std::optional<KvmModel> kvmModel(const ServiceState &service, bool isTrusted, bool showsRestartHint) {
    if (!service.settings)
        return std::nullopt;
    const DaemonSettings &settings = *service.settings;
    const std::vector<DeviceCard> cards = deviceCards(service);
    std::optional<KvmModel::Canvas> canvas;
    if (cards.size() > 1)
        canvas =
            KvmModel::Canvas{.desk = {settings.kvm_layout.value_or(ScreenLayout()), selfID(service), cards},
                             .masterID = masterID(service)};
    return KvmModel{.isEnabled = settings.kvm_enabled,
                    .statusLine = statusLine(service, isTrusted),
                    .showsRestartHint = showsRestartHint,
                    .canvas = std::move(canvas),
                    .masterFooter = masterFooter(service, cards),
                    .swapsModifiers = settings.kvm_swap_modifiers.value_or(false),
                    .switchDelay = chosen(switchDelayOptions(), settings.kvm_switch_delay_ms),
                    .cornerSize = chosen(cornerSizeOptions(), settings.kvm_corner_size),
                    .sensitivity = chosen(sensitivityOptions(), settings.kvm_sensitivity),
                    .accessibility = accessibility(service, isTrusted)};
}

} // namespace quorbit
