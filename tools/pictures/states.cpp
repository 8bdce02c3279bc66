#include "Picture.h"
#include "menubar/MenuBarView.h"
#include "settings/SettingsWorld.h"
#include "settings/devices/DeviceRow.h"
#include "settings/pairing/PairSheetView.h"
#include "support/ServiceStates.h"
#include "support/ViewChecks.h"
#include "ui/controls/Button.h"

namespace quorbit {

using namespace test;

namespace {

/// An update, what the notes of its release say and how far it is.
UpdateState updateWith(const QString &notes, DownloadState state = DownloadState::idle) {
    AvailableUpdate update;
    update.version = u"1.5.0"_s;
    update.downloadURL = QUrl(u"https://host/quorbit.dmg"_s);
    update.releaseNotesText = notes;
    return {update, check::Available{update}, QDateTime(QDate(2026, 11, 22), QTime(9, 41)), state};
}

/// Those that every view tells of, by their names.
std::vector<std::pair<QString, ServiceState>> states() {
    std::vector<std::pair<QString, ServiceState>> all{
        {u"starting"_s, {}}, {u"disconnected"_s, {.connectionState = ConnectionState::disconnected}}};
    for (const char *name : {"empty", "waiting", "still", "paused", "transfer", "sparse", "chinese"})
        all.emplace_back(QLatin1String(name), scenario(name));
    all.emplace_back(u"crowded"_s, crowdedState());
    return all;
}

std::vector<Picture> panelPictures() {
    std::vector<Picture> pictures;
    for (const auto &[name, service] : states()) {
        const bool isBusy = service.status && service.status->file_xfer;
        const auto make = [service = service, isBusy](const TimeFormats &) {
            auto panel = std::make_unique<MenuBarView>();
            panel->render(menuBarModel(service, isBusy ? updateWith({}) : UpdateState()));
            return panel;
        };
        pictures.push_back({u"panel/"_s + name, make});
    }
    return pictures;
}

/// The settings window at a tab.
Picture window(const QString &name, Tab tab, const std::shared_ptr<SettingsWorld> &world, int height,
               const Picture::Arrange &arrange = {}) {
    const auto make = [world, tab](const TimeFormats &formats) {
        auto view = std::make_unique<SettingsView>(world->services(formats));
        view->setAccessibleName(qtTrId("menu.settings")); // as its window does
        view->showTab(tab);
        return view;
    };
    return {name, make, QSize(580, height), arrange};
}

/// The tabs that tell of the service.
std::vector<Picture> tabPictures() {
    std::vector<Picture> pictures;
    for (const auto &[name, service] : states()) {
        const auto world = std::make_shared<SettingsWorld>(service);
        const bool isCrowded = name == u"crowded"_s; // where there is more to see
        pictures.push_back(window(u"overview/"_s + name, overviewTab, world, isCrowded ? 780 : 520));
        pictures.push_back(window(u"sync/"_s + name, syncTab, world, isCrowded ? 780 : 520));
        pictures.push_back(window(u"kvm/"_s + name, kvmTab, world, 1130));
        pictures.push_back(window(u"devices/"_s + name, devicesTab, world, 520));
    }
    for (const char *name :
         {"sharing-off", "no-permission", "needs-restart", "no-master", "peer-master", "offline-master"}) {
        const auto world = std::make_shared<SettingsWorld>(scenario(name));
        pictures.push_back(window(u"kvm/"_s + QLatin1String(name), kvmTab, world, 1130));
    }
    const auto tellOfRestart = [](QWidget &view, const TimeFormats &) {
        only<KvmTab>(view)->render(kvmModel(usualState(), true, true));
    };
    pictures.push_back(
        window(u"kvm/restart-hint"_s, kvmTab, std::make_shared<SettingsWorld>(), 1130, tellOfRestart));
    return pictures;
}

/// What opens over the devices.
std::vector<Picture> overlayPictures() {
    using pairsheet::Mode;
    const auto world = std::make_shared<SettingsWorld>();
    const auto ask = [](QWidget &view, const TimeFormats &) {
        Q_EMIT seen<DeviceRow>(view).back()->removeRequested();
    };
    std::vector<Picture> pictures{window(u"devices/alert"_s, devicesTab, world, 520, ask)};
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
        const auto open = [state = state](QWidget &view, const TimeFormats &) {
            named<Button>(view, qtTrId("devices.add"))->click();
            only<PairSheetView>(view)->render(state);
        };
        pictures.push_back(window(u"devices/sheet-"_s + name, devicesTab, world, 520, open));
    }
    return pictures;
}

std::vector<Picture> aboutPictures() {
    const QString notes = u"Faster reconnects, a calmer layout editor, and fixes."_s;
    const QDateTime checked = *updateWith(notes).lastChecked;
    const std::pair<QString, UpdateState> states[]{
        {u"idle"_s, {}},
        {u"checking"_s, {.state = check::Checking{}}},
        {u"up-to-date"_s, {.state = check::UpToDate{u"1.4.1"_s}, .lastChecked = checked}},
        {u"available"_s, updateWith(notes)},
        {u"downloading"_s, updateWith(notes, DownloadState::downloading)},
        {u"done"_s, updateWith(notes, DownloadState::done)},
        {u"download-failed"_s,
         updateWith(u"Many fixes. "_s.repeated(30) + u"\nAnd more."_s, DownloadState::failed)},
        {u"failed"_s, {.state = check::Failed{FailureReason::network}, .lastChecked = checked}},
        {u"restart"_s, {}}};
    const auto world = std::make_shared<SettingsWorld>();
    std::vector<Picture> pictures;
    for (const auto &[name, state] : states) {
        const AboutInput input{.bundleVersion = u"1.4.1"_s,
                               .currentVersion = u"1.4.1"_s,
                               .isRestartPending = name == u"restart"_s};
        const auto render = [state = state, input](QWidget &view, const TimeFormats &formats) {
            only<AboutTab>(view)->render(aboutModel(state, input, formats));
        };
        pictures.push_back(window(u"about/"_s + name, aboutTab, world, 700, render));
    }
    return pictures;
}

} // namespace

std::vector<Picture> allPictures() {
    std::vector<Picture> all;
    for (const auto &list : {panelPictures(), tabPictures(), overlayPictures(), aboutPictures()})
        all.insert(all.end(), list.begin(), list.end());
    return all;
}

} // namespace quorbit
