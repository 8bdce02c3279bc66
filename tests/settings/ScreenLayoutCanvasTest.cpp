#include "settings/CanvasWindow.h"
#include "support/Row.h"
#include "support/TestWorld.h"

#include <functional>

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
            {.name = "there and back", .card = u"office"_s, .way = {{6, 8}, {1.5, -1.25}}, .drops = true},
            {.name = "without a place of its own", .card = u"travel"_s, .way = {{0, -60}}, .drops = true},
            {.name = "another button", .card = u"office"_s, .way = {{40, 0}}, .button = Qt::RightButton}};
        for (const auto &[name, card, way, picks, button, drops] : rows) {
            const Row row(name);
            CanvasWindow window;
            const QRectF start = window.place(card);
            const QPointF from = window.middle(card) + QPointF(0.5, 0.25);
            window.press(from, button);
            for (const QPointF &by : way)
                window.move(from + by, button);
            QCOMPARE(window.place(card), drops ? start.translated(way.last()) : start);
            QVERIFY(window.arranged.empty());
            window.release(from + way.value(way.size() - 1), button);
            QCOMPARE(window.picked, picks);
            QCOMPARE(window.arranged.size(), std::size_t{drops});
        }
    }

    void dragEndsWithoutWriting() {
        ScreenDesk without = usualDesk();
        without.devices.erase(without.devices.begin() + 1);
        QEvent grabLost(QEvent::UngrabMouse);
        const std::pair<const char *, std::function<void(CanvasWindow &)>> rows[]{
            {"Escape", [](auto &window) { window.key(Qt::Key_Escape); }},
            {"its device goes", [&](auto &window) { window.show(without), window.show(usualDesk()); }},
            {"hidden", [](auto &window) { window.canvas->hide(), window.canvas->show(); }},
            {"disabled", [](auto &window) { window.canvas->setEnabled(false); }},
            {"the grab is lost", [&](auto &window) { QCoreApplication::sendEvent(window.area, &grabLost); }},
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
            window.show(elsewhere);
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
        window.show(other);
        QCOMPARE(window.place(u"office"_s), held);
        QCOMPARE(window.place(u"mac"_s), still);
        window.release(from + QPoint(60, 20));
        QCOMPARE(window.arranged.size(), std::size_t{1});
        QCOMPARE(window.arranged[0].at(u"office"_s).x - window.arranged[0].at(u"mac"_s).x, 1778 + 60 / scale);
        QVERIFY(window.scale() < scale); // fitted again
    }

    void keyboardPicksAndMoves() {
        CanvasWindow window;
        const QImage bare = window.area->grab().toImage();
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Space}) {
            window.key(Qt::Key_Tab);
            window.key(key);
        }
        QCOMPARE(window.picked, (QStringList{u"office"_s, u"travel"_s})); // the first is the master
        QVERIFY(window.area->grab().toImage() != bare);
        window.key(Qt::Key_Up, Qt::ControlModifier); // belongs to somebody else
        QVERIFY(window.arranged.empty());
        window.key(Qt::Key_Right, Qt::ShiftModifier | Qt::KeypadModifier);
        QCOMPARE(window.arranged.at(0).at(u"travel"_s).x, 1778.0 + 10);
        // A click shows no ring, and so no key moves what was clicked.
        window.press(window.middle(u"mac"_s));
        window.release(window.middle(u"mac"_s));
        window.canvas->saveEnded(1, false);
        QCOMPARE(window.area->grab().toImage(), bare);
        window.key(Qt::Key_Right);
        QCOMPARE(window.arranged.size(), std::size_t{1});
    }

    void focusStaysAtItsDevice() {
        CanvasWindow window;
        window.key(Qt::Key_Tab);
        window.key(Qt::Key_Tab);
        QCOMPARE(window.focused(), u"office"_s);
        ScreenDesk desk = usualDesk();
        std::swap(desk.devices[1], desk.devices[2]);
        desk.devices.insert(desk.devices.begin(), {u"new"_s, u"New"_s, {}, true});
        window.show(desk);
        QCOMPARE(window.focused(), u"office"_s);
        desk.devices.pop_back();
        window.show(desk);
        QCOMPARE(window.focused(), u"travel"_s);
        window.show({});
        QVERIFY(window.area->hasFocus() && window.focused().isNull());
        window.key(Qt::Key_Return);
        window.key(Qt::Key_Tab);
        QVERIFY(window.after->hasFocus());
    }

    void masterMovesAtOnceWhereMotionIsReduced() {
        CanvasWindow window;
        const auto picture = [&] { return window.area->grab().toImage(); };
        window.canvas->render(usualDesk(), u"office"_s);
        const QImage first = picture();
        auto *style = static_cast<ControlStyle *>(QApplication::style());
        style->setReducedMotion(true);
        window.show(usualDesk());
        window.canvas->render(usualDesk(), u"office"_s);
        style->setReducedMotion(false);
        const QImage last = picture();
        QVERIFY(first != last);
        settle();
        QCOMPARE(picture(), last);
    }
};

int main(int argc, char **argv) {
    return runViewTest<ScreenLayoutCanvasTest>(argc, argv);
}
#include "ScreenLayoutCanvasTest.moc"
