#include "settings/PairSheet.h"

#include <QTest>

using namespace quorbit::pairsheet;
using namespace Qt::StringLiterals;

namespace {

/// A sheet and everything that it asked for.
struct Sheet {
    explicit Sheet(std::size_t devices = 0) { state.deviceCount = devices; }

    Sheet &operator<<(const Event &event) {
        auto [next, effect] = reduced(state, event);
        state = next;
        if (effect)
            effects.push_back(*effect);
        return *this;
    }

    SheetState state;
    std::vector<Effect> effects;
};

const std::vector<Effect> onlyTheRequest{effect::RequestPin{}};

} // namespace

class PairSheetTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsAPinUntilAnotherDeviceAppears() {
        Sheet sheet(2);
        sheet << event::GeneratePressed{} << event::GeneratePressed{};
        QVERIFY(sheet.state.isGenerating && !canGenerate(sheet.state));
        QVERIFY(sheet.effects == onlyTheRequest);

        sheet << event::PinAnswered{u"482 913"_s} << event::DevicesPublished{2} << event::DevicesPublished{1}
              << event::DevicesPublished{2} << event::GeneratePressed{};
        QCOMPARE(sheet.state.pin, u"482 913"_s);
        QVERIFY(!sheet.state.isGenerating && !sheet.state.isPaired);
        QVERIFY(sheet.effects == onlyTheRequest);

        sheet << event::DevicesPublished{3} << event::DevicesPublished{4};
        QVERIFY(sheet.state.isPaired);
        QVERIFY(sheet.effects == (std::vector<Effect>{effect::RequestPin{},
                                                      effect::Dismiss{std::chrono::milliseconds(1300)}}));
    }

    void offersThePinAgainWhenNoneCame() {
        Sheet sheet(1);
        sheet << event::GeneratePressed{} << event::PinAnswered{std::nullopt};
        QVERIFY(canGenerate(sheet.state));
        // What changed before the second request is not the new device's doing.
        sheet << event::DevicesPublished{5} << event::GeneratePressed{} << event::PinAnswered{u"1"_s}
              << event::DevicesPublished{4};
        QCOMPARE(sheet.state.initialCount, std::size_t{5});
        QVERIFY(!sheet.state.isPaired);
    }

    void takesOnlyAChangeForANewDevice() {
        Sheet early;
        early << event::GeneratePressed{} << event::DevicesPublished{1} << event::PinAnswered{u"1"_s}
              << event::DevicesPublished{1};
        QVERIFY(!early.state.isPaired);

        Sheet elsewhere;
        elsewhere << event::GeneratePressed{} << event::PinAnswered{u"1"_s}
                  << event::ModeChosen{Mode::connect} << event::DevicesPublished{1}
                  << event::ModeChosen{Mode::show} << event::DevicesPublished{1};
        QVERIFY(!elsewhere.state.isPaired);
        elsewhere << event::DevicesPublished{2};
        QVERIFY(elsewhere.state.isPaired);
    }

    void connects() {
        const std::tuple<QString, QString, std::optional<effect::Connect>> rows[]{
            {u"mac.local"_s, u"482913"_s, effect::Connect{u"mac.local"_s, u"482913"_s}},
            {u" \tmac.local "_s, u"\u3000482 913\t"_s, effect::Connect{u"mac.local"_s, u"482 913"_s}},
            {u" \t "_s, u"1"_s, {}},
            {u"mac"_s, QString(), {}}};
        for (const auto &[host, pin, sent] : rows) {
            Sheet sheet;
            sheet << event::ModeChosen{Mode::connect} << event::HostEdited{host} << event::PinEdited{pin};
            QCOMPARE(canConnect(sheet.state), sent.has_value());
            sheet << event::ConnectPressed{} << event::ConnectPressed{};
            QCOMPARE(sheet.state.isBusy, sent.has_value());
            QCOMPARE(sheet.effects.size(), std::size_t(sent ? 1 : 0));
            if (sent)
                QVERIFY(sheet.effects.front() == Effect(*sent));
        }
    }

    void keepsTheFieldsOfAFailedAttempt() {
        Sheet sheet;
        sheet << event::HostEdited{u" mac"_s} << event::PinEdited{u"1"_s} << event::ConnectPressed{}
              << event::ConnectAnswered{false};
        QVERIFY(sheet.state.hasFailed && canConnect(sheet.state));
        QCOMPARE(sheet.state.host, u" mac"_s);
        sheet << event::ConnectPressed{};
        QVERIFY(!sheet.state.hasFailed);
        sheet << event::ConnectAnswered{true};
        QVERIFY(!sheet.state.hasFailed);
        QVERIFY(sheet.effects.back() == Effect(effect::Dismiss{}));
    }
};

QTEST_APPLESS_MAIN(PairSheetTest)
#include "pair_sheet_test.moc"
