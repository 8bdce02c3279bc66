#include "app/PanelWindow.h"
#include "app/PanelPlacement.h"

#include <QScreen>
#include <QTest>

using namespace quorbit;

namespace {

/// What the window system tells.
void tell(QWidget &widget, QEvent::Type type) {
    QEvent event(type);
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

class PanelWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void standsBesideTheIconInsideTheScreen() {
        // Of the screen from (0, 0) to (1280, 1000), bars of 30 are taken at the top and at the bottom.
        const QRect available(0, 30, 1280, 940);
        const std::tuple<QRect, int, QRect> rows[]{
            {{600, 3, 24, 24}, 200, {451, 31, 320, 200}},
            {{600, 3, 24, 24}, 500, {451, 31, 320, 500}}, // keeps the icon's edge
            {{1250, 3, 24, 24}, 200, {960, 31, 320, 200}},
            {{600, 973, 24, 24}, 200, {451, 769, 320, 200}},
            {{600, 973, 24, 24}, 500, {451, 469, 320, 500}},
            {{2, 973, 24, 24}, 200, {0, 769, 320, 200}},
            {{600, 300, 1, 1}, 200, {440, 305, 320, 200}}, // at the pointer
            {{600, 973, 24, 24}, 2000, {451, 30, 320, 940}},
            {{5000, 5000, 24, 24}, 200, {960, 770, 320, 200}}};
        for (const auto &[icon, height, expected] : rows)
            QCOMPARE(panelGeometry(panelAnchor(icon, available), {320, height}, available), expected);
    }

    void followsItsContentAndNeverOutgrowsTheScreen() {
        auto *content = new QWidget;
        content->setFixedSize(320, 200);
        PanelWindow panel(content);
        panel.dropDown(QRect(100, 0, 20, 20));
        QCOMPARE(panel.size(), QSize(320, 200));
        const QPoint place = panel.pos();
        content->setFixedSize(320, 300);
        QCOMPARE(panel.size(), QSize(320, 300));
        QCOMPARE(panel.pos(), place);
        content->setFixedSize(320, 5000);
        QVERIFY(panel.screen()->availableGeometry().contains(panel.geometry()));
        panel.hide();
        content->setFixedSize(320, 100);
        panel.dropDown(QRect(100, 0, 20, 20));
        QCOMPARE(panel.size(), QSize(320, 100));
    }

    void theClickThatTakesTheFocusClosesAndDoesNotReopen() {
        PanelWindow panel(new QWidget);
        panel.toggle(QRect(100, 0, 20, 20));
        QVERIFY(panel.isVisible());
        tell(panel, QEvent::WindowActivate);
        tell(panel, QEvent::WindowDeactivate);
        QVERIFY(!panel.isVisible());
        panel.toggle(QRect(100, 0, 20, 20));
        QVERIFY(!panel.isVisible());
        QTest::qWait(350);
        panel.toggle(QRect(100, 0, 20, 20));
        QVERIFY(panel.isVisible());
        panel.toggle(QRect(100, 0, 20, 20));
        QVERIFY(!panel.isVisible());
    }

    void escapeHidesItUntilTheNextClick() {
        PanelWindow panel(new QWidget);
        panel.toggle(QRect(100, 0, 20, 20));
        tell(panel, QEvent::WindowActivate);
        QTest::keyClick(&panel, Qt::Key_Escape);
        QVERIFY(!panel.isVisible());
        panel.toggle(QRect(100, 0, 20, 20));
        // The window system tells of the first hiding only now.
        tell(panel, QEvent::WindowDeactivate);
        QVERIFY(panel.isVisible());
    }

    void withoutATrayItIsAWindowThatStays() {
        auto *content = new QWidget;
        content->setFixedSize(320, 200);
        PanelWindow panel(content);
        panel.showAsWindow();
        tell(panel, QEvent::WindowActivate);
        tell(panel, QEvent::WindowDeactivate);
        QVERIFY(panel.isVisible());
        QTest::keyClick(&panel, Qt::Key_Escape);
        QVERIFY(panel.isVisible());
        QVERIFY(panel.windowType() == Qt::Window && !(panel.windowFlags() & Qt::FramelessWindowHint));
        content->setFixedSize(320, 250);
        QCOMPARE(panel.size(), QSize(320, 250));
        panel.hide();
        // A tray has come.
        panel.dropDown(QRect(100, 0, 20, 20));
        QVERIFY(panel.isVisible() && panel.windowFlags() & Qt::FramelessWindowHint);
        content->setFixedSize(320, 150);
        QCOMPARE(panel.size(), QSize(320, 150));
    }
};

QTEST_MAIN(PanelWindowTest)
#include "PanelWindowTest.moc"
