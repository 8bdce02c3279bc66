#include "menubar/HistoryRow.h"
#include "menubar/MenuBarView.h"
#include "menubar/MenuRow.h"
#include "menubar/PanelStates.h"
#include "menubar/UpdateBadge.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/Switch.h"
#include "ui/TextLabel.h"

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
        useLanguage("en"_L1);
        useAppearance({}, 9);
    }

    void cleanup() { panel_.reset(); }

    void onlyWhatChangedIsPainted() {
        show();
        PaintWatch calm;
        panel_->render(busy_.model());
        QCOMPARE(calm.painted(), QSet<QWidget *>());

        auto *transfer = named<MenuRow>(*panel_, u"report.pdf · 25%"_s);
        const int height = panel_->height();
        ServiceState service = busy_.service;
        service.status->file_xfer->sent = 1024;
        PaintWatch watch;
        render(service);
        const QSet<QWidget *> painted = watch.painted();
        QVERIFY(painted.contains(transfer));
        for (QWidget *widget : painted) {
            const bool isOther = qobject_cast<MenuRow *>(widget) || qobject_cast<HoverRow *>(widget) ||
                                 qobject_cast<Switch *>(widget);
            QVERIFY(widget == transfer || !isOther);
        }
        QCOMPARE(nameOf(transfer), u"report.pdf · 50%"_s);
        QCOMPARE(panel_->height(), height);
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
        QCOMPARE(named<HistoryRow>(*panel_, u"3 files, Studio Mac"_s), chosen);
        QVERIFY(chosen->hasFocus());
        QCOMPARE(namesOf<MenuRow>(*panel_).first(2),
                 QStringList({u"Renamed, Connected"_s, u"Travel laptop, Connected"_s}));
        QCOMPARE(named<MenuRow>(*panel_, u"Renamed, Connected"_s), peer);
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
        render(ServiceState());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(namesOf<HistoryRow>(*panel_), QStringList());
        QCOMPARE(namesOf<MenuRow>(*panel_), QStringList(u"No paired computers yet"_s));
        QVERIFY(panel_->height() < full);

        // Two entries that claim to be the same one are two rows.
        ServiceState twins = busy_.service;
        twins.history = {{1, {}, u"a"_s, {}, {}}, {1, {}, u"b"_s, {}, {}}};
        render(twins);
        QTest::qWait(60);
        QCOMPARE(namesOf<HistoryRow>(*panel_), QStringList({u"a"_s, u"b"_s}));
        render(busy_.service);
        QCOMPARE(panel_->height(), full);
    }

    void controlsAskAndShowOnlyWhatTheyAreTold() {
        show();
        QSignalSpy pause(panel_.get(), &MenuBarView::pauseRequested);
        QSignalSpy history(panel_.get(), &MenuBarView::historyChosen);
        QSignalSpy update(panel_.get(), &MenuBarView::updateRequested);
        // A key pressed by chance on the panel that has just opened does nothing.
        QCOMPARE(QApplication::focusWidget(), panel_.get());
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space})
            QTest::keyClick(panel_.get(), key);
        QVERIFY(pause.isEmpty() && history.isEmpty() && update.isEmpty());

        auto *pauseSwitch = panel_->findChild<Switch *>();
        QTest::mouseClick(pauseSwitch, Qt::LeftButton);
        QVERIFY(!pauseSwitch->isOn());
        ServiceState paused = busy_.service;
        paused.status->paused = true;
        render(paused);
        QVERIFY(pauseSwitch->isOn());
        pauseSwitch->setFocus();
        QTest::keyClick(pauseSwitch, Qt::Key_Enter);
        QCOMPARE(pause, (QList<QVariantList>{{true}, {false}}));

        panel_->render(menuBarModel(busy_.service, UpdateState()));
        QVERIFY(!panel_->findChild<UpdateBadge *>()->isVisible());
    }

    void arrowsMoveAsTheTabKeyDoes() {
        show();
        const auto walk = [&](Qt::Key key) {
            QStringList names;
            for (int step = 0; step < 8; ++step) {
                QTest::keyClick(QApplication::focusWidget(), key);
                names << nameOf(QApplication::focusWidget());
            }
            return names;
        };
        const QStringList down = walk(Qt::Key_Down);
        QCOMPARE(down.last(), down.first()); // there are seven controls
        panel_->setFocus();
        QCOMPARE(walk(Qt::Key_Tab), down);
        panel_->setFocus();
        const QStringList up = walk(Qt::Key_Up);
        QCOMPARE(up, QStringList(down.rbegin() + 1, down.rend()) + QStringList(up.first()));
    }

    void everythingFits_data() { addLooks({9.0, 10.0, 11.0, 12.5, 14.0, 16.0}); }
    void everythingFits() {
        useLook();
        QSet<QString> ownTexts;
        for (const char *key :
             {"common.app_name", "menu.connected", "menu.pause_sync", "menu.history_header", "menu.settings",
              "menu.quit", "menu.no_devices", "menu.waiting_peer", "menu.daemon_disconnected"})
            ownTexts.insert(qtTrId(key));

        for (const PanelState &state : panelStates()) {
            MenuBarView panel;
            panel.render(state.model());
            panel.show();
            QCoreApplication::processEvents();
            QCOMPARE(panel.width(), 320);
            for (HistoryRow *row : panel.findChildren<HistoryRow *>())
                QVERIFY(row->findChild<TextLabel *>()->width() >= 120); // the preview, beside any source
            for (QWidget *widget : panel.findChildren<QWidget *>()) {
                if (!widget->isVisible() || !widget->findChildren<QWidget *>().isEmpty())
                    continue;
                const QRect place(widget->mapTo(&panel, QPoint()), widget->size());
                QVERIFY2(panel.rect().contains(place), qPrintable(state.name + u": "_s + nameOf(widget)));
                auto *label = qobject_cast<TextLabel *>(widget);
                if (!label)
                    continue;
                QVERIFY2(label->height() >= label->heightForWidth(label->width()), qPrintable(label->text()));
                if (ownTexts.contains(label->text()) && !label->hasHeightForWidth())
                    QVERIFY2(label->width() >= label->sizeHint().width(), qPrintable(label->text()));
            }
        }
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
#include "menubar_view_test.moc"
