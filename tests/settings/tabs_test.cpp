#include "daemon/Fixture.h"
#include "menubar/TestWorld.h"
#include "settings/HistoryList.h"
#include "settings/OverviewTab.h"
#include "settings/SettingsView.h"
#include "settings/SyncTab.h"
#include "settings/TabStates.h"
#include "settings/TimeFormats.h"
#include "ui/Button.h"
#include "ui/ControlStyle.h"
#include "ui/Form.h"
#include "ui/SelectableText.h"
#include "ui/Stepper.h"
#include "ui/Switch.h"
#include "ui/TabBar.h"
#include "ui/TextField.h"
#include "ui/TextLabel.h"
#include "update/UpdateChecker.h"

#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScrollBar>
#include <QSet>
#include <QTest>

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
        view.show();
        view.activateWindow();
        if (!QTest::qWaitForWindowActive(&view))
            qFatal("the window does not open");
        QTest::qWait(settleTime);
        world.service.seen.clear();
    }

    void publish(const TabState &state) {
        world.service.answer("GET /api/status", {state.status});
        world.service.answer("GET /api/settings", {state.settings});
        world.service.answer("GET /api/history", {state.history});
        world.service.answer("PUT /api/settings", {R"({"ok":true})"});
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
    /// The control on the page that screen readers know by this name.
    template <class Widget>
    Widget *named(const QString &name) const {
        for (Widget *widget : view.findChildren<Widget *>())
            if (widget->isVisible() &&
                QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name) == name)
                return widget;
        return nullptr;
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

// The widgets that were painted while it lived.
class PaintWatch : public QObject {
public:
    PaintWatch() { qApp->installEventFilter(this); }

    QSet<QObject *> painted;
    bool eventFilter(QObject *object, QEvent *event) override {
        if (event->type() == QEvent::Paint && object->isWidgetType())
            painted.insert(object);
        return false;
    }
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

QJsonObject object(const QByteArray &json) {
    return QJsonDocument::fromJson(json).object();
}

TabState with(TabState state, const QString &key, const QJsonValue &value) {
    QJsonObject status = object(state.status);
    status[key] = value;
    state.status = QJsonDocument(status).toJson(QJsonDocument::Compact);
    return state;
}

void clickRow(HistoryList *list, int row) {
    QTest::mouseClick(list, Qt::LeftButton, {}, list->rowRect(row).center());
}

} // namespace

class TabsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void firstFrameIsRight();
    void sameStatePaintsNothing_data();
    void sameStatePaintsNothing();
    void hiddenWindowRestsAndCatchesUp();
    void republicationDisturbsNothing();
    void returnSavesTheName();
    void emptiedNameStaysEmptyUntilTheNameChanges();
    void syncControlsSaveOneMemberEach();
    void historyIsFilteredAppliedAndCleared();
    void longHistoryIsOneWidgetAndFast();
    void highlightStaysUnderThePointer();
    void keyboardWorksTheHistory();
    void movedRowIsNotApplied();
    void screenReadersSeeTheHistory();
    void everythingFits_data();
    void everythingFits();
};

void TabsTest::initTestCase() {
    QApplication::setStyle(new ControlStyle);
}

void TabsTest::init() {
    useLanguage("en"_L1);
    useAppearance({.reducedMotion = true}, 9);
}

void TabsTest::firstFrameIsRight() {
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

void TabsTest::sameStatePaintsNothing_data() {
    QTest::addColumn<int>("tab");
    QTest::newRow("overview") << int{overviewTab};
    QTest::newRow("sync") << int{syncTab};
}

void TabsTest::sameStatePaintsNothing() {
    QFETCH(int, tab);
    Window window(stateCalled("full"_L1), Tab(tab));
    PaintWatch watch;
    window.pollAgain();
    QCOMPARE(window.world.service.count("GET /api/status"), 1);
    QCOMPARE(watch.painted, QSet<QObject *>());
}

void TabsTest::hiddenWindowRestsAndCatchesUp() {
    Window window(stateCalled("usual"_L1), overviewTab);
    window.view.hide();
    window.publish(stateCalled("paused"_L1));
    window.pollAgain();
    const auto running = [&] {
        for (const TextLabel *label : window.view.findChildren<TextLabel *>())
            if (label->text() == u"Running"_s)
                return true;
        return false;
    };
    QVERIFY(running());
    window.view.show();
    QVERIFY(!running());
    QVERIFY(window.named<TextLabel>(u"Paused"_s));
}

void TabsTest::republicationDisturbsNothing() {
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
    TabState changed = with(stateCalled("full"_L1), u"paused"_s, true);
    QJsonArray peers = object(changed.status)[u"peers"_s].toArray();
    peers.removeFirst();
    changed = with(with(changed, u"peers"_s, peers), u"device_name"_s, u"Elsewhere"_s);
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

void TabsTest::returnSavesTheName() {
    Window window(stateCalled("usual"_L1), overviewTab);
    auto *name = window.named<TextField>(u"Device name"_s);
    QTest::keyClick(name, Qt::Key_Return); // unchanged
    name->clear();
    QTest::keyClick(name, Qt::Key_Return);
    QTest::keyClicks(name, u" Desk "_s);
    QTest::keyClick(name, Qt::Key_Return);
    QTRY_COMPARE(window.sent("PUT /api/settings").size(), 1);
    QJsonObject wanted = object(stateCalled("usual"_L1).settings);
    wanted[u"device_name"_s] = u" Desk "_s;
    QCOMPARE(object(window.sent("PUT /api/settings").first()), wanted);
}

void TabsTest::emptiedNameStaysEmptyUntilTheNameChanges() {
    const TabState usual = stateCalled("usual"_L1);
    Window window(usual, overviewTab);
    auto *name = window.named<TextField>(u"Device name"_s);
    QCOMPARE(name->text(), u"Studio Mac"_s);
    name->selectAll();
    QTest::keyClick(name, Qt::Key_Backspace);
    window.pollAgain();
    QCOMPARE(name->text(), QString());
    window.publish(with(usual, u"device_name"_s, u"Renamed"_s));
    window.pollAgain();
    QCOMPARE(name->text(), u"Renamed"_s);
    QTest::keyClicks(name, u"x"_s);
    window.view.showTab(syncTab);
    window.view.showTab(overviewTab);
    QCOMPARE(name->text(), u"Renamed"_s);
}

void TabsTest::syncControlsSaveOneMemberEach() {
    const TabState usual = stateCalled("usual"_L1);
    Window window(usual, syncTab);
    const QJsonObject settings = object(usual.settings);
    const auto expectSaved = [&](const QString &key, const QJsonValue &value) {
        QTRY_COMPARE(window.sent("PUT /api/settings").size(), 1);
        QJsonObject wanted = settings;
        wanted[key] = value;
        QCOMPARE(object(window.sent("PUT /api/settings").first()), wanted);
        QVERIFY(window.world.refreshed());
        window.world.service.seen.clear();
    };
    auto *image = window.named<Switch>(u"Images"_s);
    QTest::mouseClick(window.named<Switch>(u"Text"_s), Qt::LeftButton);
    expectSaved(u"sync_text"_s, false);
    QTest::mouseClick(image, Qt::LeftButton);
    expectSaved(u"sync_image"_s, false);
    QVERIFY(image->isOn()); // the service still says so
    QTest::mouseClick(window.named<Switch>(u"Files"_s), Qt::LeftButton);
    expectSaved(u"sync_files"_s, true);
    QTest::keyClick(window.named<Stepper>(u"Largest file"_s), Qt::Key_Up);
    expectSaved(u"file_size_cap_mb"_s, 110);
    QTest::keyClick(window.named<Stepper>(u"Largest file"_s), Qt::Key_Down);
    expectSaved(u"file_size_cap_mb"_s, 90);
}

void TabsTest::historyIsFilteredAppliedAndCleared() {
    Window window(stateCalled("full"_L1), syncTab);
    auto *list = window.only<HistoryList>();
    QTest::keyClicks(window.search(), u"  TELLS "_s);
    QCOMPARE(list->rows().size(), std::size_t{1});
    clickRow(list, 0);
    QTRY_COMPARE(window.sent("POST /api/history/apply/4").size(), 1);

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
    QTRY_COMPARE(window.sent("DELETE /api/history"), QByteArrayList{QByteArray()});
    window.pollAgain();
    QCOMPARE(list->rows().size(), std::size_t{8});
    QVERIFY(list->isVisible());
}

void TabsTest::longHistoryIsOneWidgetAndFast() {
    Window few(stateCalled("full"_L1), syncTab);
    Window many(manyState(), syncTab);
    QCOMPARE(many.view.findChildren<QWidget *>().size(), few.view.findChildren<QWidget *>().size());

    auto *list = many.only<HistoryList>();
    many.search()->setFocus();
    QElapsedTimer timer;
    QStringList times;
    qint64 slowest = 0;
    for (const QChar key : u"needle"_s) {
        timer.start();
        QTest::keyClick(many.search(), key.toLatin1());
        QCoreApplication::sendPostedEvents();
        list->repaint();
        times << QString::number(timer.nsecsElapsed() / 1000);
        slowest = std::max(slowest, timer.nsecsElapsed() / 1000);
    }
    qInfo("key press to painted list of %d entries: %s us", manyEntries, qPrintable(times.join(u", "_s)));
    QVERIFY(slowest < 160'000); // ten times what a frame allows, for slow machines and checked builds
    QCOMPARE(list->rows().size(), std::size_t{manyEntries / 100});
    clickRow(list, 2);
    QTRY_COMPARE(many.sent("POST /api/history/apply/300").size(), 1);
}

void TabsTest::highlightStaysUnderThePointer() {
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

void TabsTest::keyboardWorksTheHistory() {
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

void TabsTest::movedRowIsNotApplied() {
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

void TabsTest::screenReadersSeeTheHistory() {
    Window window(stateCalled("full"_L1), syncTab);
    auto *list = window.only<HistoryList>();
    QAccessibleInterface *tree = QAccessible::queryAccessibleInterface(list);
    QCOMPARE(tree->role(), QAccessible::List);
    QCOMPARE(tree->text(QAccessible::Name), u"Clipboard history"_s);
    QCOMPARE(tree->childCount(), 8);
    QAccessibleInterface *item = tree->child(1);
    QCOMPARE(item, tree->child(1));
    QCOMPARE(item->role(), QAccessible::ListItem);
    QCOMPARE(item->text(QAccessible::Name), u"Screenshot 1440 × 900, Travel laptop"_s);
    QCOMPARE(item->text(QAccessible::Description), u"Puts this entry back on the clipboard"_s);
    QCOMPARE(tree->childAt(item->rect().center().x(), item->rect().center().y()), item);
    QCOMPARE(item->parent()->indexOfChild(item), 1);
    item->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    QVERIFY(item->state().focused);
    QCOMPARE(tree->focusChild(), item);
    item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(window.sent("POST /api/history/apply/2").size(), 1);

    list->setRows({});
    QVERIFY(!item->isValid());
    QCOMPARE(item->text(QAccessible::Name), QString());
    QCOMPARE(tree->childCount(), 0);
}

void TabsTest::everythingFits_data() {
    QTest::addColumn<QLatin1String>("language");
    QTest::addColumn<double>("points");
    QTest::newRow("English") << "en"_L1 << 9.0;
    QTest::newRow("English, large") << "en"_L1 << 12.0;
    QTest::newRow("Chinese") << "zh_Hans"_L1 << 9.0;
    QTest::newRow("Chinese, large") << "zh_Hans"_L1 << 12.0;
}

void TabsTest::everythingFits() {
    QFETCH(QLatin1String, language);
    QFETCH(double, points);
    useLanguage(language);
    useAppearance({.reducedMotion = true}, points);
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
                const QRect inWindow(label->mapTo(&window.view, QPoint()), label->size());
                QVERIFY2(inWindow.right() < leastSize.width(), qPrintable(label->text()));
            }
        }
    }
}

int main(int argc, char **argv) {
    useTestFonts();
    QApplication app(argc, argv);
    TabsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tabs_test.moc"
