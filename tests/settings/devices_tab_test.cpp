#include "daemon/Fixture.h"
#include "settings/DeviceRow.h"
#include "settings/DevicesTab.h"
#include "settings/PairSheetView.h"
#include "settings/TimeFormats.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/Alert.h"
#include "ui/Button.h"
#include "ui/SelectableText.h"
#include "ui/Sheet.h"

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
    void init() {
        useLanguage("en"_L1);
        useAppearance({}, 9);
        clock_ = FakeClock();
        world_ = std::make_unique<Fixture>();
        world_->service.answerAll();
    }

    void cleanup() {
        window_.reset();
        world_.reset();
    }

    void unpairsOnlyWhatWasConfirmed() {
        show({desk, lap});
        const QByteArray removal = "DELETE /api/devices/l-2";
        world_->service.answer(removal, {"{}"});
        const auto removals = [&] {
            const QByteArrayList lines = world_->service.lines();
            return std::ranges::count_if(lines, [](auto &line) { return line.startsWith("DELETE"); });
        };

        press(u"Remove, Lap"_s);
        QVERIFY(textsOf(*window_->findChild<Alert *>())
                    .contains(u"Lap must be paired again before it can sync with this computer."_s));
        QTest::keyClick(window_->findChild<Alert *>(), Qt::Key_Escape);
        QTRY_VERIFY(!window_->findChild<Alert *>());
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

    void rowsStayWithTheirDevices() {
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
    }

    void timesStayCurrentWhileSeen() {
        show({lap});
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

    void offersThePinAgainWhenNoneCame() {
        show({desk});
        Sheet *sheet = openSheet();
        auto *create = named<Button>(*sheet, u"Create a PIN"_s);
        create->setFocus();
        create->click();
        QVERIFY(!create->isEnabled() && accessible(create)->state().busy);
        create->click();
        QTRY_VERIFY(create->isEnabled());
        QVERIFY(create->isVisible() && create->hasFocus());
        QCOMPARE(world_->service.count("POST /api/pair/show"), 1);

        world_->service.answer("POST /api/pair/show", {R"({"pin":"482913"})"});
        create->click();
        QTRY_VERIFY(named<SelectableText>(*sheet, u"PIN"_s));
        QVERIFY(!create->isVisible());
    }

    void answersToAClosedSheetAreLost() {
        show({desk});
        world_->service.answer("POST /api/pair/show", {R"({"pin":"482913"})"});
        Sheet *sheet = openSheet();
        press(u"Create a PIN"_s);
        QTest::keyClick(sheet, Qt::Key_Escape);
        QVERIFY(!sheet->isVisible());
        openSheet();
        const QPointer<Sheet> open(window_->findChildren<Sheet *>().last());
        QVERIFY(open && open != sheet);
        QTRY_COMPARE(world_->service.count("POST /api/pair/show"), 1);
        QVERIFY(publish({desk, lap}));
        clock_.advance(2s);
        QVERIFY(open && open->isVisible());
        QVERIFY(named<Button>(*open, u"Create a PIN"_s));

        // Neither does a request outlive the service's client.
        world_->service.answer("POST /api/pair/show", {.manner = Answer::hang});
        named<Button>(*open, u"Create a PIN"_s)->click();
        QTRY_COMPARE(world_->service.count("POST /api/pair/show"), 2);
        // A sheet goes with its tab.
        delete tab_;
        QVERIFY(!open);
    }

    void everythingFits_data() { addLooks({9.0, 11.0, 16.0}); }
    void everythingFits() {
        useLook();
        show({});
        window_->resize(560, QApplication::font().pointSize() < 12 ? 460 : 640);
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

private:
    void show(const QByteArrayList &devices) {
        world_->service.answer("GET /api/devices", {list(devices)});
        QVERIFY(world_->startAndPoll());
        window_ = std::make_unique<QWidget>();
        window_->resize(560, 386);
        tab_ = new DevicesTab(*world_->daemon, formats_, clock_);
        auto *layout = new QVBoxLayout(window_.get());
        layout->setContentsMargins({});
        layout->addWidget(tab_);
        connect(world_->daemon.get(), &Daemon::devicesChanged, tab_, &DevicesTab::refresh);
        openWindow(*window_);
    }

    bool publish(const QByteArrayList &devices) {
        world_->service.answer("GET /api/devices", {list(devices)});
        return world_->pollAgain();
    }

    void press(const QString &name) { named<Button>(*window_, name)->click(); }
    Sheet *openSheet() {
        auto *add = named<Button>(*window_, u"Add a computer"_s);
        add->setFocus();
        add->click();
        return window_->findChild<Sheet *>();
    }

    std::unique_ptr<Fixture> world_;
    FakeClock clock_; ///< of the tab alone, so that time can pass without a poll
    const TimeFormats formats_{QLocale(QLocale::English)};
    std::unique_ptr<QWidget> window_;
    DevicesTab *tab_ = nullptr;
};

int main(int argc, char **argv) {
    return runViewTest<DevicesTabTest>(argc, argv);
}
#include "devices_tab_test.moc"
