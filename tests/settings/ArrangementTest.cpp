#include "settings/canvas/Arrangement.h"
#include "settings/Placements.h"
#include "support/Row.h"

#include <functional>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;

namespace {

constexpr ScreenPlacement at(double x, double y = 0) {
    return {x, y, 1000, 500};
}

ScreenDesk desk(const ScreenLayout &layout) {
    return {layout, u"self"_s, {{u"self"_s}, {u"a"_s}, {u"b"_s}}};
}

const ScreenLayout start{{u"self"_s, at(0)}, {u"a"_s, at(1000)}, {u"b"_s, at(2000)}};

/// An arrangement with a service that stores what it is told when the test lets it.
struct Trial {
    Trial() { user.publish(desk(start)); }

    void drop(const QString &id, double x, double y = 0) {
        user.hold(id);
        asked.push_back(user.drop({x, y}));
    }
    void step(const QString &id, double x) {
        user.step(id, {x, 0});
        next();
    }
    void next() {
        if (const auto save = user.nextSave())
            asked.push_back(*save);
    }
    void publish(const ScreenLayout &layout) { user.publish(desk(layout)); }
    void poll() { publish(stored); }
    void store(std::size_t save) { stored = asked.at(save).layout; }
    void answer(std::size_t save) {
        store(save);
        poll();
        end(save, true);
    }
    void end(std::size_t save, bool isAnswered) {
        user.ended(asked.at(save).number, isAnswered);
        next();
    }
    /// As seen from this computer's screen.
    double shown(const QString &id) const {
        const ScreenLayout layout = user.shown().layout;
        return layout.at(id).x - layout.at(u"self"_s).x;
    }

    Arrangement user;
    ScreenLayout stored = start;
    std::vector<Arrangement::Save> asked;
};

} // namespace

class ArrangementTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void showsWhatIsNotAnswered() {
        const ScreenLayout others{{u"self"_s, at(0)}, {u"a"_s, at(1000)}, {u"b"_s, at(5000)}};
        const ScreenLayout nearer{{u"self"_s, at(0)}, {u"a"_s, at(1000)}, {u"b"_s, at(1900)}};
        const ScreenDesk without{start, u"self"_s, {{u"self"_s}, {u"b"_s}}};
        // What happens after a drop of `a` 500 to the right; where it and `b` are seen then; how many saves
        // were asked for.
        const struct {
            const char *name;
            std::function<void(Trial &t)> happens;
            double a, b;
            std::size_t saves = 1;
        } rows[]{
            {"a poll tells the old layout", [](auto &t) { t.poll(); }, 1500, 2000},
            {"a poll tells the new one", [](auto &t) { t.store(0), t.poll(); }, 1500, 2000},
            {"answered", [](auto &t) { t.answer(0); }, 1500, 2000},
            {"answered with another", [&](auto &t) { t.publish(others), t.end(0, true); }, 1000, 5000},
            {"failed", [](auto &t) { t.end(0, false); }, 1000, 2000},
            {"another computer moves another card", [&](auto &t) { t.publish(others); }, 1500, 5000},
            {"or to the left", [&](auto &t) { t.publish(nearer); }, 1500, 1900},
            {"its device goes and comes back", [&](auto &t) { t.user.publish(without), t.poll(); }, 1000,
             2000},
            {"a second drop", [](auto &t) { t.drop(u"b"_s, 300), t.answer(0); }, 1500, 2300, 2},
            {"the first fails", [](auto &t) { t.drop(u"b"_s, 300), t.end(0, false); }, 1500, 2300, 2},
            {"the second fails", [](auto &t) { t.drop(u"b"_s, 300), t.end(1, false); }, 1500, 2000, 2},
            {"the second is answered first", [](auto &t) { t.drop(u"a"_s, 300), t.answer(1); }, 1800, 2000,
             2},
            {"taken up again, and failed", [](auto &t) { t.user.hold(u"a"_s), t.end(0, false); }, 1500, 2000},
            {"and let go", [](auto &t) { t.user.hold(u"a"_s), t.end(0, false), t.user.letGo(); }, 1000, 2000},
            {"and dropped",
             [](auto &t) {
                 t.user.hold(u"a"_s), t.end(0, false), t.asked.push_back(t.user.drop({1, 0}));
             },
             1501, 2000, 2}};
        for (const auto &[name, happens, a, b, saves] : rows) {
            const Row row(name);
            Trial trial;
            trial.drop(u"a"_s, 500);
            happens(trial);
            QCOMPARE(trial.shown(u"a"_s), a);
            QCOMPARE(trial.shown(u"b"_s), b);
            QCOMPARE(trial.asked.size(), saves);
        }
    }

    void stepsAreOneMovement() {
        // Each way of moving is one in which the layout's origin moves differently.
        for (const double step : {3000.0, -3000.0, -300.0}) {
            const Row row(QByteArray::number(step));
            Trial trial;
            for (int count = 0; count < 3; ++count)
                trial.step(u"a"_s, step);
            QCOMPARE(trial.asked.size(), std::size_t{1});
            trial.store(0);
            trial.poll(); // told before the answer
            QCOMPARE(trial.shown(u"a"_s), 1000 + 3 * step);
            trial.answer(0);
            trial.step(u"a"_s, step);
            // Another computer moves another card; the service stores that after ours.
            trial.store(1);
            trial.stored.at(u"b"_s).y += 700;
            trial.poll();
            trial.end(1, true);
            trial.step(u"a"_s, step);
            trial.end(2, false); // the last place is sent although the one before was not stored
            QCOMPARE(trial.asked.size(), std::size_t{4});
            trial.answer(3);
            QCOMPARE(trial.asked.size(), std::size_t{4});
            QCOMPARE(trial.shown(u"a"_s), 1000 + 5 * step);
            QCOMPARE(trial.stored.at(u"a"_s).x - trial.stored.at(u"self"_s).x, 1000 + 5 * step);
            QCOMPARE(trial.stored.at(u"b"_s).y, 700.0);
        }
    }

    void stepsWaitForDropsAndGoWithThem() {
        Trial trial;
        trial.drop(u"a"_s, 500);
        trial.step(u"a"_s, 100);
        QCOMPARE(trial.asked.size(), std::size_t{1});
        trial.drop(u"b"_s, -5000);
        QCOMPARE(trial.asked.size(), std::size_t{2});
        QCOMPARE(trial.asked[1].layout.at(u"a"_s), at(4600));
        QCOMPARE(trial.asked[1].layout.at(u"b"_s), at(0));
        trial.step(u"self"_s, -100);
        // Nobody waits for the rest.
        QCOMPARE(trial.user.lastSave().value().layout.at(u"self"_s), at(2900));
        QVERIFY(!trial.user.lastSave());
    }

    void followsTheOrigin() {
        // Every card was moved, so that only what was sent tells where the origin went.
        for (const bool isAnswered : {true, false}) {
            Trial trial;
            for (const QString &id : {u"self"_s, u"b"_s})
                trial.drop(id, -5000);
            trial.step(u"a"_s, 100);
            trial.poll();
            for (const std::size_t save : {0U, 1U})
                isAnswered ? trial.answer(save) : trial.end(save, false);
            QCOMPARE(trial.asked.size(), std::size_t{3});
            QCOMPARE(trial.asked[2].layout.at(u"self"_s), at(0));
            QCOMPARE(trial.asked[2].layout.at(u"a"_s), at(isAnswered ? 6100 : 1100));
        }
    }

    void writesWhatCanBeRead() {
        Trial trial;
        trial.publish({{u"self"_s, {10, 20, -10, -20}}, {u"a"_s, at(std::nan(""))}, {u"gone"_s, at(7, 7)}});
        trial.drop(u"self"_s, 0);
        // Every card is pinned where it was seen, the first at the origin.
        QCOMPARE(trial.asked[0].layout, (ScreenLayout{{u"self"_s, {0, 0, 10, 20}},
                                                      {u"a"_s, {1778, 1030, 1778, 1000}},
                                                      {u"b"_s, {1778, 2060, 1778, 1000}},
                                                      {u"gone"_s, at(7, 7)}}));
        trial.drop(u"a"_s, std::nan(""), -std::numeric_limits<double>::infinity());
        QCOMPARE(trial.asked[1].layout, trial.asked[0].layout);
        trial.drop(u"a"_s, 2 * layoutLimit);
        QCOMPARE(trial.asked[2].layout.at(u"a"_s).x, layoutLimit);
    }
};

QTEST_APPLESS_MAIN(ArrangementTest)
#include "ArrangementTest.moc"
