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
        const QString request = u"request"_s;
        const QString paired = u"dismiss 1300"_s;
        const struct {
            const char *name;
            std::size_t devices;
            std::vector<Event> events;
            QStringList effects;
        } rows[]{
            {"again and again",
             2,
             {generate, generate, pin, devices(2), devices(1), devices(2), generate},
             {request}},
            {"paired", 2, {generate, pin, devices(3), devices(4)}, {request, paired}},
            // What changed before the request is not the new device's doing.
            {"no PIN", 1, {generate, noPin, devices(5), generate, pin, devices(4)}, {request, request}},
            {"came before the PIN", 0, {generate, devices(1), pin, devices(1)}, {request}},
            {"came meanwhile", 0, {generate, pin, connectMode, devices(1), showMode, devices(1)}, {request}},
            {"came later",
             0,
             {generate, pin, connectMode, devices(1), showMode, devices(2)},
             {request, paired}},
            {"connects once",
             0,
             {host(u" \tmac.local "_s), typed(u"\u3000482 913\t"_s), connect, connect},
             {u"connect mac.local, 482 913"_s}},
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
        QCOMPARE(effectsOf({event::ConnectAnswered{true}}, state), QStringList(u"dismiss 0"_s));
    }

private:
    struct Words {
        QString operator()(const effect::RequestPin & /*request*/) const { return u"request"_s; }
        QString operator()(const effect::Connect &to) const {
            return u"connect "_s + to.host + u", "_s + to.pin;
        }
        QString operator()(const effect::Dismiss &dismiss) const {
            return u"dismiss "_s + QString::number(dismiss.after.count());
        }
    };

    static QStringList effectsOf(const std::vector<Event> &events, SheetState &state) {
        QStringList effects;
        for (const Event &event : events) {
            auto [next, effect] = reduced(state, event);
            state = next;
            if (effect)
                effects << std::visit(Words{}, *effect);
        }
        return effects;
    }
};

QTEST_APPLESS_MAIN(PairSheetTest)
#include "PairSheetTest.moc"
