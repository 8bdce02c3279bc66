#include "settings/CanvasWindow.h"
#include "settings/canvas/CardPainter.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/look/ControlStyle.h"

#include <QPainter>

#include <functional>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

class ScreenLayoutCanvasTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        QApplication::setStyle(new ControlStyle);
        useLanguage(u"en"_s);
        useAppearance({}, 9);
    }

    void gestures() {
        const struct {
            QString card;
            QList<QPointF> way;
            QStringList picks = {};
            Qt::MouseButton button = Qt::LeftButton;
            bool drops = false;
        } rows[]{{.card = u"office"_s, .way = {{7, 7}, {9, 4}}, .picks = {u"office"_s}}, // almost a drag
                 {.card = u"mac"_s},                                                     // the master already
                 {.card = u"office"_s, .way = {{6, 8}, {40.5, -25.25}}, .drops = true},
                 {.card = u"office"_s, .way = {{40, 0}, {1, 1}}, .drops = true},
                 {.card = u"travel"_s, .way = {{0, -60}}, .drops = true}, // which has no place of its own yet
                 {.card = u"office"_s, .way = {{40, 0}}, .button = Qt::RightButton}};
        for (const auto &[card, way, picks, button, drops] : rows) {
            Window window;
            const double scale = window.scale();
            const QRectF start = window.place(card);
            const QPointF from = window.middle(card) + QPointF(0.5, 0.25);
            window.press(from, button);
            for (const QPointF &by : way) {
                window.move(from + by, button);
                if (drops && by == way.last())
                    QCOMPARE(window.place(card), start.translated(by));
            }
            QVERIFY(window.arranged.empty());
            window.release(from + way.value(way.size() - 1), button);
            QCOMPARE(window.picked, picks);
            QCOMPARE(window.arranged.size(), std::size_t{drops ? 1U : 0U});
            if (!drops)
                continue;
            const ScreenPlacement before = rectFor(usualDesk(), card);
            const ScreenLayout &layout = window.arranged[0];
            const ScreenPlacement after = layout.at(card);
            const ScreenPlacement origin = layout.at(u"mac"_s);
            QCOMPARE(QPointF(after.x - origin.x, after.y - origin.y),
                     QPointF(before.x, before.y) + way.last() / scale);
        }
    }

    void dragEndsWithoutWriting() {
        const std::initializer_list<std::function<void(Window &)>> ends{
            [](Window &window) { window.key(Qt::Key_Escape); },
            [](Window &window) { // its device goes
                ScreenDesk desk = usualDesk();
                desk.devices.erase(desk.devices.begin() + 1);
                window.canvas.render(desk, u"mac"_s);
                window.canvas.render(usualDesk(), u"mac"_s);
            },
            [](Window &window) {
                window.canvas.hide();
                window.canvas.show();
            },
            [](Window &window) {
                window.canvas.setEnabled(false);
                window.canvas.setEnabled(true);
            },
            [](Window &window) {
                QEvent grabLost(QEvent::UngrabMouse);
                QCoreApplication::sendEvent(window.area, &grabLost);
            },
            [](Window &window) { // the release went elsewhere
                window.move({9, 9}, Qt::NoButton);
            }};
        for (const auto &end : ends) {
            Window window;
            const QRectF start = window.place(u"office"_s);
            const QPoint from = window.middle(u"office"_s);
            window.press(from);
            window.move(from + QPoint(50, 50));
            end(window);
            QCOMPARE(window.place(u"office"_s), start);
            window.release(from + QPoint(50, 50));
            QVERIFY(window.arranged.empty() && window.picked.isEmpty());
            ScreenDesk elsewhere = usualDesk();
            elsewhere.layout[u"office"_s].y = 500;
            window.canvas.render(elsewhere, u"mac"_s);
            QVERIFY(window.place(u"office"_s) != start); // nothing holds it
            // The next gesture is a fresh one.
            window.drag(u"office"_s, {20, 0});
            QCOMPARE(window.arranged.size(), std::size_t{1});
        }
    }

    void publishedStateLeavesADragAlone() {
        Window window;
        const double scale = window.scale();
        const QPoint from = window.middle(u"office"_s);
        window.press(from);
        window.move(from + QPoint(30, 30));
        const QRectF held = window.place(u"office"_s);
        const QRectF still = window.place(u"mac"_s);

        ScreenDesk other = usualDesk();
        other.layout = pinned(other);
        other.layout[u"office"_s].x = -9000; // so that the origin moves
        other.layout[u"travel"_s].w = 9000;  // halves the fit
        other.layout = normalized(other.layout);
        window.canvas.render(other, u"office"_s);
        QCOMPARE(window.place(u"office"_s), held);
        QCOMPARE(window.place(u"mac"_s), still);
        window.move(from + QPoint(60, 20));
        window.release(from + QPoint(60, 20));
        QCOMPARE(window.arranged.size(), std::size_t{1});
        QCOMPARE(window.arranged[0].at(u"office"_s).x - window.arranged[0].at(u"mac"_s).x, 1778 + 60 / scale);
        QVERIFY(window.scale() < scale); // fitted again
    }

    void keyboardPicksAndMoves() {
        Window window;
        window.before.setFocus();
        const QImage bare = window.area->grab().toImage();
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Space}) {
            window.key(Qt::Key_Tab);
            window.key(key);
        }
        QCOMPARE(window.picked, (QStringList{u"office"_s, u"travel"_s})); // the first is the master
        // A click shows no ring, and so no key moves what was clicked.
        QVERIFY(window.area->grab().toImage() != bare);
        window.click(u"mac"_s);
        QCOMPARE(window.area->grab().toImage(), bare);
        window.key(Qt::Key_Right);
        QVERIFY(window.arranged.empty());

        using Action = QAccessibleActionInterface;
        accessible(window.area)->child(1)->actionInterface()->doAction(Action::setFocusAction());
        const std::tuple<Qt::Key, Qt::KeyboardModifiers, QPointF> steps[]{
            {Qt::Key_Right, Qt::NoModifier, {1878, 0}},
            {Qt::Key_Right, Qt::ShiftModifier, {1888, 0}},
            {Qt::Key_Down, Qt::KeypadModifier, {1888, 100}},
            {Qt::Key_Left, Qt::NoModifier, {1788, 100}},
            {Qt::Key_Up, Qt::ShiftModifier, {1788, 90}}};
        int save = 0;
        for (const auto &[key, modifiers, place] : steps) {
            window.key(key, modifiers);
            QCOMPARE(window.arranged.size(), static_cast<std::size_t>(save + 1));
            const ScreenPlacement office = window.arranged.back().at(u"office"_s);
            QCOMPARE(QPointF(office.x, office.y), place);
            window.answer(++save);
        }
        // Combinations with other modifiers belong to somebody else.
        window.key(Qt::Key_Up, Qt::ControlModifier);
        QCOMPARE(window.arranged.size(), std::size(steps));
    }

    void focusStaysAtItsDevice() {
        Window window;
        window.before.setFocus();
        window.key(Qt::Key_Tab);
        window.key(Qt::Key_Tab);
        QCOMPARE(window.focused(), u"office"_s);
        ScreenDesk desk = usualDesk();
        std::swap(desk.devices[1], desk.devices[2]);
        desk.devices.insert(desk.devices.begin(), {u"new"_s, u"New"_s, {}, true});
        window.canvas.render(desk, u"office"_s);
        QCOMPARE(window.focused(), u"office"_s);
        desk.devices.pop_back();
        window.canvas.render(desk, u"office"_s);
        QCOMPARE(window.focused(), u"travel"_s);
        window.canvas.render({}, {});
        QVERIFY(window.area->hasFocus() && window.focused().isNull());
        window.key(Qt::Key_Return);
        window.key(Qt::Key_Tab);
        QVERIFY(window.after.hasFocus());
    }

    void screenReadersFindTheUpperOfTwo() {
        Window window;
        QAccessibleInterface *group = accessible(window.area);
        const QPoint corner = window.area->mapToGlobal(QPoint(1, 1));
        QVERIFY(!group->childAt(corner.x(), corner.y()));
        ScreenDesk stacked = usualDesk();
        stacked.layout[u"office"_s] = stacked.layout[u"mac"_s];
        window.canvas.render(stacked, u"mac"_s);
        const QPoint middle = group->child(0)->rect().center();
        QCOMPARE(group->indexOfChild(group->childAt(middle.x(), middle.y())), 1);
    }

    void masterSprings() {
        Window window;
        const auto picture = [&] { return window.area->grab().toImage(); };
        window.canvas.render(usualDesk(), u"office"_s);
        const QImage first = picture();
        QTest::qWait(1000);
        const QImage after = picture();
        QVERIFY(first != after);
        static_cast<ControlStyle *>(QApplication::style())->setReducedMotion(true);
        window.canvas.render(usualDesk(), u"mac"_s);
        window.canvas.render(usualDesk(), u"office"_s);
        QCOMPARE(picture(), after);
    }

    /// The strongest pixel of the status against the fill that it stands on; at a large scale strokes are
    /// solid.
    void textsAreReadable() {
        constexpr int scale = 8;
        const QRect whole(0, 0, 538, 320);
        for (const ColorPreferences &colors : {ColorPreferences{.accent = QColor(0xff, 0xe0, 0x30)},
                                               {.dark = true, .accent = {}, .highContrast = true}}) {
            const QPalette palette = themePalette(colors);
            const CardPainter cards(palette, QFont());
            for (const CanvasCard &card :
                 canvasCards(usualDesk(), u"office"_s, fitInto(usualDesk(), whole.size()))) {
                if (card.isSelf)
                    continue; // it tells no status
                QImage image(whole.size() * scale, QImage::Format_RGB32);
                image.fill(themeColors(palette).card);
                QPainter painter(&image);
                painter.scale(scale, scale);
                cards.paintBackground(painter, whole);
                cards.paintCard(painter, card, card.rect, 0);
                const CardMetrics sizes = cardMetrics(card.rect.height());
                QRectF status = card.rect.adjusted(8, 0, -8, -4);
                status.setTop(card.rect.center().y() + sizes.symbol / 2 + 1.6 * sizes.name);
                const QImage pixels =
                    image.copy(QRectF(status.topLeft() * scale, status.size() * scale).toRect());
                const QColor fill = pixels.pixelColor(0, 0);
                double most = 1;
                for (int pixel = 0; pixel < pixels.width() * pixels.height(); ++pixel)
                    most = std::max(most, contrastRatio(fill, pixels.pixelColor(pixel % pixels.width(),
                                                                                pixel / pixels.width())));
                QVERIFY2(most >= (colors.highContrast ? 6.9 : 4.4), qPrintable(card.id));
            }
        }
    }

    void survivesAnything() {
        const double infinity = std::numeric_limits<double>::infinity();
        const std::vector<double> values{std::nan(""), infinity, 1e300, -1e15, 1e-300, 0, -500, 0.01, 1778};
        const std::vector<QString> names{QString(), u"<img src=x onerror=alert(1)>\n\u202Eevil\0"_s,
                                         QString(100'000, u'W'), QString(5000, QChar(0xD800))};
        std::mt19937 random(4711);
        const auto any = [&](const auto &list) { return list[random() % list.size()]; };
        Window window;
        for (int round = 0; round < 150; ++round) {
            ScreenDesk desk{{}, u"1"_s, {}};
            for (auto card = random() % 6; card > 0; --card) {
                // Now and then two cards claim to be the same device.
                const QString id = QString::number(random() % 5);
                desk.devices.push_back({id, any(names), id, random() % 2 == 0});
                if (random() % 4 != 0)
                    desk.layout[id] = {any(values), any(values), any(values), any(values)};
            }
            window.canvas.render(desk, QString::number(random() % 5));
            const QPoint somewhere(static_cast<int>(random() % 520), static_cast<int>(random() % 320));
            window.press(somewhere);
            window.move(somewhere + QPoint(200, -90));
            (void)window.area->grab();
            window.release(somewhere);
            window.area->setFocus(Qt::TabFocusReason);
            window.key(Qt::Key_Right);
            QAccessibleInterface *group = accessible(window.area);
            for (int card = 0; card < group->childCount(); ++card) {
                QVERIFY(!group->child(card)->text(QAccessible::Name).isEmpty());
                QVERIFY(group->child(card)->text(QAccessible::Description).size() < 800);
            }
        }
    }
};

int main(int argc, char **argv) {
    return runViewTest<ScreenLayoutCanvasTest>(argc, argv);
}
#include "ScreenLayoutCanvasTest.moc"
