#include "settings/SettingsWorld.h"
#include "settings/canvas/CanvasArea.h"
#include "settings/devices/DeviceRow.h"
#include "settings/sync/HistoryList.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/controls/Button.h"
#include "ui/controls/Switch.h"
#include "ui/form/Form.h"
#include "ui/overlay/Sheet.h"
#include "ui/text/SelectableText.h"
#include "ui/text/StatusDot.h"
#include "ui/text/TextField.h"

#include <QJsonDocument>
#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;
using namespace std::chrono_literals;

namespace {

const QByteArray saving = "PUT /api/settings";

/// A settings window over such a service.
struct SettingsWindow : SettingsWorld {
    explicit SettingsWindow(Tab tab, const ServiceState &state = usualState()) : SettingsWorld(state) {
        view->resize(560, 460);
        view->showTab(tab);
        openWindow(*view);
    }

    void pollAgain(const ServiceState &state) {
        publish(state);
        if (!SettingsWorld::pollAgain())
            qFatal("no refresh");
        settle();
    }
    template <class Widget>
    Widget *only() const {
        return test::only<Widget>(*view);
    }
    template <class Widget>
    Widget *named(const QString &name) const {
        return test::named<Widget>(*view, name);
    }
    bool shows(const QString &text) const { return textsOf(*view).contains(text); }
    void press(const QString &button) const { named<Button>(button)->click(); }
    /// How often that was asked of the service.
    int asked(const QByteArray &line) const { return service.count(line); }

    TimeFormats formats{QLocale(QLocale::English)};
    std::unique_ptr<SettingsView> view = std::make_unique<SettingsView>(services(formats));
};

} // namespace

class SettingsTabsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sameStatePaintsNothing() {
        const ServiceState full = crowdedState();
        for (int tab = 0; tab < tabCount; ++tab) {
            SettingsWindow window(static_cast<Tab>(tab), full);
            PaintWatch watch;
            window.pollAgain(full);
            QCOMPARE(window.asked("GET /api/status"), 1);
            QCOMPARE(watch.painted(), QStringList());
        }
    }

    void firstFrameIsRight() {
        SettingsWindow window(overviewTab, crowdedState());
        window.view->resize(580, 800);
        settle();
        PaintWatch watch;
        window.view->showTab(syncTab);
        auto *list = window.only<HistoryList>();
        QCOMPARE(watch.firstSize(list).value().height(), list->sizeHint().height());
    }

    void hiddenWindowRestsAndCatchesUp() {
        SettingsWindow window(overviewTab);
        auto *running = window.named<TextLabel>(u"Running"_s);
        auto *name = window.named<TextField>(u"Device name"_s);
        const auto dot = [&] { return window.only<StatusDot>()->grab().toImage().pixelColor(4, 4); };
        QCOMPARE(dot(), shapeColor(window.view->palette(), TextColor::green));
        name->setText(u"Half a na"_s);
        window.view->hide();
        window.pollAgain(scenario("paused"));
        QCOMPARE(running->text(), u"Running"_s);
        window.view->show();
        QCOMPARE(running->text(), u"Paused"_s);
        QCOMPARE(dot(), shapeColor(window.view->palette(), TextColor::orange));
        QCOMPARE(name->text(), u"Studio Mac"_s); // the tab begins anew
    }

    void republicationDisturbsNothing() {
        SettingsWindow window(overviewTab);
        window.view->resize(560, 300);
        auto *name = window.named<TextField>(u"Device name"_s);
        name->setFocus();
        name->setText(u"Half"_s);
        name->setCursorPosition(3);
        auto *identifier = window.named<SelectableText>(u"Office Linux"_s);
        identifier->setSelection(1, 3);
        QScrollBar *bar = window.only<Form>()->verticalScrollBar();
        bar->setValue(30);
        // Other things change; the peer has another name and stands in another place.
        ServiceState state = usualState();
        state.status->device_name = u"Elsewhere"_s;
        state.status->peers = {{officeId, u"Renamed"_s}, {u"5c"_s, u"New"_s}};
        window.pollAgain(state);
        QCOMPARE(name->text(), u"Half"_s);
        QCOMPARE(name->cursorPosition(), 3);
        QVERIFY(name->hasFocus());
        QCOMPARE(window.named<SelectableText>(u"Renamed"_s), identifier);
        QCOMPARE(identifier->selectedText(), u"7aa"_s);
        QCOMPARE(bar->value(), 30);
    }

    void searchFieldGoesWithTheSixthEntry() {
        const ServiceState full = crowdedState();
        SettingsWindow window(syncTab, full);
        auto *list = window.only<HistoryList>();
        auto *search = window.named<TextField>(u"Search history"_s);
        search->setFocus(Qt::MouseFocusReason);
        QTest::keyClicks(search, u"override"_s);
        QCOMPARE(list->rows().size(), std::size_t{1});
        // It takes what is typed with it; its text goes on filtering.
        window.pollAgain(usualState());
        QVERIFY(!search->isVisible() && !list->isVisible() && window.shows(u"No matching entries"_s));
        QVERIFY(window.view->hasFocus());
        window.pollAgain(full);
        search->clear();
        QCOMPARE(list->rows().size(), full.history.size());
        QVERIFY(list->isVisible());
    }

    void keyboardStaysInTheHistory() {
        ServiceState state = usualState();
        state.history = longHistory(1'000);
        SettingsWindow window(syncTab, state);
        auto *list = window.only<HistoryList>();
        list->setFocus(Qt::TabFocusReason);
        QTest::keyClick(list, Qt::Key_End);
        const QRect reached = list->rowRect(999);
        QCOMPARE(list->visibleRegion().intersected(reached), QRegion(reached));
        // At its entry wherever that moves; where that goes, at the one in its place, or at the last.
        std::vector<HistoryList::Row> rows = list->rows();
        const auto rowAfter = [&](auto change) {
            change();
            list->setRows(rows);
            return list->currentRow();
        };
        QCOMPARE(rowAfter([&] { rows.insert(rows.begin(), {9'999, {}, u"new"_s, {}}); }), 1'000);
        QCOMPARE(rowAfter([&] { rows.push_back({9'998, {}, u"old"_s, {}}); }), 1'000);
        QCOMPARE(rowAfter([&] { rows.erase(rows.end() - 2); }), 1'000);
        QCOMPARE(rowAfter([&] { rows.resize(3); }), 2);
    }

    void movedRowIsNotApplied() {
        SettingsWindow window(syncTab);
        auto *list = window.only<HistoryList>();
        std::vector<HistoryList::Row> moved = list->rows();
        std::rotate(moved.begin(), moved.begin() + 1, moved.end());
        const QPoint place = list->rowRect(0).center();
        QTest::mousePress(list, Qt::LeftButton, {}, place);
        list->setRows(moved);
        QTest::mouseRelease(list, Qt::LeftButton, {}, place);
        QTest::mouseClick(list, Qt::RightButton, {}, place);
        QTest::mouseClick(list, Qt::LeftButton, {}, place);
        QTRY_COMPARE(window.asked("POST /api/history/apply/2"), 1);
        QCOMPARE(window.asked("POST /api/history/apply/3"), 0);
    }

    void aCrowdIsCutAfterTwoHundred() {
        ServiceState crowd = usualState();
        crowd.devices.resize(1'000);
        SettingsWindow window(devicesTab, crowd);
        QCOMPARE(window.view->findChildren<DeviceRow *>().size(), 200);
        QVERIFY(window.shows(u"and 800 more"_s));
    }

    void timesStayCurrentWhileSeen() {
        ServiceState state = usualState();
        state.devices[0].online = false;
        state.devices[0].last_seen = 1'700'000'000'000 - 90'000; // before the clocks of the test begin
        SettingsWindow window(devicesTab, state);
        window.viewClock.advance(29'999ms);
        QVERIFY(window.shows(u"Last seen 1 min. ago"_s));
        window.viewClock.advance(1ms);
        QVERIFY(window.shows(u"Last seen 2 min. ago"_s));
        window.view->hide();
        QVERIFY(window.viewClock.pending().empty());
        window.viewClock.advance(60s);
        window.view->show();
        QVERIFY(window.shows(u"Last seen 3 min. ago"_s));
        QCOMPARE(window.viewClock.pending().size(), std::size_t(1));
    }

    void answersToAClosedSheetAreLost() {
        SettingsWindow window(devicesTab);
        const QByteArray asking = "POST /api/pair/show";
        window.service.answer(asking, {R"({"pin":"482913"})"});
        window.press(u"Add a computer"_s);
        window.press(u"Create a PIN"_s);
        QTest::keyClick(window.only<Sheet>(), Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        window.press(u"Add a computer"_s);
        QTRY_COMPARE(window.asked(asking), 1);
        window.pollAgain(usualState());
        window.viewClock.advance(2s);
        QVERIFY(window.only<Sheet>()->isVisible());
        // Neither does a request outlive the window.
        window.service.answer(asking, {.manner = Answer::hang});
        window.press(u"Create a PIN"_s);
        QTRY_COMPARE(window.asked(asking), 2);
    }

    void onlyTheSwitchTellsOfARestart() {
        const std::tuple<const char *, QByteArray, bool> steps[]{
            {"Swap ⌘ and Ctrl", R"({"ok":true,"need_restart":true})", false},
            {"Share keyboard and mouse", R"({"ok":true})", false},
            {"Share keyboard and mouse", R"({"ok":false,"need_restart":true})", true},
            {"Share keyboard and mouse", R"({"ok":true})", true}};
        SettingsWindow window(kvmTab);
        for (const auto &[control, answer, isTold] : steps) {
            window.service.answer(saving, {answer});
            window.named<Switch>(QString::fromUtf8(control))->click();
            QTest::qWait(100);
            QTRY_COMPARE(window.shows(u"This takes effect once the Quorbit service restarts."_s), isTold);
        }
    }

    void stepsOnTheCanvasEndWhereTheUserLeftThem() {
        SettingsWindow window(kvmTab);
        auto *area = window.only<CanvasArea>();
        area->setFocus(Qt::ShortcutFocusReason);
        area->setCurrentCard(officeId);
        const auto step = [&] { QTest::keyClick(area, Qt::Key_Down); };
        const auto place = [&] { return area->placeOf(*area->cardWithID(officeId)); };
        const auto lastSaved = [&] {
            const auto save = std::find_if(window.service.seen.rbegin(), window.service.seen.rend(),
                                           [](const SeenRequest &each) { return each.line == saving; });
            const auto record = QJsonDocument::fromJson(save->body);
            return record["kvm_layout"_L1][officeId]["y"_L1].toDouble();
        };

        // A save that fails takes the card back.
        window.service.answer(saving, {.manner = Answer::hang});
        const QRectF start = place();
        step();
        const QRectF left = place();
        QTRY_COMPARE(window.asked(saving), 1);
        window.pollAgain(usualState());
        QCOMPARE(place(), left);
        window.service.hangUp();
        QTRY_COMPARE(place(), start);

        // The last place is saved although nobody waits for what was asked for before.
        step();
        step();
        QTRY_COMPARE(window.asked(saving), 2);
        const double first = lastSaved();
        window.view.reset();
        QTRY_COMPARE(window.asked(saving), 3);
        QCOMPARE(lastSaved(), first + 100);
        window.service.hangUp(); // nobody is there to be told
    }

    void offersWhatCanBeDoneAboutAnUpdate() {
        UpdateState update;
        update.available.emplace().version = u"1.5.0"_s;
        SettingsWindow window(aboutTab);
        window.view->resize(560, 640);
        auto *check = window.named<Button>(u"Check now"_s);
        const int height = check->parentWidget()->height();
        // The buttons, in brackets those that cannot be pressed, and the end of the banner.
        const auto offered = [&] {
            window.only<AboutTab>()->render(aboutModel(update, {}, window.formats));
            settle();
            QStringList shown;
            for (Button *button : seen<Button>(*window.view))
                shown << (button->isEnabled() ? button->label() : u'(' + button->label() + u')');
            for (const QString &text : {u"Downloading…"_s, u"Saved in your downloads folder"_s})
                shown += textsOf(*window.view).filter(text);
            return shown.join(u", "_s);
        };
        QCOMPARE(offered(), u"(Download), Check now"_s);
        update.available->downloadURL = QUrl(u"https://host/app.dmg"_s);
        QCOMPARE(offered(), u"Download, Check now"_s);
        update.downloadState = DownloadState::downloading;
        QCOMPARE(offered(), u"Check now, Downloading…"_s);
        update.downloadState = DownloadState::done;
        QCOMPARE(offered(), u"Check now, Saved in your downloads folder"_s);
        update.downloadState = DownloadState::failed;
        QCOMPARE(offered(), u"Download, Open in browser, Check now"_s);
        update = {.state = check::Checking{}, .lastChecked = QDateTime::currentDateTime()};
        QCOMPARE(offered(), u"(Check now)"_s);
        // Nothing moves under the pointer.
        QCOMPARE(check->parentWidget()->height(), height);
    }
};

int main(int argc, char **argv) {
    return runViewTest<SettingsTabsTest>(argc, argv);
}

#include "SettingsTabsTest.moc"
