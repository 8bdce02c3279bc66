#include "daemon/Fixture.h"
#include "pictures/Picture.h"
#include "settings/AboutTab.h"
#include "settings/DevicesTab.h"
#include "settings/HistoryList.h"
#include "settings/KvmStates.h"
#include "settings/KvmTab.h"
#include "settings/PairSheetView.h"
#include "settings/SettingsView.h"
#include "settings/TabStates.h"
#include "ui/Button.h"
#include "update/UpdateChecker.h"

#include <QMouseEvent>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr qint64 now = 1'700'000'000'000;
constexpr QSize tabSize(580, 446);

struct World : test::Fixture {
    UpdateChecker updater{platform, clock, QUrl(u"https://updates.invalid/version.json"_s), {u"en"_s}};
};

void publish(World &world, const TabState &state) {
    const auto answer = [&](const char *line, const QByteArray &body) {
        if (!body.isEmpty())
            world.service.answer(line, {body});
    };
    answer("GET /api/status", state.status);
    answer("GET /api/settings", state.settings);
    answer("GET /api/history", state.history);
    if (!state.status.isEmpty() && !world.startAndPoll())
        qFatal("the service is not found");
}

void hoverSecondRow(QWidget &view, const TimeFormats &) {
    auto *list = view.findChild<HistoryList *>();
    if (list == nullptr || list->rows().size() < 2)
        return;
    const QPoint place = list->rowRect(1).center();
    QMouseEvent move(QEvent::MouseMove, place, list->mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(list, &move);
}

ServiceState paired() {
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

} // namespace

std::vector<Picture> windowPictures() {
    std::vector<Picture> pictures;
    for (const TabState &state : tabStates()) {
        const auto world = std::make_shared<World>();
        publish(*world, state);
        for (const int tab : {0, 1}) {
            const auto make = [world, tab](const TimeFormats &formats) {
                auto view = std::make_unique<SettingsView>(
                    SettingsServices{*world->daemon, world->updater, world->clock, formats, {}, {}});
                view->showTab(tab);
                return view;
            };
            const bool isFull = state.name == "full"_L1; // where there is more to see
            pictures.push_back({u"window/"_s + state.name + (tab ? "-sync"_L1 : "-overview"_L1), make,
                                QSize(580, isFull ? 780 : 520), hoverSecondRow});
        }
    }
    return pictures;
}

std::vector<Picture> kvmPictures() {
    const auto world = std::make_shared<World>();
    const auto make = [world](const TimeFormats &) {
        return std::make_unique<KvmTab>(*world->daemon, KvmServices());
    };
    std::vector<Picture> pictures;
    for (const KvmState &state : kvmStates())
        pictures.push_back(
            {u"kvm/"_s + state.name, make, QSize(580, 1044), [state](QWidget &tab, const TimeFormats &) {
                 static_cast<KvmTab &>(tab).render(state.model());
             }});
    return pictures;
}

std::vector<Picture> devicesPictures() {
    const auto world = std::make_shared<World>();
    std::vector<Picture> pictures;
    const auto add = [&](const QString &name,
                         const std::function<void(DevicesTab &, const TimeFormats &)> &arrange) {
        const auto make = [world](const TimeFormats &formats) {
            return std::make_unique<DevicesTab>(*world->daemon, formats, world->clock);
        };
        const auto cast = [arrange](QWidget &tab, const TimeFormats &formats) {
            arrange(static_cast<DevicesTab &>(tab), formats);
        };
        pictures.push_back({u"devices/"_s + name, make, tabSize, cast});
    };
    const auto full = [](const std::optional<Device> &asked) {
        return [asked](DevicesTab &tab, const TimeFormats &formats) {
            tab.render(devicesModel(paired(), asked, now, formats));
        };
    };
    add(u"empty"_s, [](DevicesTab &, const TimeFormats &) {});
    add(u"full"_s, full({}));
    add(u"alert"_s, full(paired().devices[1]));

    using pairsheet::Mode;
    const QString host = u"192.168.1.20"_s;
    const std::vector<std::pair<QString, pairsheet::SheetState>> sheets{
        {u"show"_s, {}},
        {u"generating"_s, {.isGenerating = true}},
        {u"waiting"_s, {.pin = u"482 913"_s}},
        {u"paired"_s, {.pin = u"482 913"_s, .isPaired = true}},
        {u"connect"_s, {.mode = Mode::connect}},
        {u"busy"_s, {.mode = Mode::connect, .host = host, .inputPin = u"482913"_s, .isBusy = true}},
        {u"failed"_s, {.mode = Mode::connect, .host = host, .inputPin = u"1"_s, .hasFailed = true}}};
    for (const auto &[name, state] : sheets)
        add(u"sheet-"_s + name, [state = state, full](DevicesTab &tab, const TimeFormats &formats) {
            full({})(tab, formats);
            for (Button *button : tab.findChildren<Button *>())
                if (button->label() == qtTrId("devices.add"))
                    button->click();
            tab.window()->findChild<PairSheetView *>()->render(state);
        });
    return pictures;
}

std::vector<Picture> aboutPictures() {
    const QDateTime checked(QDate(2026, 11, 22), QTime(9, 41));
    AvailableUpdate update;
    update.version = u"1.5.0"_s;
    update.downloadURL = QUrl(u"https://host/quorbit.dmg"_s);
    update.releaseNotesText = u"Faster reconnects, a calmer layout editor, and fixes."_s;
    const auto offered = [&](DownloadState download) {
        return UpdateState{update, check::Available{update}, checked, download};
    };
    const std::vector<std::pair<QString, UpdateState>> states{
        {u"idle"_s, {}},
        {u"checking"_s, {.state = check::Checking{}}},
        {u"up-to-date"_s, {.state = check::UpToDate{u"1.4.1"_s}, .lastChecked = checked}},
        {u"available"_s, offered(DownloadState::idle)},
        {u"downloading"_s, offered(DownloadState::downloading)},
        {u"done"_s, offered(DownloadState::done)},
        {u"download-failed"_s, offered(DownloadState::failed)},
        {u"failed"_s, {.state = check::Failed{FailureReason::network}, .lastChecked = checked}},
        {u"restart"_s, offered(DownloadState::idle)}};

    const auto world = std::make_shared<World>();
    std::vector<Picture> pictures;
    for (const auto &[name, state] : states) {
        const auto make = [world](const TimeFormats &formats) {
            const AboutServices services{.languages = {{{}, qtTrId("about.language.system")}},
                                         .storedLanguage = [] { return QString(); }};
            return std::make_unique<AboutTab>(world->updater, formats, services, u"1.4.1"_s);
        };
        const AboutInput input{.bundleVersion = u"1.4.1"_s,
                               .currentVersion = u"1.4.1"_s,
                               .isRestartPending = name == u"restart"_s};
        pictures.push_back({u"about/"_s + name, make, QSize(580, 640),
                            [state = state, input](QWidget &tab, const TimeFormats &formats) {
                                static_cast<AboutTab &>(tab).render(aboutModel(state, input, formats));
                            }});
    }
    return pictures;
}

} // namespace quorbit
