#include "settings/canvas/ScreenLayout.h"
#include "settings/Placements.h"
#include "settings/canvas/CanvasModel.h"
#include "settings/canvas/ScreenRelations.h"
#include "support/Row.h"

#include <limits>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

ScreenDesk desk(const QStringList &ids, const ScreenLayout &layout = {}) {
    ScreenDesk desk{layout, u"self"_s, {}};
    for (const QString &id : ids)
        desk.devices.push_back({id, id.toUpper(), std::nullopt, true});
    return desk;
}

} // namespace

class ScreenLayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rectangles() {
        const ScreenDesk three = desk({u"self"_s, u"a"_s, u"b"_s});
        const auto stored = [](double x, double y, double w, double h) {
            return desk({u"self"_s, u"a"_s}, {{u"a"_s, {x, y, w, h}}});
        };
        const ScreenPlacement fallback{1778, 1030, 1778, 1000};
        const std::tuple<const char *, ScreenDesk, QString, ScreenPlacement> rows[]{
            {"own", three, u"self"_s, {0, 0, 1778, 1000}},
            {"column", three, u"b"_s, {1778, 2060, 1778, 1000}},
            {"no card", three, u"x"_s, {1778, 0, 1778, 1000}},
            {"nothing", {}, u"x"_s, {1778, 0, 1778, 1000}},
            {"negative", stored(-5, 6, -7, 0), u"a"_s, {-5, 6, -7, 0}},
            {"no number", stored(notANumber, 0, 1, 1), u"a"_s, fallback},
            {"infinite", stored(0, 0, infinity, 1), u"a"_s, fallback},
            {"beyond the limit", stored(0, -1e300, 1, 1), u"a"_s, fallback}};
        for (const auto &[name, where, id, expected] : rows) {
            const Row row(name);
            QCOMPARE(rectFor(where, id), expected);
        }
    }

    void unions() {
        const std::tuple<const char *, ScreenDesk, QRectF> rows[]{
            {"column", desk({u"self"_s, u"a"_s, u"b"_s}), {-314.48, -336, 4184.96, 3732}},
            {"negative", desk({u"a"_s}, {{u"a"_s, {100, 50, -100, -50}}}), {-38, -35, 176, 120}},
            {"without a width", desk({u"a"_s}, {{u"a"_s, {9, 9, 0, 50}}}), {-172.24, -130, 2122.48, 1260}},
            {"no card", desk({u"self"_s}, {{u"b"_s, {-9e3, 0, 5, 5}}}), {-172.24, -130, 2122.48, 1260}},
            {"a point",
             desk({u"self"_s, u"a"_s}, {{u"a"_s, {-1e3, -500, 0, 0}}}),
             {-1252.24, -680, 3282.48, 1860}}};
        for (const auto &[name, where, expected] : rows) {
            const Row row(name);
            const ScreenPlacement whole = unionRect(where);
            QCOMPARE(QRectF(whole.x, whole.y, whole.w, whole.h), expected); // up to rounding
        }
    }

    void fitsAndCentres() {
        // As wide as 1.16 * 1000 + 60 and as high as 1.2 * 1000 + 60: the height decides.
        const ScreenDesk square = desk({u"a"_s}, {{u"a"_s, {0, 0, 1000, 1000}}});
        const CanvasFit fit = fitInto(square, {630, 315});
        QCOMPARE(fit.scale, 0.25);
        QCOMPARE(fit.toView({0, 0, 1000, 1000}), QRectF(190, 32.5, 250, 250));
        QCOMPARE(fit.toView({1000, 1000, -1000, -1000}), QRectF(190, 32.5, 250, 250));
        const CanvasFit narrow = fitInto(square, {122, 315});
        QCOMPARE(narrow.scale, 0.1);
        QCOMPARE(narrow.toView({0, 0, 1000, 1000}).center(), QPointF(61, 157.5));
        for (const QSizeF none : {QSizeF(), QSizeF(-3, 320), QSizeF(notANumber, infinity)})
            QCOMPARE(fitInto(square, none).scale, 0.0);
    }

    void relates() {
        using Side = CardRelation::Side;
        // Beside this computer's screen, which is 1000 wide and high at the origin.
        const struct {
            const char *name;
            ScreenPlacement a;
            Side side;
            ScreenPlacement other = {9e4, 0, 1, 1};
        } rows[]{{"right", {1000, 0, 800, 600}, Side::right},
                 {"left", {-900, 300, 800, 600}, Side::left},
                 {"above", {300, -700, 800, 600}, Side::above},
                 {"below", {1010, 1200, 800, 600}, Side::below},
                 {"overlapping", {900, 100, 800, 600}, Side::right},
                 {"inside", {400, 100, 200, 200}, Side::above},
                 {"same place", {0, 0, 1000, 1000}, Side::samePlace},
                 {"faces another less", {1000, 0, 800, 600}, Side::right, {900, -700, 200, 700}}};
        for (const auto &[name, a, side, other] : rows) {
            const Row row(name);
            const ScreenLayout layout{{u"self"_s, {0, 0, 1000, 1000}}, {u"a"_s, a}, {u"other"_s, other}};
            const auto relation = cardRelations(desk({u"other"_s, u"self"_s, u"a"_s}, layout)).at(2);
            QVERIFY(relation);
            QCOMPARE(relation->neighbourID, u"self"_s);
            QCOMPARE(relation->side, side);
        }
        QVERIFY(!cardRelations(desk({u"self"_s})).at(0));
    }

    void describesCards() {
        ScreenDesk three = desk({u"self"_s, u"a"_s, u"b"_s});
        three.devices[0].platform = u"Darwin"_s;
        three.devices[0].name = u"\u3164"_s; // there is nothing to see in it
        three.devices[1].platform = u"WINDOWS"_s;
        three.devices[2].online = false;
        QStringList told;
        for (const CanvasCard &card : canvasCards(three, u"a"_s, fitInto(three, {500, 320}))) {
            told << card.symbol + u' ' + card.title + u' ' + card.statusText +
                        (card.isMaster ? u"*"_s : u""_s);
            QCOMPARE(card.statusColor, card.isOnline ? TextColor::green : TextColor::secondary);
        }
        QCOMPARE(told, (QStringList{u"macbook common.unnamed (kvm.canvas.local) "_s,
                                    u"pc A kvm.canvas.online*"_s, u"display B kvm.canvas.offline"_s}));
        QCOMPARE(cardMetrics(50).badge, 7.0);
        QCOMPARE(cardMetrics(50).status, 5.5);
        QVERIFY(cardMetrics(200) == (CardMetrics{12, 22, 11, 9}));
    }
};

QTEST_APPLESS_MAIN(ScreenLayoutTest)
#include "ScreenLayoutTest.moc"
