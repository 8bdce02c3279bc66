#include "app/windows/PanelPlacement.h"
#include "app/windows/PanelWindow.h"
#include "app/windows/SettingsWindow.h"
#include "support/Row.h"

#include <QScreen>
#include <QSignalSpy>
#include <QTest>

using namespace quorbit;
using namespace quorbit::test;

namespace {

const QRect icon(100, 0, 20, 20);

/// What the window system tells.
void tell(QWidget &widget, QEvent::Type type) {
    QEvent event(type);
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

class WindowsTest : public QObject {
    Q_OBJECT

    QWidget *content_ = nullptr; ///< the panel's
    std::unique_ptr<PanelWindow> panel_;

private Q_SLOTS:
    void init() {
        content_ = new QWidget;
        content_->setFixedSize(320, 200);
        panel_ = std::make_unique<PanelWindow>(content_, [] { return true; });
    }
    void cleanup() { panel_.reset(); }

    void standsBesideTheIconInsideTheScreen() {
        // Of the screen from (0, 0) to (1280, 1000), bars of 30 are taken on every side.
        const QRect available(30, 30, 1220, 940);
        const std::tuple<const char *, QRect, int, QRect> rows[]{
            {"under the upper bar", {600, 3, 24, 24}, 200, {451, 38, 320, 200}},
            {"above the lower bar", {600, 973, 24, 24}, 200, {451, 762, 320, 200}},
            {"in the corner", {32, 973, 24, 24}, 200, {38, 762, 320, 200}},
            {"right of the left bar", {3, 100, 24, 24}, 200, {38, 100, 320, 200}},
            {"left of the right bar", {1253, 100, 24, 24}, 200, {922, 100, 320, 200}},
            {"a bar that takes no room", {60, 400, 24, 24}, 200, {88, 400, 320, 200}},
            {"a lower bar that takes no room", {600, 940, 24, 24}, 200, {451, 736, 320, 200}},
            {"at the pointer", {600, 300, 1, 1}, 200, {440, 305, 320, 200}},
            {"higher than the screen", {600, 973, 24, 24}, 2000, {451, 38, 320, 924}},
            {"off the screen", {5000, 5000, 24, 24}, 200, {922, 762, 320, 200}}};
        for (const auto &[name, beside, height, expected] : rows) {
            const Row row(name);
            QCOMPARE(panelGeometry(panelAnchor(beside, available), {320, height}, available), expected);
        }
    }

    void followsItsContentAndNeverOutgrowsTheScreen() {
        panel_->dropDown(icon);
        QCOMPARE(panel_->size(), QSize(320, 200));
        const QPoint place = panel_->pos();
        content_->setFixedSize(320, 300);
        QCOMPARE(panel_->geometry(), QRect(place, QSize(320, 300)));
        content_->setFixedSize(320, 5000);
        QVERIFY(panel_->screen()->availableGeometry().contains(panel_->geometry()));
        panel_->hide();
        content_->setFixedSize(320, 100);
        panel_->dropDown(icon);
        QCOMPARE(panel_->size(), QSize(320, 100));
    }

    void escapeHidesItUntilTheNextClick() {
        panel_->toggle(icon);
        tell(*panel_, QEvent::WindowActivate);
        QTest::keyClick(panel_.get(), Qt::Key_Escape);
        QVERIFY(!panel_->isVisible());
        panel_->toggle(icon);
        // The window system tells of the first hiding only now.
        tell(*panel_, QEvent::WindowDeactivate);
        QVERIFY(panel_->isVisible());
    }

    void aSecondClickClosesItEvenIfItTakesTheFocusFirst() {
        for (const bool takesFocus : {false, true}) {
            panel_->toggle(icon);
            tell(*panel_, QEvent::WindowActivate);
            if (takesFocus)
                tell(*panel_, QEvent::WindowDeactivate);
            panel_->toggle(icon);
            QVERIFY(!panel_->isVisible());
        }
    }

    void withoutATrayItIsAWindowThatStays() {
        panel_->showAsWindow();
        tell(*panel_, QEvent::WindowActivate);
        tell(*panel_, QEvent::WindowDeactivate);
        QTest::keyClick(panel_.get(), Qt::Key_Escape);
        QVERIFY(panel_->isVisible());
        content_->setFixedSize(320, 250);
        QCOMPARE(panel_->size(), QSize(320, 250));
        // A tray has come: its click brings the window to the icon.
        panel_->toggle(icon);
        QVERIFY(panel_->isVisible());
        QVERIFY(panel_->windowFlags() & Qt::FramelessWindowHint);
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
