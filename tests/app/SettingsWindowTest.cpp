#include "app/SettingsWindow.h"
#include "app/Localization.h"

#include <QSignalSpy>
#include <QTest>

using namespace quorbit;

class SettingsWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itsContentLivesFromOpeningToClosing() {
        installTranslations(QStringLiteral("en"));
        QGuiApplication::setQuitOnLastWindowClosed(true);
        QPointer<QWidget> content;
        int made = 0;
        SettingsWindow window([&] {
            ++made;
            return content = new QWidget;
        });
        QCOMPARE(window.windowTitle(), QStringLiteral("Settings"));
        QCOMPARE(made, 0);
        window.open();
        QCOMPARE(window.size(), QSize(580, 520));
        QCOMPARE(window.minimumSize(), QSize(560, 460));
        window.showMinimized();
        window.open();
        QVERIFY(!window.isMinimized() && window.isVisible());
        QCOMPARE(made, 1);

        QSignalSpy quits(qApp, &QCoreApplication::aboutToQuit);
        window.close();
        QTRY_VERIFY(!content);
        QCOMPARE(quits.count(), 0);
        window.open();
        QCOMPARE(made, 2);
        QVERIFY(content->isVisible());
    }
};

QTEST_MAIN(SettingsWindowTest)
#include "SettingsWindowTest.moc"
