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
    void standsBesideTheIconInsideTheScreen_data() {
        QTest::addColumn<QRect>("icon");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QRect>("expected");
        const QSize size(320, 200);
        // Of the screen from (0, 0) to (1280, 1000), bars of 30 are taken on every side.
        QTest::newRow("under the upper bar") << QRect(600, 3, 24, 24) << size << QRect(451, 38, 320, 200);
        QTest::newRow("in the upper right corner")
            << QRect(1220, 3, 24, 24) << size << QRect(922, 38, 320, 200);
        QTest::newRow("above the lower bar") << QRect(600, 973, 24, 24) << size << QRect(451, 762, 320, 200);
        QTest::newRow("in the lower left corner")
            << QRect(32, 973, 24, 24) << size << QRect(38, 762, 320, 200);
        QTest::newRow("right of the left bar") << QRect(3, 100, 24, 24) << size << QRect(38, 100, 320, 200);
        QTest::newRow("low on the left bar") << QRect(3, 700, 24, 24) << size << QRect(38, 524, 320, 200);
        QTest::newRow("left of the right bar")
            << QRect(1253, 100, 24, 24) << size << QRect(922, 100, 320, 200);
        QTest::newRow("beside a thick bar of the left") // which takes no room from windows
            << QRect(60, 400, 24, 24) << size << QRect(88, 400, 320, 200);
        QTest::newRow("at the pointer") << QRect(600, 300, 1, 1) << size << QRect(440, 305, 320, 200);
        QTest::newRow("high") << QRect(600, 973, 24, 24) << QSize(320, 2000) << QRect(451, 38, 320, 924);
        QTest::newRow("elsewhere") << QRect(5000, 5000, 24, 24) << size << QRect(922, 762, 320, 200);
    }
    void standsBesideTheIconInsideTheScreen() {
        QFETCH(QRect, icon);
        QFETCH(QSize, size);
        const QRect available(30, 30, 1220, 940);
        QTEST(panelGeometry(panelAnchor(icon, available), size, available), "expected");
    }

    void keepsTheIconsEdgeWhenItsHeightChanges() {
        const QRect available(30, 30, 1220, 940);
        const PanelAnchor upper = panelAnchor(QRect(600, 3, 24, 24), available);
        const PanelAnchor lower = panelAnchor(QRect(600, 973, 24, 24), available);
        const PanelAnchor beside = panelAnchor(QRect(3, 700, 24, 24), available);
        for (const int height : {100, 300, 500}) {
            QCOMPARE(panelGeometry(upper, {320, height}, available).top(), 38);
            QCOMPARE(panelGeometry(lower, {320, height}, available).bottom(), 961);
            QCOMPARE(panelGeometry(beside, {320, height}, available).bottom(), 723);
        }
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
        // A tray has come: its click brings the window to the icon.
        panel.toggle(QRect(100, 0, 20, 20));
        QVERIFY(panel.isVisible() && panel.windowFlags() & Qt::FramelessWindowHint);
        content->setFixedSize(320, 150);
        QCOMPARE(panel.size(), QSize(320, 150));
    }
};

QTEST_MAIN(PanelWindowTest)
#include "PanelWindowTest.moc"
