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
const QSizeF canvas(500, 320);

std::vector<DeviceCard> cards(const QStringList &ids) {
    std::vector<DeviceCard> all;
    for (const QString &id : ids)
        all.push_back({id, id.toUpper(), std::nullopt, true});
    return all;
}

ScreenDesk desk(const QStringList &ids, const ScreenLayout &layout = {}) {
    return {layout, u"self"_s, cards(ids)};
}

/// Which is compared up to rounding.
QRectF area(const ScreenPlacement &rect) {
    return {rect.x, rect.y, rect.w, rect.h};
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
        const ScreenPlacement fallback{-172.24, -130, 2122.48, 1260};
        const auto grown = [](double x, double y, double w, double h) {
            return ScreenPlacement{x - 0.08 * w - 30, y - 0.1 * h - 30, 1.16 * w + 60, 1.2 * h + 60};
        };
        const std::tuple<const char *, ScreenDesk, ScreenPlacement> rows[]{
            {"column", desk({u"self"_s, u"a"_s, u"b"_s}), grown(0, 0, 3556, 3060)},
            {"negative", desk({u"a"_s}, {{u"a"_s, {100, 50, -100, -50}}}), grown(0, 0, 100, 50)},
            {"without a width", desk({u"a"_s}, {{u"a"_s, {9, 9, 0, 50}}}), fallback},
            {"a point far away counts", desk({u"self"_s, u"a"_s}, {{u"a"_s, {-1000, -500, 0, 0}}}),
             grown(-1000, -500, 2778, 1500)},
            {"one without a card does not", desk({u"self"_s}, {{u"gone"_s, {-9000, 0, 5, 5}}}),
             grown(0, 0, 1778, 1000)}};
        for (const auto &[name, where, expected] : rows) {
            const Row row(name);
            QCOMPARE(area(unionRect(where)), area(expected));
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
        ScreenDesk two = desk({u"self"_s, u"a"_s, u"b"_s});
        two.devices[0].platform = u"Darwin"_s;
        two.devices[0].name = u"\u3164"_s; // there is nothing to see in it
        two.devices[1].platform = u"WINDOWS"_s;
        two.devices[2].online = false;
        const auto shown = canvasCards(two, u"a"_s, fitInto(two, canvas));
        QCOMPARE(shown[0].symbol, u"macbook"_s);
        QCOMPARE(shown[0].title, u"common.unnamed (kvm.canvas.local)"_s);
        QVERIFY(shown[0].isSelf && !shown[0].isMaster && shown[0].statusText.isEmpty());
        QCOMPARE(shown[1].symbol, u"pc"_s);
        QCOMPARE(shown[1].statusText, u"kvm.canvas.online"_s);
        QVERIFY(shown[1].isMaster && shown[1].statusColor == TextColor::green);
        QCOMPARE(shown[2].symbol, u"display"_s);

        QCOMPARE(cardMetrics(50).badge, 7.0);
        QCOMPARE(cardMetrics(50).status, 5.5);
        QVERIFY(cardMetrics(200) == (CardMetrics{12, 22, 11, 9}));
    }
};

QTEST_APPLESS_MAIN(ScreenLayoutTest)
#include "ScreenLayoutTest.moc"
