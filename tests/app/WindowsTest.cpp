#include "app/windows/PanelPlacement.h"
#include "app/windows/PanelWindow.h"
#include "app/windows/SettingsWindow.h"

#include <QScreen>
#include <QSignalSpy>
#include <QTest>

using namespace quorbit;

namespace {

bool isBlended() {
    return true;
}

/// What the window system tells.
void tell(QWidget &widget, QEvent::Type type) {
    QEvent event(type);
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

class WindowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void standsBesideTheIconInsideTheScreen() {
        // Of the screen from (0, 0) to (1280, 1000), bars of 30 are taken on every side.
        const QRect available(30, 30, 1220, 940);
        const std::tuple<QRect, int, QRect> rows[]{
            {{600, 3, 24, 24}, 200, {451, 38, 320, 200}},    // under the upper bar
            {{600, 973, 24, 24}, 200, {451, 762, 320, 200}}, // above the lower bar
            {{32, 973, 24, 24}, 200, {38, 762, 320, 200}},
            {{3, 100, 24, 24}, 200, {38, 100, 320, 200}},     // right of the left bar
            {{1253, 100, 24, 24}, 200, {922, 100, 320, 200}}, // left of the right bar
            {{60, 400, 24, 24}, 200, {88, 400, 320, 200}},    // beside a bar that takes no room from windows
            {{600, 300, 1, 1}, 200, {440, 305, 320, 200}},    // at the pointer
            {{600, 973, 24, 24}, 2000, {451, 38, 320, 924}},
            {{5000, 5000, 24, 24}, 200, {922, 762, 320, 200}}};
        for (const auto &[icon, height, expected] : rows)
            QCOMPARE(panelGeometry(panelAnchor(icon, available), {320, height}, available), expected);
    }

    void followsItsContentAndNeverOutgrowsTheScreen() {
        auto *content = new QWidget;
        content->setFixedSize(320, 200);
        PanelWindow panel(content, isBlended);
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

    void escapeHidesItUntilTheNextClick() {
        PanelWindow panel(new QWidget, isBlended);
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
        PanelWindow panel(content, isBlended);
        panel.showAsWindow();
        tell(panel, QEvent::WindowActivate);
        tell(panel, QEvent::WindowDeactivate);
        QTest::keyClick(&panel, Qt::Key_Escape);
        QVERIFY(panel.isVisible());
        content->setFixedSize(320, 250);
        QCOMPARE(panel.size(), QSize(320, 250));
        // A tray has come: its click brings the window to the icon.
        panel.toggle(QRect(100, 0, 20, 20));
        QVERIFY(panel.isVisible() && panel.windowFlags() & Qt::FramelessWindowHint);
    }

    void theContentOfTheSettingsLivesFromOpeningToClosing() {
        QGuiApplication::setQuitOnLastWindowClosed(true);
        QPointer<QWidget> content;
        int made = 0;
        SettingsWindow window([&] {
            ++made;
            return content = new QWidget;
        });
        window.open();
        window.showMinimized();
        window.open();
        QVERIFY(!window.isMinimized() && window.isVisible());
        QCOMPARE(made, 1);

        QSignalSpy quits(qApp, &QCoreApplication::aboutToQuit);
        window.close();
        QTRY_VERIFY(!content);
        QCOMPARE(quits.count(), 0);
        window.open();
        QVERIFY(content->isVisible());
    }
};

QTEST_MAIN(WindowsTest)
#include "WindowsTest.moc"
