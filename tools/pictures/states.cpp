#include "Picture.h"
#include "daemon/Fixture.h"
#include "menubar/MenuBarView.h"
#include "menubar/PanelStates.h"
#include "settings/SettingsView.h"
#include "settings/TabStates.h"
#include "settings/about/AboutTab.h"
#include "settings/devices/DevicesTab.h"
#include "settings/kvm/KvmTab.h"
#include "settings/pairing/PairSheetView.h"
#include "ui/controls/Button.h"
#include "update/UpdateChecker.h"

namespace quorbit {

namespace {

constexpr qint64 now = 1'700'000'000'000;

struct World : test::Fixture {
    UpdateChecker updater{platform, clock, QUrl(u"https://updates.invalid/version.json"_s), {u"en"_s}};
};

std::vector<Picture> panelPictures() {
    std::vector<Picture> pictures;
    for (const PanelState &state : panelStates()) {
        const auto make = [state](const TimeFormats &) {
            auto panel = std::make_unique<MenuBarView>();
            panel->render(state.model());
            return panel;
        };
        pictures.push_back({u"panel/"_s + state.name, make});
    }
    return pictures;
}

/// The first two tabs in their window.
std::vector<Picture> windowPictures() {
    std::vector<Picture> pictures;
    for (const TabState &state : tabStates()) {
        const auto world = std::make_shared<World>();
        state.answerFrom(world->service);
        if (!state.status.isEmpty() && !world->startAndPoll())
            qFatal("the service is not found");
        for (const int tab : {0, 1}) {
            const auto make = [world, tab](const TimeFormats &formats) {
                auto view = std::make_unique<SettingsView>(
                    SettingsServices{*world->daemon, world->updater, world->clock, formats, {}, {}});
                view->showTab(tab);
                return view;
            };
            const bool isFull = state.name == "full"_L1; // where there is more to see
            pictures.push_back({u"window/"_s + state.name + (tab ? "-sync"_L1 : "-overview"_L1), make,
                                QSize(580, isFull ? 780 : 520)});
        }
    }
    return pictures;
}

const QString ownId = u"10b4e2f09a77c1d3"_s;
const QString officeId = u"77aa01fe"_s;
const QString laptopId = u"10b91c33"_s;

/// Three computers, one of them away, and everything in order.
ServiceState ordinarySharing() {
    ServiceState service;
    service.status = Status{.device_id = ownId,
                            .device_name = u"Studio Mac"_s,
                            .platform = u"darwin"_s,
                            .peers = {{officeId, u"Office Linux"_s}},
                            .accessibility_granted = true};
    service.settings = DaemonSettings{.kvm_enabled = true,
                                      .kvm_switch_delay_ms = 250,
                                      .kvm_corner_size = 32,
                                      .kvm_sensitivity = 1.5,
                                      .kvm_layout = ScreenLayout{{ownId, {0, 0, 1778, 1000}},
                                                                 {officeId, {1778, 0, 1778, 1000}},
                                                                 {laptopId, {900, 1080, 1600, 900}}},
                                      .kvm_master_id = ownId};
    service.devices = {{.device_id = officeId, .name = u"Office Linux"_s, .platform = u"linux"_s},
                       {.device_id = laptopId, .name = u"Travel laptop"_s, .platform = u"darwin"_s}};
    return service;
}

std::vector<Picture> kvmPictures() {
    const auto world = std::make_shared<World>();
    const auto make = [world](const TimeFormats &) {
        return std::make_unique<KvmTab>(*world->daemon, KvmServices());
    };
    std::vector<Picture> pictures;
    const auto add = [&](const QString &name, auto change, bool showsRestartHint = false) {
        ServiceState service = ordinarySharing();
        change(service);
        const auto render = [=](QWidget &tab, const TimeFormats &) {
            static_cast<KvmTab &>(tab).render(kvmModel(service, true, showsRestartHint));
        };
        pictures.push_back({u"kvm/"_s + name, make, QSize(580, 1044), render});
    };
    const auto refuse = [](ServiceState &service) { service.status->accessibility_granted = false; };
    add(u"loading"_s, [](auto &service) { service = {}; });
    add(u"ready"_s, [](auto &) {});
    add(u"sharing-off"_s, [](auto &service) { service.settings->kvm_enabled = false; });
    add(u"not-granted"_s, refuse);
    add(u"needs-restart"_s, [refuse](auto &service) {
        refuse(service);
        service.status->accessibility_needs_restart = true;
    });
    add(u"waiting"_s, [](auto &service) { service.status->peers.clear(); });
    add(u"no-peer"_s, [](auto &service) {
        service.status->peers.clear();
        service.devices.clear();
    });
    add(u"no-master"_s, [](auto &service) { service.settings->kvm_master_id.reset(); });
    add(u"controlled"_s, [](auto &service) { service.settings->kvm_master_id = officeId; });
    add(u"master-off"_s, [](auto &service) { service.settings->kvm_master_id = laptopId; });
    add(u"long-names"_s, [](auto &service) {
        service.settings->kvm_master_id = laptopId;
        service.status->device_name = u"The computer in the corner office on the second floor"_s;
        service.devices[1].name =
            u"A travel laptop whose name is longer than any line of this window could ever show"_s;
    });
    add(u"restart-hint"_s, refuse, true);
    return pictures;
}

ServiceState pairedDevices() {
    ServiceState service;
    service.devices = {
        {.device_id = u"a"_s,
         .name = u"Office Linux"_s,
         .platform = u"linux"_s,
         .fingerprint = u"sha256:9f86d081884c7d659a2f"_s,
         .online = true},
        {.device_id = u"b"_s,
         .name = u"Travel laptop"_s,
         .platform = u"darwin"_s,
         .fingerprint = u"sha256:60303ae22b998861bce3"_s,
         .last_seen = now - 130'000},
        {.device_id = u"c"_s,
         .name = u"The computer in the attic that nobody has renamed since it was bought, ten years ago"_s,
         .fingerprint = u"sha256:fd61a03af4f77d870fc2"_s}};
    return service;
}

std::vector<Picture> devicesPictures() {
    const auto world = std::make_shared<World>();
    const auto make = [world](const TimeFormats &formats) {
        return std::make_unique<DevicesTab>(*world->daemon, formats, world->clock);
    };
    const auto full = [](const std::optional<Device> &asked) {
        return [asked](QWidget &tab, const TimeFormats &formats) {
            static_cast<DevicesTab &>(tab).render(devicesModel(pairedDevices(), asked, now, formats));
        };
    };
    constexpr QSize size(580, 446);
    std::vector<Picture> pictures{{u"devices/empty"_s, make, size},
                                  {u"devices/full"_s, make, size, full({})},
                                  {u"devices/alert"_s, make, size, full(pairedDevices().devices[1])}};

    using pairsheet::Mode;
    const QString host = u"192.168.1.20"_s;
    const std::pair<QString, pairsheet::SheetState> sheets[]{
        {u"show"_s, {}},
        {u"generating"_s, {.isGenerating = true}},
        {u"waiting"_s, {.pin = u"482 913"_s}},
        {u"paired"_s, {.pin = u"482 913"_s, .isPaired = true}},
        {u"connect"_s, {.mode = Mode::connect}},
        {u"busy"_s, {.mode = Mode::connect, .host = host, .inputPin = u"482913"_s, .isBusy = true}},
        {u"failed"_s, {.mode = Mode::connect, .host = host, .inputPin = u"1"_s, .hasFailed = true}}};
    for (const auto &[name, state] : sheets) {
        const auto open = [state = state, full](QWidget &tab, const TimeFormats &formats) {
            full({})(tab, formats);
            for (Button *button : tab.findChildren<Button *>())
                if (button->label() == qtTrId("devices.add"))
                    button->click();
            tab.window()->findChild<PairSheetView *>()->render(state);
        };
        pictures.push_back({u"devices/sheet-"_s + name, make, size, open});
    }
    return pictures;
}

std::vector<Picture> aboutPictures() {
    const QDateTime checked(QDate(2026, 11, 22), QTime(9, 41));
    AvailableUpdate update;
    update.version = u"1.5.0"_s;
    update.downloadURL = QUrl(u"https://host/quorbit.dmg"_s);
    update.releaseNotesText = u"Faster reconnects, a calmer layout editor, and fixes."_s;
    AvailableUpdate wordy = update;
    wordy.releaseNotesText = u"Many fixes. "_s.repeated(30) + u"\nAnd more."_s;
    const std::pair<QString, UpdateState> states[]{
        {u"idle"_s, {}},
        {u"checking"_s, {.state = check::Checking{}}},
        {u"up-to-date"_s, {.state = check::UpToDate{u"1.4.1"_s}, .lastChecked = checked}},
        {u"available"_s, {update, check::Available{update}, checked}},
        {u"downloading"_s, {update, check::Available{update}, checked, DownloadState::downloading}},
        {u"done"_s, {update, check::Available{update}, checked, DownloadState::done}},
        {u"download-failed"_s, {wordy, check::Available{wordy}, checked, DownloadState::failed}},
        {u"failed"_s, {.state = check::Failed{FailureReason::network}, .lastChecked = checked}},
        {u"restart"_s, {}}};

    const auto world = std::make_shared<World>();
    const auto make = [world](const TimeFormats &formats) {
        const AboutServices services{.languages = {{{}, qtTrId("about.language.system")}},
                                     .storedLanguage = [] { return QString(); }};
        return std::make_unique<AboutTab>(world->updater, formats, services, u"1.4.1"_s);
    };
    std::vector<Picture> pictures;
    for (const auto &[name, state] : states) {
        const AboutInput input{.bundleVersion = u"1.4.1"_s,
                               .currentVersion = u"1.4.1"_s,
                               .isRestartPending = name == u"restart"_s};
        const auto render = [state = state, input](QWidget &tab, const TimeFormats &formats) {
            static_cast<AboutTab &>(tab).render(aboutModel(state, input, formats));
        };
        pictures.push_back({u"about/"_s + name, make, QSize(580, 640), render});
    }
    return pictures;
}

} // namespace

std::vector<Picture> allPictures() {
    std::vector<Picture> all;
    for (auto list : {panelPictures(), windowPictures(), kvmPictures(), devicesPictures(), aboutPictures()})
        all.insert(all.end(), list.begin(), list.end());
    return all;
}

} // namespace quorbit
