#include "settings/CanvasWindow.h"
#include "support/Row.h"
#include "support/TestWorld.h"

#include <functional>
#include <limits>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

class ScreenLayoutCanvasTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void gestures() {
        const struct {
            const char *name;
            QString card;
            QList<QPointF> way = {};
            QStringList picks = {};
            Qt::MouseButton button = Qt::LeftButton;
            bool drops = false;
        } rows[]{
            {.name = "almost a drag", .card = u"office"_s, .way = {{7, 7}, {9, 4}}, .picks = {u"office"_s}},
            {.name = "the master already", .card = u"mac"_s},
            {.name = "a drag", .card = u"office"_s, .way = {{6, 8}, {40.5, -25.25}}, .drops = true},
            {.name = "and back", .card = u"office"_s, .way = {{40, 0}, {1, 1}}, .drops = true},
            {.name = "without a place of its own", .card = u"travel"_s, .way = {{0, -60}}, .drops = true},
            {.name = "another button", .card = u"office"_s, .way = {{40, 0}}, .button = Qt::RightButton}};
        for (const auto &[name, card, way, picks, button, drops] : rows) {
            const Row row(name);
            CanvasWindow window;
            const double scale = window.scale();
            const QRectF start = window.place(card);
            const QPointF from = window.middle(card) + QPointF(0.5, 0.25);
            window.press(from, button);
            for (const QPointF &by : way)
                window.move(from + by, button);
            QCOMPARE(window.place(card), drops ? start.translated(way.last()) : start);
            QVERIFY(window.arranged.empty());
            window.release(from + way.value(way.size() - 1), button);
            QCOMPARE(window.picked, picks);
            QCOMPARE(window.arranged.size(), std::size_t{drops ? 1U : 0U});
            if (!drops)
                continue;
            const ScreenPlacement before = rectFor(usualDesk(), card);
            const ScreenPlacement after = window.arranged[0].at(card);
            const ScreenPlacement origin = window.arranged[0].at(u"mac"_s);
            QCOMPARE(QPointF(after.x - origin.x, after.y - origin.y),
                     QPointF(before.x, before.y) + way.last() / scale);
        }
    }

    void dragEndsWithoutWriting() {
        const std::pair<const char *, std::function<void(CanvasWindow &)>> rows[]{
            {"Escape", [](auto &window) { window.key(Qt::Key_Escape); }},
            {"its device goes",
             [](auto &window) {
                 ScreenDesk desk = usualDesk();
                 desk.devices.erase(desk.devices.begin() + 1);
                 window.canvas->render(desk, u"mac"_s);
                 window.canvas->render(usualDesk(), u"mac"_s);
             }},
            {"hidden",
             [](auto &window) {
                 window.canvas->hide();
                 window.canvas->show();
             }},
            {"disabled",
             [](auto &window) {
                 window.canvas->setEnabled(false);
                 window.canvas->setEnabled(true);
             }},
            {"the grab is lost",
             [](auto &window) {
                 QEvent grabLost(QEvent::UngrabMouse);
                 QCoreApplication::sendEvent(window.area, &grabLost);
             }},
            {"the release went elsewhere", [](auto &window) {
                 window.move({9, 9}, Qt::NoButton);
             }}};
        for (const auto &[name, end] : rows) {
            const Row row(name);
            CanvasWindow window;
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
            window.canvas->render(elsewhere, u"mac"_s);
            QVERIFY(window.place(u"office"_s) != start); // nothing holds it
        }
    }

    void publishedStateLeavesADragAlone() {
        CanvasWindow window;
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
        window.canvas->render(other, u"office"_s);
        QCOMPARE(window.place(u"office"_s), held);
        QCOMPARE(window.place(u"mac"_s), still);
        window.move(from + QPoint(60, 20));
        window.release(from + QPoint(60, 20));
        QCOMPARE(window.arranged.size(), std::size_t{1});
        QCOMPARE(window.arranged[0].at(u"office"_s).x - window.arranged[0].at(u"mac"_s).x, 1778 + 60 / scale);
        QVERIFY(window.scale() < scale); // fitted again
    }

    void keyboardPicksAndMoves() {
        CanvasWindow window;
        window.before->setFocus();
        const QImage bare = window.area->grab().toImage();
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Space}) {
            window.key(Qt::Key_Tab);
            window.key(key);
        }
        QCOMPARE(window.picked, (QStringList{u"office"_s, u"travel"_s})); // the first is the master
        QVERIFY(window.area->grab().toImage() != bare);
        const std::tuple<Qt::Key, Qt::KeyboardModifiers, QPointF> steps[]{
            {Qt::Key_Right, Qt::NoModifier, {1878, 2060}},
            {Qt::Key_Left, Qt::ShiftModifier, {1868, 2060}},
            {Qt::Key_Down, Qt::KeypadModifier, {1868, 2160}},
            {Qt::Key_Up, Qt::ControlModifier, {1868, 2160}}}; // which belongs to somebody else
        int save = 0;
        for (const auto &[key, modifiers, place] : steps) {
            window.key(key, modifiers);
            window.canvas->saveEnded(++save, true);
            const ScreenPlacement travel = window.arranged.back().at(u"travel"_s);
            QCOMPARE(QPointF(travel.x, travel.y), place);
            ScreenDesk stored = usualDesk();
            stored.layout = window.arranged.back();
            window.canvas->render(stored, u"mac"_s);
        }
        // A click shows no ring, and so no key moves what was clicked.
        window.arranged.clear();
        window.press(window.middle(u"mac"_s));
        window.release(window.middle(u"mac"_s));
        window.key(Qt::Key_Right);
        QVERIFY(window.arranged.empty());
    }

    void focusStaysAtItsDevice() {
        CanvasWindow window;
        window.before->setFocus();
        window.key(Qt::Key_Tab);
        window.key(Qt::Key_Tab);
        QCOMPARE(window.focused(), u"office"_s);
        ScreenDesk desk = usualDesk();
        std::swap(desk.devices[1], desk.devices[2]);
        desk.devices.insert(desk.devices.begin(), {u"new"_s, u"New"_s, {}, true});
        window.canvas->render(desk, u"office"_s);
        QCOMPARE(window.focused(), u"office"_s);
        desk.devices.pop_back();
        window.canvas->render(desk, u"office"_s);
        QCOMPARE(window.focused(), u"travel"_s);
        window.canvas->render({}, {});
        QVERIFY(window.area->hasFocus() && window.focused().isNull());
        window.key(Qt::Key_Return);
        window.key(Qt::Key_Tab);
        QVERIFY(window.after->hasFocus());
    }

    void screenReadersFindTheUpperOfTwo() {
        CanvasWindow window;
        QAccessibleInterface *group = accessible(window.area);
        const QPoint corner = window.area->mapToGlobal(QPoint(1, 1));
        QVERIFY(!group->childAt(corner.x(), corner.y()));
        ScreenDesk stacked = usualDesk();
        stacked.layout[u"office"_s] = stacked.layout[u"mac"_s];
        window.canvas->render(stacked, u"mac"_s);
        const QPoint middle = group->child(0)->rect().center();
        QCOMPARE(group->indexOfChild(group->childAt(middle.x(), middle.y())), 1);
    }

    void masterSprings() {
        CanvasWindow window;
        const auto picture = [&] { return window.area->grab().toImage(); };
        window.canvas->render(usualDesk(), u"office"_s);
        const QImage first = picture();
        QTest::qWait(1000);
        const QImage after = picture();
        QVERIFY(first != after);
        static_cast<ControlStyle *>(QApplication::style())->setReducedMotion(true);
        window.canvas->render(usualDesk(), u"mac"_s);
        window.canvas->render(usualDesk(), u"office"_s);
        QCOMPARE(picture(), after);
        static_cast<ControlStyle *>(QApplication::style())->setReducedMotion(false);
    }

    void survivesWildNamesAndPlaces() {
        CanvasWindow window;
        for (const double value :
             {std::nan(""), std::numeric_limits<double>::infinity(), 1e300, -1e15, 1e-300, 0.0, -500.0}) {
            for (const QString &name : {QString(), u"<img src=x>\n\u202Eevil\0"_s, QString(100'000, u'W'),
                                        QString(5000, QChar(0xD800))}) {
                // Two cards claim to be the same device.
                const ScreenDesk desk{{{u"1"_s, {value, 0, 1778, value}}, {u"2"_s, {0, value, value, 1000}}},
                                      u"1"_s,
                                      {{u"1"_s, name}, {u"2"_s, name}, {u"2"_s, name, name, true}}};
                window.canvas->render(desk, u"2"_s);
                window.press({260, 160});
                window.move({460, 70});
                (void)window.area->grab();
                window.release({460, 70});
                window.area->setFocus(Qt::TabFocusReason);
                window.key(Qt::Key_Right);
                QAccessibleInterface *group = accessible(window.area);
                for (int card = 0; card < group->childCount(); ++card) {
                    QVERIFY(!group->child(card)->text(QAccessible::Name).isEmpty());
                    QVERIFY(group->child(card)->text(QAccessible::Description).size() < 800);
                }
            }
        }
    }
};

int main(int argc, char **argv) {
    return runViewTest<ScreenLayoutCanvasTest>(argc, argv);
}
#include "ScreenLayoutCanvasTest.moc"
