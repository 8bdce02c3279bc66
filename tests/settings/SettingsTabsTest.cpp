#include "daemon/Fixture.h"
#include "settings/SettingsView.h"
#include "settings/TabStates.h"
#include "settings/canvas/CanvasArea.h"
#include "settings/kvm/KvmTab.h"
#include "settings/sync/HistoryList.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/access/KeyboardArea.h"
#include "ui/controls/Button.h"
#include "ui/controls/Switch.h"
#include "ui/form/Form.h"
#include "ui/overlay/Alert.h"
#include "ui/overlay/Sheet.h"
#include "ui/text/SelectableText.h"
#include "ui/text/TextField.h"
#include "update/UpdateChecker.h"
#include "wording/TimeFormats.h"

#include <QJsonDocument>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;
using namespace std::chrono_literals;

namespace {

constexpr int manyEntries = 10'000;

const QByteArray desk = R"({"device_id":"d-1","name":"Desk","online":true,"paired_at":1})";
/// Last seen 90 seconds before the clocks of the test begin.
const QByteArray lap =
    R"({"device_id":"l-2","name":"Lap","online":false,"last_seen":1699999910000,"paired_at":1})";

TabState stateCalled(QLatin1String name) {
    for (const TabState &state : tabStates())
        if (state.name == name)
            return state;
    qFatal("no such state");
}

TabState manyState() {
    TabState state = stateCalled("usual"_L1);
    state.history = longHistory(manyEntries);
    return state;
}

enum Tab { overviewTab, syncTab, kvmTab, devicesTab, aboutTab };

/// A settings window over a service that the test scripts.
struct Window {
    explicit Window(Tab tab, const TabState &state = stateCalled("usual"_L1)) {
        publish(state);
        publishDevices({desk, lap});
        if (!world.startAndPoll())
            qFatal("the service is not found");
        view.resize(560, 460);
        view.showTab(tab);
        openWindow(view);
        world.service.seen.clear();
    }

    void publish(const TabState &state) { state.answerFrom(world.service); }
    void publishDevices(const QByteArrayList &devices) {
        world.service.answer("GET /api/devices", {'[' + devices.join(',') + ']'});
    }
    void pollAgain() {
        if (!world.pollAgain())
            qFatal("no refresh");
        QTest::qWait(60); // longer than any update waits
    }
    template <class Widget>
    Widget *only() const {
        return view.findChild<Widget *>();
    }
    template <class Widget>
    Widget *named(const QString &name) const {
        return test::named<Widget>(view, name);
    }
    bool shows(const QString &text) const { return textsOf(view).contains(text); }
    TextField *search() const { return named<TextField>(u"Search history"_s); }
    void press(const QString &button) const { named<Button>(button)->click(); }
    /// How often that was asked of the service.
    int asked(const QByteArray &line) const { return world.service.count(line); }

    Fixture world;
    FakeClock clock; ///< of the window alone, so that time can pass without a poll
    UpdateChecker updater{world.platform, clock, QUrl(u"https://updates.invalid/version.json"_s), {u"en"_s}};
    TimeFormats formats{QLocale(QLocale::English)};
    AboutServices about{.languages = {{{}, u"System"_s}}, .storedLanguage = [] { return QString(); }};
    KvmServices kvm{.isAccessibilityTrusted = [] { return true; },
                    .openAccessibilitySettings = [this] { world.platform.openAccessibilitySettings(); }};
    SettingsView view{{*world.daemon, updater, clock, formats, about, {}, kvm}};
};

void clickRow(HistoryList *list, int row) {
    QTest::mouseClick(list, Qt::LeftButton, {}, list->rowRect(row).center());
}

} // namespace

class SettingsTabsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        useLanguage(u"en"_s);
        useAppearance({}, 9);
    }

    void sameStatePaintsNothing() {
        for (const Tab tab : {overviewTab, syncTab, kvmTab, devicesTab, aboutTab}) {
            Window window(tab, stateCalled("full"_L1));
            PaintWatch watch;
            window.pollAgain();
            QCOMPARE(window.asked("GET /api/status"), 1);
            QCOMPARE(watch.painted(), QSet<QWidget *>());
        }
    }

    void firstFrameIsRight() {
        class FirstFrame : public QObject {
        public:
            int height = 0;
            bool eventFilter(QObject *object, QEvent *event) override {
                auto *list = qobject_cast<HistoryList *>(object);
                if (list && event->type() == QEvent::Paint && height == 0)
                    height = list->height();
                return false;
            }
        } frame;
        Window window(overviewTab, stateCalled("full"_L1));
        window.view.resize(580, 800);
        QTest::qWait(60);
        qApp->installEventFilter(&frame);
        window.view.showTab(syncTab);
        QTRY_COMPARE(frame.height, window.only<HistoryList>()->sizeHint().height());
    }

    void hiddenWindowRestsAndCatchesUp() {
        Window window(overviewTab);
        auto *running = window.named<TextLabel>(u"Running"_s);
        auto *name = window.named<TextField>(u"Device name"_s);
        name->setText(u"Half a na"_s);
        window.view.hide();
        window.publish(stateCalled("paused"_L1));
        window.pollAgain();
        QCOMPARE(running->text(), u"Running"_s);
        window.view.show();
        QCOMPARE(running->text(), u"Paused"_s);
        QCOMPARE(name->text(), u"Studio Mac"_s); // the tab begins anew
    }

    void republicationDisturbsNothing() {
        Window window(overviewTab, stateCalled("full"_L1));
        auto *name = window.named<TextField>(u"Device name"_s);
        name->setFocus();
        name->selectAll();
        QTest::keyClicks(name, u"Half"_s);
        QTest::keyClick(name, Qt::Key_Left);
        auto *identifier = window.named<SelectableText>(u"Office Linux"_s);
        identifier->setSelection(1, 3);
        QScrollBar *bar = window.only<Form>()->verticalScrollBar();
        bar->setValue(30);

        // Other things change, and the peer stands in another place.
        TabState changed = stateCalled("full"_L1);
        changed.status.replace(R"({"device_id":"10b91c33","name":"Travel laptop"},)", "")
            .replace("The computer in the corner office on the second floor", "Elsewhere");
        window.publish(changed);
        window.pollAgain();
        QVERIFY(!window.shows(u"Travel laptop"_s));
        QCOMPARE(name->text(), u"Half"_s);
        QCOMPARE(name->cursorPosition(), 3);
        QVERIFY(name->hasFocus());
        QCOMPARE(identifier->selectedText(), u"7aa"_s);
        QCOMPARE(bar->value(), 30);
    }

    void historyIsFiltered() {
        Window window(syncTab, stateCalled("full"_L1));
        auto *list = window.only<HistoryList>();
        window.search()->setFocus(Qt::MouseFocusReason);
        QTest::keyClicks(window.search(), u"tells"_s);
        QCOMPARE(list->rows().size(), std::size_t{1});
        clickRow(list, 0);
        QTRY_COMPARE(window.asked("POST /api/history/apply/4"), 1);
        // The field goes with the sixth entry and takes what is typed with it; its text goes on filtering.
        window.publish(stateCalled("usual"_L1));
        window.pollAgain();
        QVERIFY(!window.search() && list->isHidden() && window.shows(u"No matching entries"_s));
        QVERIFY(window.view.hasFocus());
        window.publish(stateCalled("full"_L1));
        window.pollAgain();
        window.search()->clear();
        QCOMPARE(list->rows().size(), std::size_t{8});
        QVERIFY(list->isVisible());
    }

    void keyboardWorksTheHistory() {
        Window window(syncTab, manyState());
        auto *list = window.only<HistoryList>();
        list->setFocus(Qt::TabFocusReason);
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return, Qt::Key_End, Qt::Key_Up, Qt::Key_Space})
            QTest::keyClick(list, key);
        QTRY_COMPARE(window.asked("POST /api/history/apply/2"), 1);
        QTRY_COMPARE(window.asked("POST /api/history/apply/9999"), 1);
        const QRect reached = list->rowRect(manyEntries - 2);
        QCOMPARE(list->visibleRegion().intersected(reached), QRegion(reached));
        // An entry that goes leaves the keyboard to the one in its place, or to the last.
        std::vector<HistoryList::Row> fewer = list->rows();
        fewer.erase(fewer.end() - 2);
        list->setRows(fewer);
        QCOMPARE(list->currentRow(), manyEntries - 2);
        fewer.resize(3);
        list->setRows(fewer);
        QCOMPARE(list->currentRow(), 2);
    }

    void movedRowIsNotApplied() {
        Window window(syncTab);
        auto *list = window.only<HistoryList>();
        std::vector<HistoryList::Row> moved = list->rows();
        std::rotate(moved.begin(), moved.begin() + 1, moved.end());
        const QPoint place = list->rowRect(0).center();
        QTest::mousePress(list, Qt::LeftButton, {}, place);
        list->setRows(moved);
        QTest::mouseRelease(list, Qt::LeftButton, {}, place);
        clickRow(list, 0);
        QTRY_COMPARE(window.asked("POST /api/history/apply/2"), 1);
        QCOMPARE(window.asked("POST /api/history/apply/1"), 0);
    }

    void screenReadersFindTheHistory() {
        Window window(syncTab);
        auto *list = window.only<HistoryList>();
        QAccessibleInterface *tree = accessible(list);
        QAccessibleInterface *item = tree->child(1);
        const QPoint middle = item->rect().center();
        QCOMPARE(tree->indexOfChild(tree->childAt(middle.x(), middle.y())), 1);
        item->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
        QCOMPARE(tree->focusChild(), item);
        list->setRows({});
        QVERIFY(!item->isValid() && item->text(QAccessible::Name).isEmpty());
    }

    void removesTheDeviceThatWasAskedAbout() {
        Window window(devicesTab);
        auto *remove = window.named<Button>(u"Remove, Lap"_s);
        window.publishDevices({lap, desk});
        window.pollAgain();
        remove->click(); // it has moved with its row
        window.publishDevices({desk, lap});
        window.pollAgain();
        QCOMPARE(window.view.findChildren<Alert *>().size(), 1);
        window.press(u"Remove"_s);
        QTRY_COMPARE(window.asked("DELETE /api/devices/l-2"), 1);
        QTRY_VERIFY(!window.only<Alert>());
        QCOMPARE(window.asked("DELETE /api/devices/d-1"), 0);
    }

    void timesStayCurrentWhileSeen() {
        Window window(devicesTab);
        window.clock.advance(29'999ms);
        QVERIFY(window.shows(u"Last seen 1 min. ago"_s));
        window.clock.advance(1ms);
        QVERIFY(window.shows(u"Last seen 2 min. ago"_s));
        window.view.hide();
        QVERIFY(window.clock.pending().empty());
        window.clock.advance(60s);
        window.view.show();
        QVERIFY(window.shows(u"Last seen 3 min. ago"_s));
        QCOMPARE(window.clock.pending().size(), std::size_t(1));
    }

    void pairsByAPinThatCameLate() {
        Window window(devicesTab);
        window.press(u"Add a computer"_s);
        auto *create = window.named<Button>(u"Create a PIN"_s);
        create->setFocus(Qt::TabFocusReason);
        create->click();
        QVERIFY(!create->isEnabled());
        QTRY_VERIFY(create->isEnabled());
        QVERIFY(create->isVisible() && create->hasFocus());
        window.world.service.answer("POST /api/pair/show", {R"({"pin":"482913"})"});
        create->click();
        QTRY_VERIFY(create->isHidden());
        window.publishDevices({desk, lap, R"({"device_id":"n","name":"New"})"});
        window.pollAgain();
        QVERIFY(window.shows(u"Paired"_s));
        window.clock.advance(1300ms);
        QTRY_VERIFY(!window.only<Sheet>());
    }

    void answersToAClosedSheetAreLost() {
        Window window(devicesTab);
        const QByteArray line = "POST /api/pair/show";
        window.world.service.answer(line, {R"({"pin":"482913"})"});
        window.press(u"Add a computer"_s);
        window.press(u"Create a PIN"_s);
        QTest::keyClick(window.only<Sheet>(), Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        window.press(u"Add a computer"_s);
        const QPointer<Sheet> open(window.only<Sheet>());
        QTRY_COMPARE(window.asked(line), 1);
        window.pollAgain();
        window.clock.advance(2s);
        QVERIFY(open && open->isVisible() && window.named<Button>(u"Create a PIN"_s));

        // Neither does a request outlive the window.
        window.world.service.answer(line, {.manner = Answer::hang});
        window.press(u"Create a PIN"_s);
        QTRY_COMPARE(window.asked(line), 2);
    }

    void onlyTheSwitchTellsOfARestart() {
        const QString hint = u"This takes effect once the Quorbit service restarts."_s;
        const std::tuple<QString, QByteArray, bool> steps[]{
            {u"Swap ⌘ and Ctrl"_s, R"({"ok":true,"need_restart":true})", false},
            {u"Share keyboard and mouse"_s, R"({"ok":true})", false},
            {u"Share keyboard and mouse"_s, R"({"ok":false,"need_restart":true})", true},
            {u"Share keyboard and mouse"_s, R"({"ok":true})", true}};
        Window window(kvmTab);
        for (const auto &[name, answer, isTold] : steps) {
            window.world.service.answer("PUT /api/settings", {answer});
            QTest::mouseClick(window.named<Switch>(name), Qt::LeftButton);
            QTest::qWait(100);
            QTRY_COMPARE(window.shows(hint), isTold);
        }
    }

    void stepsOnTheCanvasEndWhereTheUserLeftThem() {
        TabState state = stateCalled("usual"_L1);
        Window window(kvmTab, state);
        const QByteArray line = "PUT /api/settings";
        auto tab = std::make_unique<KvmTab>(*window.world.daemon, window.kvm);
        tab->showState();
        KeyboardArea view;
        (new QVBoxLayout(&view))->addWidget(tab.get());
        openWindow(view);
        auto *area = tab->findChild<CanvasArea *>();
        area->setFocus(Qt::ShortcutFocusReason);
        area->setCurrentCard(u"d-1"_s);
        const auto step = [&] { QTest::keyClick(area, Qt::Key_Down); };
        const auto place = [&] { return area->placeOf(*area->cardWithID(u"d-1"_s)); };
        const auto sentY = [&](int save, QLatin1String card) {
            std::vector<SeenRequest> saves = window.world.service.seen;
            std::erase_if(saves, [&](const SeenRequest &request) { return request.line != line; });
            const auto record = QJsonDocument::fromJson(saves.at(static_cast<std::size_t>(save - 1)).body);
            return record["kvm_layout"_L1][card]["y"_L1].toDouble();
        };

        // What comes with the answer goes into the next save.
        window.world.service.answer(line, {R"({"ok":true})"});
        state.settings.chop(1);
        state.settings += R"(,"kvm_layout":{"l-2":{"x":0,"y":7000,"w":1778,"h":1000}}})";
        window.publish(state);
        step();
        step();
        QTRY_COMPARE(window.asked(line), 2);
        QCOMPARE(sentY(2, "l-2"_L1), 7000.0);
        QTest::qWait(100);

        window.world.service.answer(line, {.manner = Answer::hang});
        tab->showState();
        const QRectF start = place();
        step();
        step();
        const QRectF left = place();
        QTRY_COMPARE(window.asked(line), 3);
        window.pollAgain();
        QCOMPARE(window.asked(line), 3);
        QCOMPARE(place(), left);
        window.world.service.hangUp(); // so that it fails
        QTRY_COMPARE(window.asked(line), 4);
        QCOMPARE(place(), left);
        window.world.service.hangUp();
        QTRY_COMPARE(place(), start);

        for (int count = 0; count < 3; ++count)
            step();
        QTRY_COMPARE(window.asked(line), 5);
        tab.reset(); // with the window
        QTRY_COMPARE(window.asked(line), 6);
        QCOMPARE(sentY(6, "d-1"_L1), sentY(5, "d-1"_L1) + 200);
        window.world.service.hangUp(); // nobody is there to be told
    }

    void permissionIsAskedForAndGranted() {
        TabState state = stateCalled("usual"_L1);
        state.status.replace("}]", R"(}],"accessibility_granted":false)");
        Window window(kvmTab, state);
        window.world.service.answer("POST /api/accessibility/prompt", {.manner = Answer::hang});
        window.press(u"Allow…"_s);
        QCOMPARE(window.world.platform.accessibilitySettingsOpened,
                 1); // although the service does not answer
        window.publish(stateCalled("usual"_L1));
        window.pollAgain();
        QVERIFY(!window.named<Button>(u"Allow…"_s));
    }
};

int main(int argc, char **argv) {
    return runViewTest<SettingsTabsTest>(argc, argv);
}

#include "SettingsTabsTest.moc"
