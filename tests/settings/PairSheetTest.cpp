#include "settings/pairing/PairSheet.h"
#include "support/Row.h"

using namespace quorbit::pairsheet;
using namespace quorbit::test;
using namespace Qt::StringLiterals;

class PairSheetTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void asksForNoMoreThanItShould() {
        const Event generate = event::GeneratePressed{};
        const Event pin = event::PinAnswered{u"482 913"_s};
        const Event noPin = event::PinAnswered{std::nullopt};
        const Event showMode = event::ModeChosen{Mode::show};
        const Event connectMode = event::ModeChosen{Mode::connect};
        const Event connect = event::ConnectPressed{};
        const auto devices = [](std::size_t count) { return Event(event::DevicesPublished{count}); };
        const auto host = [](const QString &text) { return Event(event::HostEdited{text}); };
        const auto typed = [](const QString &text) { return Event(event::PinEdited{text}); };
        const Effect request = effect::RequestPin{};
        const Effect paired = effect::Dismiss{std::chrono::milliseconds(1300)};
        const Effect connectNow = effect::Connect{u"mac.local"_s, u"482 913"_s};
        const std::tuple<const char *, std::size_t, std::vector<Event>, std::vector<Effect>> rows[]{
            {"again", 2, {generate, generate, pin, devices(2), devices(1), devices(2), generate}, {request}},
            {"paired", 2, {generate, pin, devices(3), devices(4)}, {request, paired}},
            // What changed before the request is not the new device's doing.
            {"no PIN", 1, {generate, noPin, devices(5), generate, pin, devices(4)}, {request, request}},
            {"before the PIN", 0, {generate, devices(1), pin, devices(1)}, {request}},
            {"meanwhile", 0, {generate, pin, connectMode, devices(1), showMode, devices(1)}, {request}},
            {"later", 0, {generate, pin, connectMode, devices(1), showMode, devices(2)}, {request, paired}},
            {"twice",
             0,
             {host(u" mac.local "_s), typed(u"\u3000482 913\t"_s), connect, connect},
             {connectNow}},
            {"no host", 0, {host(u" \t "_s), typed(u"1"_s), connect}, {}},
            {"no PIN typed", 0, {host(u"mac.local"_s), connect}, {}}};
        for (const auto &[name, count, events, expected] : rows) {
            const Row row(name);
            SheetState state{.deviceCount = count};
            QCOMPARE(effectsOf(events, state), expected);
        }
    }

    void keepsTheFieldsOfAFailedAttempt() {
        SheetState state;
        effectsOf({event::HostEdited{u" mac"_s}, event::PinEdited{u"1"_s}, event::ConnectPressed{},
                   event::ConnectAnswered{false}},
                  state);
        QVERIFY(state.hasFailed && canConnect(state));
        QCOMPARE(state.host, u" mac"_s);
        effectsOf({event::ConnectPressed{}}, state);
        QVERIFY(!state.hasFailed);
        QCOMPARE(effectsOf({event::ConnectAnswered{true}}, state), std::vector<Effect>{effect::Dismiss{}});
    }

private:
    static std::vector<Effect> effectsOf(const std::vector<Event> &events, SheetState &state) {
        std::vector<Effect> effects;
        for (const Event &event : events) {
            auto [next, effect] = reduced(state, event);
            state = next;
            if (effect)
                effects.push_back(*effect);
        }
        return effects;
    }
};

QTEST_APPLESS_MAIN(PairSheetTest)
#include "PairSheetTest.moc"
