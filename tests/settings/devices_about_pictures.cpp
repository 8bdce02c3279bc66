// Draws the Devices tab, its sheet and alert, and the About tab in every state, language, appearance and
// scale: devices_about_pictures --out DIR [--font POINTS] [--size WIDTHxHEIGHT]

#include "daemon/Daemon.h"
#include "menubar/TestWorld.h"
#include "settings/AboutTab.h"
#include "settings/DevicesTab.h"
#include "settings/PairSheetView.h"
#include "settings/TimeFormats.h"
#include "support/FakeClock.h"
#include "support/FakeDefaults.h"
#include "support/FakePlatform.h"
#include "ui/Button.h"
#include "ui/ControlStyle.h"
#include "update/UpdateChecker.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTimeZone>
#include <QVBoxLayout>

#include <functional>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

namespace {

constexpr qint64 now = 1'700'000'000'000;

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

std::vector<std::pair<QString, pairsheet::SheetState>> sheets() {
    using pairsheet::Mode;
    const QString host = u"192.168.1.20"_s;
    return {{u"show"_s, {}},
            {u"generating"_s, {.isGenerating = true}},
            {u"waiting"_s, {.pin = u"482 913"_s}},
            {u"paired"_s, {.pin = u"482 913"_s, .isPaired = true}},
            {u"connect"_s, {.mode = Mode::connect}},
            {u"busy"_s, {.mode = Mode::connect, .host = host, .inputPin = u"482913"_s, .isBusy = true}},
            {u"failed"_s, {.mode = Mode::connect, .host = host, .inputPin = u"1"_s, .hasFailed = true}}};
}

struct AboutState {
    QString name;
    UpdateState update;
    bool isRestartPending = false;
};

std::vector<AboutState> aboutStates() {
    const QDateTime checked(QDate(2026, 11, 22), QTime(9, 41));
    AvailableUpdate update;
    update.version = u"1.5.0"_s;
    update.downloadURL = QUrl(u"https://host/quorbit.dmg"_s);
    update.releaseNotesText = u"Faster reconnects, a calmer layout editor, and fixes."_s;
    const auto offered = [&](DownloadState download) {
        return UpdateState{update, check::Available{update}, checked, download};
    };
    return {{u"idle"_s, {}},
            {u"checking"_s, {.state = check::Checking{}}},
            {u"up-to-date"_s, {.state = check::UpToDate{u"1.4.1"_s}, .lastChecked = checked}},
            {u"available"_s, offered(DownloadState::idle)},
            {u"downloading"_s, offered(DownloadState::downloading)},
            {u"done"_s, offered(DownloadState::done)},
            {u"download-failed"_s, offered(DownloadState::failed)},
            {u"failed"_s, {.state = check::Failed{FailureReason::network}, .lastChecked = checked}},
            {u"restart"_s, offered(DownloadState::idle), true}};
}

class Album {
public:
    Album(QDir folder, QSize size, QString suffix, QLatin1String language)
        : folder_(std::move(folder))
        , size_(size)
        , suffix_(std::move(suffix))
        , formats_(QLocale(language == "en"_L1 ? QLocale::English : QLocale::Chinese)) {}

    void draw() {
        drawDevices(u"empty"_s, {});
        drawDevices(u"full"_s, devicesModel(paired(), {}, now, formats_));
        drawDevices(u"alert"_s, devicesModel(paired(), paired().devices[1], now, formats_));
        for (const auto &[name, state] : sheets())
            drawSheet(name, state);
        for (const AboutState &state : aboutStates())
            drawAbout(state);
    }

private:
    /// Shows a tab in a window, sets what it shows and draws it.
    template <class Tab>
    void drawTab(Tab *tab, const QString &name, const std::function<void(Tab &)> &set) {
        QWidget window;
        window.setAttribute(Qt::WA_DontShowOnScreen);
        window.resize(size_);
        auto *layout = new QVBoxLayout(&window);
        layout->setContentsMargins({});
        layout->addWidget(tab);
        window.show();
        set(*tab);
        for (int round = 0; round < 10; ++round)
            QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
        for (const int scale : {1, 2}) {
            QImage image(size_ * scale, QImage::Format_RGB32);
            image.setDevicePixelRatio(scale);
            window.render(&image);
            const QString file = u"%1-%2@%3x.png"_s.arg(name, suffix_, QString::number(scale));
            if (!image.save(folder_.filePath(file)))
                qFatal("cannot write %s", qPrintable(folder_.filePath(file)));
        }
    }

    void drawDevices(const QString &name, const DevicesModel &model) {
        drawTab<DevicesTab>(new DevicesTab(daemon_, formats_, clock_), u"devices-"_s + name,
                            [&](DevicesTab &tab) { tab.render(model); });
    }

    void drawSheet(const QString &name, const pairsheet::SheetState &state) {
        drawTab<DevicesTab>(new DevicesTab(daemon_, formats_, clock_), u"sheet-"_s + name,
                            [&](DevicesTab &tab) {
                                tab.render(devicesModel(paired(), {}, now, formats_));
                                for (Button *button : tab.findChildren<Button *>()) {
                                    if (button->label() == qtTrId("devices.add"))
                                        button->click();
                                }
                                tab.window()->findChild<PairSheetView *>()->render(state);
                            });
    }

    void drawAbout(const AboutState &state) {
        const AboutServices services{.languages = {{{}, qtTrId("about.language.system")}},
                                     .storedLanguage = [] { return QString(); }};
        drawTab<AboutTab>(new AboutTab(updater_, formats_, services, u"1.4.1"_s), u"about-"_s + state.name,
                          [&](AboutTab &tab) {
                              tab.render(aboutModel(state.update,
                                                    {.bundleVersion = u"1.4.1"_s,
                                                     .currentVersion = u"1.4.1"_s,
                                                     .isRestartPending = state.isRestartPending},
                                                    formats_));
                          });
    }

    QDir folder_;
    QSize size_;
    QString suffix_;
    TimeFormats formats_;
    FakePlatform platform_;
    FakeDefaults defaults_;
    FakeClock clock_;
    Daemon daemon_{platform_, defaults_, clock_, [] {}};
    UpdateChecker updater_{platform_, clock_, QUrl(u"https://localhost/version.json"_s), {u"en"_s}};
};

} // namespace

int main(int argc, char **argv) {
    useTestFonts();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setStyle(new ControlStyle);

    QCommandLineParser arguments;
    const QCommandLineOption out(u"out"_s, u"The folder that the pictures are written to."_s, u"folder"_s);
    const QCommandLineOption font(u"font"_s, u"The size of the user's font."_s, u"points"_s, u"9"_s);
    const QCommandLineOption size(u"size"_s, u"The size of the tab."_s, u"size"_s, u"580x446"_s);
    arguments.addOptions({out, font, size});
    arguments.addHelpOption();
    arguments.process(app);
    const QDir folder(arguments.value(out));
    if (!arguments.isSet(out) || !folder.mkpath(u"."_s))
        qFatal("--out needs a folder that can be written to");
    const QStringList sides = arguments.value(size).split(u'x');

    for (const bool dark : {false, true}) {
        useAppearance({.dark = dark, .accent = {}}, arguments.value(font).toDouble());
        for (const QLatin1String language : {"en"_L1, "zh_Hans"_L1}) {
            useLanguage(language);
            const QString suffix = (dark ? u"dark-"_s : u"light-"_s) + language;
            Album(folder, QSize(sides.value(0).toInt(), sides.value(1).toInt()), suffix, language).draw();
        }
    }
    return 0;
}
