#include "menubar/MenuBarView.h"
#include "menubar/HistoryRow.h"
#include "menubar/MenuRow.h"
#include "menubar/PanelStates.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/controls/Switch.h"
#include "ui/text/TextLabel.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

namespace {

template <class Widget>
QStringList namesOf(const MenuBarView &panel) {
    QList<Widget *> widgets = panel.findChildren<Widget *>();
    widgets.removeIf([](Widget *widget) { return !widget->isVisible(); });
    std::sort(widgets.begin(), widgets.end(), [&](Widget *a, Widget *b) {
        return a->mapTo(&panel, QPoint()).y() < b->mapTo(&panel, QPoint()).y();
    });
    QStringList names;
    for (Widget *widget : widgets)
        names << nameOf(widget);
    return names;
}

} // namespace

class MenuBarViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        useLanguage(u"en"_s);
        useAppearance({}, 9);
    }

    void cleanup() { panel_.reset(); }

    void onlyWhatChangedIsPainted() {
        show();
        PaintWatch watch;
        panel_->render(busy_.model());
        QCOMPARE(watch.painted(), QSet<QWidget *>());
        ServiceState service = busy_.service;
        service.status->file_xfer->sent = 1024;
        render(service);
        QSet<QWidget *> painted = watch.painted();
        auto *transfer = named<MenuRow>(*panel_, u"report.pdf · 50%"_s);
        QVERIFY(painted.remove(transfer));
        for (QWidget *widget : painted)
            QVERIFY(widget->isAncestorOf(transfer) || transfer->isAncestorOf(widget));
    }

    void rowsStayWithTheirValues() {
        show();
        auto *chosen = named<HistoryRow>(*panel_, u"3 files, Studio Mac"_s);
        auto *peer = named<MenuRow>(*panel_, u"Office Linux, Connected"_s);
        chosen->setFocus(Qt::TabFocusReason);

        ServiceState service = busy_.service;
        std::rotate(service.history.begin(), service.history.begin() + 2, service.history.end());
        service.history.insert(service.history.begin(), HistoryEntry{9, {}, u"new"_s, {}, {}});
        std::swap(service.status->peers[0], service.status->peers[1]);
        service.status->peers[0].name = u"Renamed"_s;
        render(service);
        QTest::qWait(60);

        const QStringList history{u"new"_s, u"3 files, Studio Mac"_s,
                                  u"ssh deploy@10.0.0.12 'systemctl status quorbitd', Office Linux"_s,
                                  u"Screenshot 1440 × 900, Travel laptop"_s};
        QCOMPARE(namesOf<HistoryRow>(*panel_), history);
        QCOMPARE(nameOf(chosen), history[1]);
        QVERIFY(chosen->hasFocus());
        QCOMPARE(namesOf<MenuRow>(*panel_).first(), u"Renamed, Connected"_s);
        QCOMPARE(nameOf(peer), u"Renamed, Connected"_s);
        QTest::keyClick(panel_.get(), Qt::Key_Tab);
        QCOMPARE(nameOf(panel_->focusWidget()), history[2]);
    }

    void highlightStaysUnderThePointer() {
        show();
        const auto rows = panel_->findChildren<HistoryRow *>();
        QCursor::setPos(rows[2]->mapToGlobal(rows[2]->rect().center()));
        QTest::mouseMove(panel_->windowHandle(), rows[2]->mapTo(panel_.get(), rows[2]->rect().center()));
        QTRY_VERIFY(rows[2]->underMouse());
        const QColor lit = rows[2]->palette().color(QPalette::Dark);
        QVERIFY(lit != panel_->palette().color(QPalette::Dark));

        ServiceState service = busy_.service;
        std::swap(service.history[1], service.history[2]);
        render(service);
        QVERIFY(!rows[2]->underMouse() && rows[1]->underMouse());
        QCOMPARE(rows[1]->palette().color(QPalette::Dark), lit);
        QCOMPARE(rows[2]->palette().color(QPalette::Dark), panel_->palette().color(QPalette::Dark));
    }

    void goneRowsLeave() {
        show();
        const int full = panel_->height();
        // Two entries that claim to be the same one are two rows.
        ServiceState twins = busy_.service;
        twins.history = {{1, {}, u"a"_s, {}, {}}, {1, {}, u"b"_s, {}, {}}};
        render(twins);
        QTest::qWait(60);
        QCOMPARE(namesOf<HistoryRow>(*panel_), QStringList({u"a"_s, u"b"_s}));
        render(ServiceState());
        QCOMPARE(namesOf<HistoryRow>(*panel_), QStringList());
        QCOMPARE(namesOf<MenuRow>(*panel_), QStringList(u"No paired computers yet"_s));
        QVERIFY(panel_->height() < full);
        render(busy_.service);
        QCOMPARE(panel_->height(), full);
    }

    void controlsShowOnlyWhatTheyAreTold() {
        show();
        QSignalSpy pause(panel_.get(), &MenuBarView::pauseRequested);
        QSignalSpy history(panel_.get(), &MenuBarView::historyChosen);
        // A key pressed by chance on the panel that has just opened does nothing.
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space})
            QTest::keyClick(QApplication::focusWidget(), key);
        QVERIFY(pause.isEmpty() && history.isEmpty());

        auto *pauseSwitch = panel_->findChild<Switch *>();
        QTest::mouseClick(pauseSwitch, Qt::LeftButton);
        QVERIFY(!pauseSwitch->isOn());
        ServiceState paused = busy_.service;
        paused.status->paused = true;
        render(paused);
        pauseSwitch->setFocus();
        QTest::keyClick(pauseSwitch, Qt::Key_Enter);
        QCOMPARE(pause, (QList<QVariantList>{{true}, {false}}));
    }

    void arrowsMoveAsTheTabKeyDoes() {
        show();
        const auto walk = [&](Qt::Key key) {
            panel_->setFocus();
            QStringList names;
            for (int step = 0; step < 8; ++step) {
                QTest::keyClick(QApplication::focusWidget(), key);
                names << nameOf(QApplication::focusWidget());
            }
            return names;
        };
        QStringList down = walk(Qt::Key_Down);
        QCOMPARE(down.last(), down.first()); // there are seven controls
        QCOMPARE(walk(Qt::Key_Tab), down);
        std::reverse(down.begin(), down.end());
        QCOMPARE(walk(Qt::Key_Up).first(7), down.last(7));
    }

    void previewsHaveRoomBesideAnySource() {
        useAppearance({}, 16);
        MenuBarView panel;
        panel.render(fullPanelState().model());
        panel.show();
        QCoreApplication::processEvents();
        for (HistoryRow *row : panel.findChildren<HistoryRow *>())
            QVERIFY(row->findChild<TextLabel *>()->width() >= 120);
    }

private:
    void show() {
        panel_ = std::make_unique<MenuBarView>();
        panel_->render(busy_.model());
        openWindow(*panel_);
    }
    void render(const ServiceState &service) { panel_->render(menuBarModel(service, busy_.update)); }

    const PanelState busy_ = busyPanelState();
    std::unique_ptr<MenuBarView> panel_;
};

int main(int argc, char **argv) {
    return runViewTest<MenuBarViewTest>(argc, argv);
}
#include "MenuBarViewTest.moc"
