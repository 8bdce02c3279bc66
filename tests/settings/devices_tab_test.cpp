#include "daemon/Fixture.h"
#include "menubar/TestWorld.h"
#include "settings/DeviceRow.h"
#include "settings/DevicesTab.h"
#include "settings/PairSheetView.h"
#include "settings/TimeFormats.h"
#include "settings/ViewChecks.h"
#include "ui/Alert.h"
#include "ui/Button.h"
#include "ui/ControlStyle.h"
#include "ui/SegmentedPicker.h"
#include "ui/SelectableText.h"
#include "ui/Sheet.h"
#include "ui/TextField.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;
using namespace std::chrono_literals;

namespace {

const QByteArray desk = R"({"device_id":"d-1","name":"Desk","platform":"linux","fingerprint":"sha256:)"
                        R"(0123456789abcdef","online":true,"paired_at":1})";
// Last seen 90 seconds before the clocks of the test begin.
const QByteArray lap = R"({"device_id":"l-2","name":"Lap","platform":"darwin","online":false,)"
                       R"("last_seen":1699999910000,"paired_at":1})";
const QByteArray third = R"({"device_id":"t-3","name":"Third","paired_at":1})";

QByteArray list(const QByteArrayList &devices) {
    return '[' + devices.join(',') + ']';
}

} // namespace

class DevicesTabTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(new ControlStyle); }
    void init();
    void cleanup();

    void unpairsOnlyWhatWasConfirmed();
    void rowsStayWithTheirDevices();
    void timesStayCurrentWhileSeen();
    void showsAPinUntilPaired();
    void connectsWithWhatWasTyped();
    void answersToAClosedSheetAreLost();
    void sheetGoesWithItsTab();
    void keyboardWorksTheSheet();
    void screenReadersHearEverything();
    void everythingFits_data();
    void everythingFits();

private:
    void show(const QByteArrayList &devices);
    bool publish(const QByteArrayList &devices);
    void press(const QString &name) { named<Button>(*window_, name)->click(); }
    Sheet *openSheet();
    QByteArray bodyOfLast(const QByteArray &line) const;

    std::unique_ptr<Fixture> world_;
    FakeClock clock_; ///< of the tab alone, so that time can pass without a poll
    const TimeFormats formats_{QLocale(QLocale::English)};
    std::unique_ptr<QWidget> window_;
    DevicesTab *tab_ = nullptr;
};

void DevicesTabTest::init() {
    useLanguage("en"_L1);
    useAppearance({}, 9);
    clock_ = FakeClock();
    world_ = std::make_unique<Fixture>();
    world_->service.answerAll();
}

void DevicesTabTest::cleanup() {
    window_.reset();
    world_.reset();
}

void DevicesTabTest::show(const QByteArrayList &devices) {
    world_->service.answer("GET /api/devices", {list(devices)});
    QVERIFY(world_->startAndPoll());
    window_ = std::make_unique<QWidget>();
    window_->resize(560, 386);
    tab_ = new DevicesTab(*world_->daemon, formats_, clock_);
    auto *layout = new QVBoxLayout(window_.get());
    layout->setContentsMargins({});
    layout->addWidget(tab_);
    window_->show();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    QTest::qWait(60);
}

bool DevicesTabTest::publish(const QByteArrayList &devices) {
    world_->service.answer("GET /api/devices", {list(devices)});
    return world_->pollAgain();
}

Sheet *DevicesTabTest::openSheet() {
    auto *add = named<Button>(*window_, u"Add a computer"_s);
    add->setFocus();
    add->click();
    return window_->findChild<Sheet *>();
}

QByteArray DevicesTabTest::bodyOfLast(const QByteArray &line) const {
    QByteArray body;
    for (const SeenRequest &request : world_->service.seen) {
        if (request.line == line)
            body = request.body;
    }
    return body;
}

void DevicesTabTest::unpairsOnlyWhatWasConfirmed() {
    show({desk, lap});
    const QByteArray removal = "DELETE /api/devices/l-2";
    world_->service.answer(removal, {"{}"});
    const auto isRemoval = [](const QByteArray &line) { return line.startsWith("DELETE"); };
    const auto removals = [&] {
        const QByteArrayList lines = world_->service.lines();
        return std::count_if(lines.begin(), lines.end(), isRemoval);
    };

    for (const bool byKey : {false, true}) {
        press(u"Remove, Lap"_s);
        auto *alert = window_->findChild<Alert *>();
        QVERIFY(
            textsOf(*alert).contains(u"Lap must be paired again before it can sync with this computer."_s));
        if (byKey)
            QTest::keyClick(alert, Qt::Key_Escape);
        else
            press(u"Cancel"_s);
        QTRY_VERIFY(!window_->findChild<Alert *>());
    }
    QVERIFY(publish({desk, lap}));
    QCOMPARE(removals(), 0);

    press(u"Remove, Lap"_s);
    QVERIFY(publish({lap, desk})); // a list in another order changes nothing about the question
    QCOMPARE(window_->findChildren<Alert *>().size(), 1);
    world_->service.answer("GET /api/devices", {list({desk})});
    press(u"Remove"_s);
    QTRY_VERIFY(!window_->findChild<Alert *>());
    QTRY_COMPARE(tab_->findChildren<DeviceRow *>().size(), 1);
    QCOMPARE(removals(), 1);
    QCOMPARE(world_->service.count(removal), 1);
}

void DevicesTabTest::rowsStayWithTheirDevices() {
    show({desk, lap});
    const auto rows = tab_->findChildren<DeviceRow *>();
    PaintWatch watch;
    QVERIFY(publish({desk, lap}));
    QCOMPARE(watch.painted(), QSet<QWidget *>());

    auto *remove = named<Button>(*tab_, u"Remove, Lap"_s);
    remove->setFocus();
    QVERIFY(publish({third, QByteArray(lap).replace("\"Lap\"", "\"La\\np\""), desk}));
    QTest::qWait(60);
    QCOMPARE(tab_->findChildren<DeviceRow *>().size(), 3);
    QVERIFY(remove->hasFocus());
    QCOMPARE(nameOf(remove), u"Remove, La p"_s);
    QVERIFY(rows[1]->y() < rows[0]->y() && rows[1]->y() > 0);
    QCOMPARE(rows[0]->deviceId(), u"d-1"_s);

    QVERIFY(publish({}));
    QVERIFY(textsOf(*tab_).contains(u"No paired computers"_s));
    QVERIFY(named<Button>(*tab_, u"Add a computer"_s));
}

void DevicesTabTest::timesStayCurrentWhileSeen() {
    show({lap});
    QVERIFY(textsOf(*tab_).contains(u"Last seen 1 min. ago"_s));
    clock_.advance(29'999ms);
    QVERIFY(textsOf(*tab_).contains(u"Last seen 1 min. ago"_s));
    clock_.advance(1ms);
    QVERIFY(textsOf(*tab_).contains(u"Last seen 2 min. ago"_s));
    tab_->hide();
    QVERIFY(clock_.pending().empty());
    clock_.advance(60s);
    tab_->show();
    QVERIFY(textsOf(*tab_).contains(u"Last seen 3 min. ago"_s));
    QCOMPARE(clock_.pending().size(), std::size_t(1));
}

void DevicesTabTest::showsAPinUntilPaired() {
    show({desk});
    Sheet *sheet = openSheet();
    const QPointer<Sheet> gone(sheet);
    // A failed request leaves only the button.
    auto *create = named<Button>(*sheet, u"Create a PIN"_s);
    create->setFocus();
    create->click();
    QVERIFY(!create->isEnabled() && accessible(create)->state().busy);
    create->click();
    QTRY_VERIFY(create->isEnabled());
    QVERIFY(create->isVisible() && create->hasFocus());

    world_->service.answer("POST /api/pair/show", {R"({"pin":"482913"})"});
    create->click();
    QTRY_VERIFY(named<SelectableText>(*sheet, u"PIN"_s));
    QCOMPARE(named<SelectableText>(*sheet, u"PIN"_s)->text(), u"482913"_s);
    QCOMPARE(world_->service.count("POST /api/pair/show"), 2);
    QVERIFY(!create->isVisible());

    QVERIFY(publish({lap})); // as many as before
    QVERIFY(textsOf(*sheet).contains(u"Waiting for the other computer…"_s));
    QVERIFY(publish({lap, desk}));
    QVERIFY(textsOf(*sheet).contains(u"Paired"_s));
    clock_.advance(1299ms);
    QVERIFY(sheet->isVisible());
    clock_.advance(1ms);
    QVERIFY(!sheet->isVisible());
    QTRY_VERIFY(!gone);
    QVERIFY(named<Button>(*tab_, u"Add a computer"_s)->hasFocus());

    // The next sheet begins anew.
    sheet = openSheet();
    QVERIFY(named<Button>(*sheet, u"Create a PIN"_s));
}

void DevicesTabTest::connectsWithWhatWasTyped() {
    show({});
    Sheet *sheet = openSheet();
    const QPointer<Sheet> gone(sheet);
    named<QWidget>(*sheet, u"Enter a PIN"_s)->setFocus();
    QTest::mouseClick(named<QWidget>(*sheet, u"Enter a PIN"_s), Qt::LeftButton);
    auto *host = named<TextField>(*sheet, u"Address or host name"_s);
    auto *pin = named<TextField>(*sheet, u"PIN"_s);
    auto *pair = named<Button>(*sheet, u"Pair"_s);
    QTest::keyClicks(pin, u"12 "_s);
    QTest::keyClicks(host, u"  "_s);
    QVERIFY(!pair->isEnabled());
    QTest::keyClicks(host, u"h ost\t"_s);
    QVERIFY(pair->isEnabled());

    world_->service.answer("POST /api/pair/connect", {R"({"ok":false})"});
    const QString failure = u"Pairing failed. Check the address and the PIN."_s;
    pair->click();
    QVERIFY(!pair->isEnabled() && accessible(pair)->state().busy);
    QTRY_VERIFY(textsOf(*sheet).contains(failure));
    QCOMPARE(bodyOfLast("POST /api/pair/connect"), R"({"host":"h ost","pin":"12"})");
    QCOMPARE(pin->text(), u"12 "_s);

    world_->service.answer("POST /api/pair/connect", {R"({"ok":true})"});
    pair->click();
    QVERIFY(!textsOf(*sheet).contains(failure));
    QTRY_VERIFY(!gone);
    QCOMPARE(world_->service.count("POST /api/pair/connect"), 2);
}

void DevicesTabTest::answersToAClosedSheetAreLost() {
    show({desk});
    world_->service.answer("POST /api/pair/show", {R"({"pin":"482913"})"});
    world_->service.answer("POST /api/pair/connect", {R"({"ok":true})"});
    Sheet *sheet = openSheet();
    press(u"Create a PIN"_s);
    QTest::keyClick(sheet, Qt::Key_Escape);
    QVERIFY(!sheet->isVisible());
    Sheet *second = openSheet();
    const QPointer<Sheet> open(window_->findChildren<Sheet *>().last());
    QVERIFY(second && open && open != sheet);
    QTRY_COMPARE(world_->service.count("POST /api/pair/show"), 1);
    QVERIFY(publish({desk, lap}));
    clock_.advance(2s);
    QVERIFY(open && open->isVisible());
    QVERIFY(named<Button>(*open, u"Create a PIN"_s));

    // Neither does a request outlive the service's client.
    world_->service.answer("POST /api/pair/show", {.manner = Answer::hang});
    named<Button>(*open, u"Create a PIN"_s)->click();
    QTRY_COMPARE(world_->service.count("POST /api/pair/show"), 2);
}

void DevicesTabTest::sheetGoesWithItsTab() {
    show({desk});
    QPointer<Sheet> sheet = openSheet();
    QVERIFY(sheet);
    delete tab_;
    QVERIFY(!sheet);
}

void DevicesTabTest::keyboardWorksTheSheet() {
    show({desk});
    Sheet *sheet = openSheet();
    QVERIFY(sheet->isAncestorOf(QApplication::focusWidget()) || sheet->hasFocus());
    QTest::keyClick(sheet, Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    auto *host = named<TextField>(*sheet, u"Address or host name"_s);
    QVERIFY(host);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(host->hasFocus());
    QTest::keyClick(host, Qt::Key_Return);
    QVERIFY(!sheet->isVisible());
    QVERIFY(named<Button>(*tab_, u"Add a computer"_s)->hasFocus());
    QCOMPARE(world_->service.count("POST /api/pair/connect"), 0);
}

void DevicesTabTest::screenReadersHearEverything() {
    show({desk, lap});
    const auto roleOf = [this](const QString &name) {
        auto *widget = named<QWidget>(*window_, name);
        return widget ? accessible(widget)->role() : QAccessible::NoRole;
    };
    QCOMPARE(roleOf(u"Remove, Desk"_s), QAccessible::Button);
    QCOMPARE(roleOf(u"Desk"_s), QAccessible::StaticText);
    QCOMPARE(accessible(named<SelectableText>(*window_, u"Desk"_s))->text(QAccessible::Value),
             u"Fingerprint 0123456789ab…"_s);
    press(u"Remove, Desk"_s);
    QCOMPARE(roleOf(u"Remove this computer?"_s), QAccessible::AlertMessage);
    press(u"Cancel"_s);
    auto *sheet = openSheet();
    QCOMPARE(accessible(sheet)->role(), QAccessible::Dialog);
    QCOMPARE(nameOf(sheet), u"Add a computer"_s);
    QCOMPARE(roleOf(u"Show a PIN"_s), QAccessible::RadioButton);
}

void DevicesTabTest::everythingFits_data() {
    QTest::addColumn<QString>("language");
    QTest::addColumn<double>("points");
    for (const QString &language : {u"en"_s, u"zh_Hans"_s}) {
        for (const double points : {9.0, 11.0, 16.0})
            QTest::addRow("%s at %.0f", qPrintable(language), points) << language << points;
    }
}

void DevicesTabTest::everythingFits() {
    QFETCH(const QString, language);
    QFETCH(const double, points);
    useLanguage(QLatin1String(language.toLatin1()));
    useAppearance({}, points);
    show({});
    window_->resize(560, points < 12 ? 460 : 640);
    QTest::qWait(60);
    QCOMPARE(firstCut(*tab_), QString());
    QVERIFY(publish({desk, lap, third}));
    QTest::qWait(60);
    QCOMPARE(firstCut(*tab_), QString());
    for (Button *button : tab_->findChildren<Button *>()) {
        if (button->isVisible() && button->label() == qtTrId("devices.add"))
            button->click();
    }
    using pairsheet::Mode;
    for (const pairsheet::SheetState &state :
         {pairsheet::SheetState{.mode = Mode::connect, .hasFailed = true},
          pairsheet::SheetState{.pin = u"482 913"_s}, pairsheet::SheetState{}}) {
        window_->findChild<PairSheetView *>()->render(state);
        QTest::qWait(60);
        QCOMPARE(firstCut(*window_->findChild<Sheet *>()), QString());
    }
}

int main(int argc, char **argv) {
    useTestFonts();
    QApplication app(argc, argv);
    DevicesTabTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "devices_tab_test.moc"
