// Draws the settings window in every state, tab, language, appearance and scale:
// settings_pictures --out DIR [--font POINTS]

#include "daemon/Fixture.h"
#include "menubar/TestWorld.h"
#include "settings/HistoryList.h"
#include "settings/SettingsView.h"
#include "settings/TabStates.h"
#include "settings/TimeFormats.h"
#include "ui/ControlStyle.h"
#include "ui/TabBar.h"
#include "update/UpdateChecker.h"

#include <QApplication>
#include <QCommandLineParser>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

namespace {

constexpr QSize windowSize(580, 520);
constexpr QSize tallWindow(580, 780); // where there is more to see

void publish(Fixture &world, const TabState &state) {
    const auto answer = [&](const char *line, const QByteArray &body) {
        if (!body.isEmpty())
            world.service.answer(line, {body});
    };
    answer("GET /api/status", state.status);
    answer("GET /api/settings", state.settings);
    answer("GET /api/history", state.history);
    if (state.status.isEmpty())
        world.writeFiles();
    else if (!world.startAndPoll())
        qFatal("the service is not found");
}

void hoverSecondRow(SettingsView &view) {
    auto *list = view.findChild<HistoryList *>();
    if (list == nullptr || list->rows().size() < 2)
        return;
    const QPoint place = list->rowRect(1).center();
    QMouseEvent move(QEvent::MouseMove, place, list->mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(list, &move);
}

void draw(Fixture &world, const QSize &size, const QDir &folder, const QString &name) {
    UpdateChecker updater(world.platform, world.clock, QUrl(u"https://updates.invalid/version.json"_s),
                          {u"en"_s});
    const TimeFormats formats{QLocale()};
    SettingsView view({*world.daemon, updater, world.clock, formats, {}, {}});
    view.setAttribute(Qt::WA_DontShowOnScreen);
    view.resize(size);
    view.show();
    for (int tab = 0; tab < 2; ++tab) {
        view.showTab(tab);
        QTest::qWait(100);
        hoverSecondRow(view);
        for (const int scale : {1, 2}) {
            QImage image(view.size() * scale, QImage::Format_ARGB32_Premultiplied);
            image.setDevicePixelRatio(scale);
            view.render(&image);
            const QString file =
                folder.filePath(u"%1-%2@%3x.png"_s.arg(name, tab ? "sync"_L1 : "overview"_L1).arg(scale));
            if (!image.save(file))
                qFatal("cannot write %s", qPrintable(file));
        }
    }
}

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
    arguments.addOptions({out, font});
    arguments.addHelpOption();
    arguments.process(app);
    const QDir folder(arguments.value(out));
    if (!arguments.isSet(out) || !folder.mkpath(u"."_s))
        qFatal("--out needs a folder that can be written to");

    for (const TabState &state : tabStates()) {
        Fixture world;
        publish(world, state);
        for (const bool dark : {false, true}) {
            useAppearance({.dark = dark, .accent = {}}, arguments.value(font).toDouble());
            for (const QLatin1String language : {"en"_L1, "zh_Hans"_L1}) {
                useLanguage(language);
                draw(world, state.name == "full"_L1 ? tallWindow : windowSize, folder,
                     u"%1-%2-%3"_s.arg(state.name, dark ? "dark"_L1 : "light"_L1, language));
            }
        }
    }
    return 0;
}
