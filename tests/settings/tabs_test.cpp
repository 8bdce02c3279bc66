#include "daemon/Fixture.h"
#include "settings/HistoryList.h"
#include "settings/SettingsView.h"
#include "settings/SyncTab.h"
#include "settings/TabStates.h"
#include "settings/TimeFormats.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/SelectableText.h"
#include "ui/TextField.h"
#include "ui/TextLabel.h"
#include "update/UpdateChecker.h"

#include <QElapsedTimer>
#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

namespace {

constexpr QSize leastSize(560, 460);
constexpr int manyEntries = 10'000;
constexpr int settleTime = 60; // ms, longer than any update waits

enum Tab { overviewTab, syncTab };

/// A settings window over a service that the test scripts.
struct Window {
    explicit Window(const TabState &state, Tab tab) {
        publish(state);
        if (!world.startAndPoll())
            qFatal("the service is not found");
        view.resize(leastSize);
        view.showTab(tab);
        openWindow(view);
        world.service.seen.clear();
    }

    void publish(const TabState &state) {
        world.service.answer("GET /api/status", {state.status});
        world.service.answer("GET /api/settings", {state.settings});
        world.service.answer("GET /api/history", {state.history});
    }
    void pollAgain() {
        if (!world.pollAgain())
            qFatal("no refresh");
        QTest::qWait(settleTime);
    }
    template <class Widget>
    Widget *only() const {
        return view.findChild<Widget *>();
    }
    template <class Widget>
    Widget *named(const QString &name) const {
        return test::named<Widget>(view, name);
    }
    TextField *search() const { return named<TextField>(u"Search history"_s); }

    /// The bodies of what was sent to `line`.
    QByteArrayList sent(const QByteArray &line) const {
        QByteArrayList bodies;
        for (const SeenRequest &request : world.service.seen)
            if (request.line == line)
                bodies << request.body;
        return bodies;
    }

    Fixture world;
    UpdateChecker updater{
        world.platform, world.clock, QUrl(u"https://updates.invalid/version.json"_s), {u"en"_s}};
    TimeFormats formats{QLocale()};
    SettingsView view{{*world.daemon, updater, world.clock, formats, {}, {}}};
};

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

void clickRow(HistoryList *list, int row) {
    QTest::mouseClick(list, Qt::LeftButton, {}, list->rowRect(row).center());
}

} // namespace

class TabsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        useLanguage("en"_L1);
        useAppearance({.reducedMotion = true}, 9);
    }

    void firstFrameIsRight() {
        class FirstFrame : public QObject {
        public:
            FirstFrame() { qApp->installEventFilter(this); }
            int height = 0;
            bool eventFilter(QObject *object, QEvent *event) override {
                if (auto *list = qobject_cast<HistoryList *>(object);
                    list != nullptr && event->type() == QEvent::Paint && height == 0)
                    height = list->height();
                return false;
            }
        };
        Window window(stateCalled("full"_L1), overviewTab);
        window.view.resize(580, 800);
        QTest::qWait(settleTime);
        FirstFrame frame;
        window.view.showTab(syncTab);
        QTRY_VERIFY(frame.height > 0);
        QCOMPARE(frame.height, window.only<HistoryList>()->sizeHint().height());
    }

    void sameStatePaintsNothing() {
        for (const Tab tab : {overviewTab, syncTab}) {
            Window window(stateCalled("full"_L1), tab);
            PaintWatch watch;
            window.pollAgain();
            QCOMPARE(window.world.service.count("GET /api/status"), 1);
            QCOMPARE(watch.painted(), QSet<QWidget *>());
        }
    }

    void hiddenWindowRestsAndCatchesUp() {
        Window window(stateCalled("usual"_L1), overviewTab);
        window.view.hide();
        window.publish(stateCalled("paused"_L1));
        window.pollAgain();
        const auto shows = [&](const QString &text) {
            const auto labels = window.view.findChildren<TextLabel *>();
            return std::ranges::any_of(labels, [&](auto *label) { return label->text() == text; });
        };
        QVERIFY(shows(u"Running"_s));
        window.view.show();
        QVERIFY(!shows(u"Running"_s));
        QVERIFY(window.named<TextLabel>(u"Paused"_s));
    }

    void republicationDisturbsNothing() {
        Window window(stateCalled("full"_L1), overviewTab);
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
        changed.status.replace(R"("paused":false)", R"("paused":true)")
            .replace(R"({"device_id":"10b91c33","name":"Travel laptop"},)", "")
            .replace("The computer in the corner office on the second floor", "Elsewhere");
        window.publish(changed);
        window.pollAgain();
        QVERIFY(window.named<TextLabel>(u"Paused"_s));
        QVERIFY(!window.named<TextLabel>(u"Travel laptop"_s));
        QCOMPARE(name->text(), u"Half"_s);
        QCOMPARE(name->cursorPosition(), 3);
        QVERIFY(name->hasFocus());
        QCOMPARE(identifier->selectedText(), u"7aa"_s);
        QCOMPARE(bar->value(), 30);
    }

    void historyIsFilteredAppliedAndCleared() {
        Window window(stateCalled("full"_L1), syncTab);
        auto *list = window.only<HistoryList>();
        QTest::keyClicks(window.search(), u"tells"_s);
        QCOMPARE(list->rows().size(), std::size_t{1});
        // The field goes with the sixth entry, its text goes on filtering.
        window.publish(stateCalled("usual"_L1));
        window.pollAgain();
        QVERIFY(!window.search());
        QVERIFY(list->isHidden());
        QVERIFY(window.named<TextLabel>(u"No matching entries"_s));
        window.publish(stateCalled("full"_L1));
        window.pollAgain();
        window.search()->clear();
        QCOMPARE(list->rows().size(), std::size_t{8});

        // A clear that fails still empties the list, until the next refresh.
        window.world.service.answer("DELETE /api/history", {{}, 500, {}, Answer::shut});
        QTest::mouseClick(window.named<Button>(u"Clear"_s), Qt::LeftButton);
        QTRY_VERIFY(!window.named<Button>(u"Clear"_s));
        // The toolkit may send again what was cut off without a reply.
        QTRY_VERIFY(window.sent("DELETE /api/history").contains(QByteArray()));
        window.pollAgain();
        QCOMPARE(list->rows().size(), std::size_t{8});
        QVERIFY(list->isVisible());
    }

    void longHistoryIsOneWidgetAndFast() {
        Window few(stateCalled("full"_L1), syncTab);
        Window many(manyState(), syncTab);
        QCOMPARE(many.view.findChildren<QWidget *>().size(), few.view.findChildren<QWidget *>().size());

        auto *list = many.only<HistoryList>();
        many.search()->setFocus();
        qint64 slowest = 0;
        for (const QChar key : u"needle"_s) {
            QElapsedTimer timer;
            timer.start();
            QTest::keyClick(many.search(), key.toLatin1());
            QCoreApplication::sendPostedEvents();
            list->repaint();
            slowest = std::max(slowest, timer.elapsed());
        }
        QVERIFY(slowest < 160); // ten times what a frame allows, for slow machines and checked builds
        QCOMPARE(list->rows().size(), std::size_t{manyEntries / 100});
        clickRow(list, 2);
        QTRY_COMPARE(many.sent("POST /api/history/apply/300").size(), 1);
    }

    void highlightStaysUnderThePointer() {
        Window window(manyState(), syncTab);
        auto *list = window.only<HistoryList>();
        QScrollBar *bar = window.only<SyncTab>()->findChild<Form *>()->verticalScrollBar();
        bar->setValue(5000);
        const int shift = list->rowRect(1).top();
        const int row = list->rowAt(list->visibleRegion().boundingRect().center());
        QTest::mouseMove(list, list->rowRect(row).center());
        const auto isLit = [&](int which) {
            const QPoint place = list->rowRect(which).topLeft() + QPoint(4, 8);
            const QImage image = window.view.grab().toImage();
            const QPoint other = list->rowRect(which).translated(0, -2 * shift).topLeft() + QPoint(4, 8);
            return image.pixelColor(list->mapTo(&window.view, place)) !=
                   image.pixelColor(list->mapTo(&window.view, other));
        };
        QVERIFY(isLit(row));
        window.pollAgain();
        QCOMPARE(bar->value(), 5000);
        QVERIFY(isLit(row));
        bar->setValue(5000 + shift);
        QVERIFY(isLit(row + 1));
        QVERIFY(!isLit(row));
    }

    void keyboardWorksTheHistory() {
        Window window(manyState(), syncTab);
        auto *list = window.only<HistoryList>();
        window.search()->setFocus();
        QTest::keyClick(&window.view, Qt::Key_Tab);
        QVERIFY(list->hasFocus());
        QTest::keyClick(list, Qt::Key_Down);
        QTest::keyClick(list, Qt::Key_Return);
        QTRY_COMPARE(window.sent("POST /api/history/apply/2").size(), 1);
        QTest::keyClick(list, Qt::Key_End);
        QTest::keyClick(list, Qt::Key_Up);
        const QRect reached = list->rowRect(manyEntries - 2);
        QCOMPARE(list->visibleRegion().intersected(reached), QRegion(reached));
        QTest::keyClick(list, Qt::Key_Space);
        QTRY_COMPARE(window.sent("POST /api/history/apply/9999").size(), 1);
    }

    void movedRowIsNotApplied() {
        Window window(stateCalled("usual"_L1), syncTab);
        auto *list = window.only<HistoryList>();
        std::vector<HistoryList::Row> moved = list->rows();
        std::rotate(moved.begin(), moved.begin() + 1, moved.end());
        const QPoint place = list->rowRect(0).center();
        QTest::mousePress(list, Qt::LeftButton, {}, place);
        list->setRows(moved);
        QTest::mouseRelease(list, Qt::LeftButton, {}, place);
        clickRow(list, 0);
        QTRY_COMPARE(window.sent("POST /api/history/apply/2").size(), 1);
        QCOMPARE(window.sent("POST /api/history/apply/1").size(), 0);
    }

    void screenReadersFindTheHistory() {
        Window window(stateCalled("full"_L1), syncTab);
        auto *list = window.only<HistoryList>();
        QAccessibleInterface *tree = accessible(list);
        QAccessibleInterface *item = tree->child(1);
        QCOMPARE(item->text(QAccessible::Description), u"Puts this entry back on the clipboard"_s);
        QCOMPARE(tree->childAt(item->rect().center().x(), item->rect().center().y()), item);
        QCOMPARE(item->parent()->indexOfChild(item), 1);
        item->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
        QVERIFY(item->state().focused);
        QCOMPARE(tree->focusChild(), item);
        list->setRows({});
        QVERIFY(!item->isValid());
        QCOMPARE(item->text(QAccessible::Name), QString());
    }

    void everythingFits_data() { addLooks({9.0, 12.0}); }
    void everythingFits() {
        useLook();
        // Names that others give may be cut; the program's own texts may not.
        Window window(stateCalled("empty"_L1), overviewTab);
        for (const TabState &state : {stateCalled("empty"_L1), stateCalled("usual"_L1)}) {
            window.publish(state);
            window.pollAgain();
            for (const Tab tab : {overviewTab, syncTab}) {
                window.view.showTab(tab);
                QTest::qWait(settleTime);
                QVERIFY(window.view.minimumSizeHint().width() <= leastSize.width());
                for (TextLabel *label : window.view.findChildren<TextLabel *>()) {
                    if (!label->isVisible())
                        continue;
                    const int needed = label->hasHeightForWidth() ? 0 : label->sizeHint().width();
                    QVERIFY2(label->width() >= needed, qPrintable(label->text()));
                }
            }
        }
    }
};

int main(int argc, char **argv) {
    return runViewTest<TabsTest>(argc, argv);
}

#include "tabs_test.moc"
