#include "settings/canvas/ScreenLayout.h"
#include "settings/canvas/CanvasModel.h"
#include "settings/canvas/ScreenRelations.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace quorbit;
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

bool isClose(double a, double b) {
    return std::abs(a - b) <= 1e-6 * std::max(1.0, std::abs(b));
}

bool isClose(const ScreenPlacement &a, const ScreenPlacement &b) {
    return isClose(a.x, b.x) && isClose(a.y, b.y) && isClose(a.w, b.w) && isClose(a.h, b.h);
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
        const std::tuple<ScreenDesk, QString, ScreenPlacement> rows[]{
            {three, u"self"_s, {0, 0, 1778, 1000}},         {three, u"b"_s, {1778, 2060, 1778, 1000}},
            {three, u"x"_s, {1778, 0, 1778, 1000}},         {{}, u"x"_s, {1778, 0, 1778, 1000}},
            {stored(-5, 6, -7, 0), u"a"_s, {-5, 6, -7, 0}}, {stored(notANumber, 0, 1, 1), u"a"_s, fallback},
            {stored(0, 0, infinity, 1), u"a"_s, fallback},  {stored(0, -1e300, 1, 1), u"a"_s, fallback}};
        for (const auto &[where, id, expected] : rows)
            QVERIFY(rectFor(where, id) == expected);
    }

    void unions() {
        const ScreenPlacement fallback{-172.24, -130, 2122.48, 1260};
        const auto grown = [](double x, double y, double w, double h) {
            return ScreenPlacement{x - 0.08 * w - 30, y - 0.1 * h - 30, 1.16 * w + 60, 1.2 * h + 60};
        };
        const std::pair<ScreenDesk, ScreenPlacement> rows[]{
            {desk({u"self"_s, u"a"_s, u"b"_s}), grown(0, 0, 3556, 3060)},
            {desk({u"a"_s}, {{u"a"_s, {100, 50, -100, -50}}}), grown(0, 0, 100, 50)},
            {desk({u"a"_s}, {{u"a"_s, {9, 9, 0, 50}}}), fallback},
            // A point far away counts, and one without a card does not.
            {desk({u"self"_s, u"a"_s}, {{u"a"_s, {-1000, -500, 0, 0}}}), grown(-1000, -500, 2778, 1500)},
            {desk({u"self"_s}, {{u"gone"_s, {-9000, 0, 5, 5}}}), grown(0, 0, 1778, 1000)}};
        for (const auto &[where, expected] : rows)
            QVERIFY(isClose(unionRect(where), expected));
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
        const std::pair<ScreenPlacement, Side> rows[]{
            {{1000, 0, 800, 600}, Side::right},   {{-900, 300, 800, 600}, Side::left},
            {{300, -700, 800, 600}, Side::above}, {{1010, 1200, 800, 600}, Side::below},
            {{900, 100, 800, 600}, Side::right},  {{400, 100, 200, 200}, Side::above},
            {{0, 0, 1000, 1000}, Side::samePlace}};
        for (const auto &[a, side] : rows) {
            const ScreenLayout layout{
                {u"self"_s, {0, 0, 1000, 1000}}, {u"a"_s, a}, {u"far"_s, {9e4, 0, 1, 1}}};
            const auto relations = cardRelations(desk({u"self"_s, u"far"_s, u"a"_s}, layout));
            QVERIFY(relations[2] == (CardRelation{side, u"self"_s}));
        }
        QVERIFY(cardRelations(desk({u"self"_s})) == std::vector{std::optional<CardRelation>()});
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

        const CardMetrics low = cardMetrics(50);
        QVERIFY(isClose({low.badge, low.symbol, low.name, low.status}, {7, 13, 6.5, 5.5}));
        QVERIFY(cardMetrics(200) == (CardMetrics{12, 22, 11, 9}));
    }
};

QTEST_APPLESS_MAIN(ScreenLayoutTest)
#include "ScreenLayoutTest.moc"
