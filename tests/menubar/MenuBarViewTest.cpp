#include "menubar/MenuBarView.h"
#include "menubar/HistoryRow.h"
#include "menubar/MenuRow.h"
#include "support/ServiceStates.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

class MenuBarViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        panel_ = std::make_unique<MenuBarView>();
        render(transfer_);
        openWindow(*panel_);
    }
    void cleanup() {
        panel_.reset();
        useAppearance({}, 9);
    }

    void onlyWhatChangedIsPainted() {
        PaintWatch watch;
        render(transfer_);
        QCOMPARE(watch.painted(), QStringList());
        ServiceState service = transfer_;
        service.status->file_xfer->sent = 1536;
        render(service);
        auto *transfer = named<MenuRow>(*panel_, u"report.pdf · 75%"_s);
        QCOMPARE(watch.painted(transfer), QStringList());
        QVERIFY(watch.firstSize(transfer));
    }

    void rowsStayWithTheirValues() {
        auto *chosen = named<HistoryRow>(*panel_, u"3 files, Studio Mac"_s);
        auto *peer = named<MenuRow>(*panel_, u"Office Linux, Connected"_s);
        chosen->setFocus(Qt::TabFocusReason);
        ServiceState service = transfer_;
        std::rotate(service.history.begin(), service.history.begin() + 2, service.history.end());
        service.history.insert(service.history.begin(), {9, {}, u"new"_s, {}, {}});
        std::swap(service.status->peers[0], service.status->peers[1]);
        service.status->peers[0].name = u"Renamed"_s;
        render(service);
        settle();
        const QStringList history = namesOf<HistoryRow>(*panel_);
        QCOMPARE(history.first(2), QStringList({u"new"_s, u"3 files, Studio Mac"_s}));
        QCOMPARE(nameOf(chosen), history[1]);
        QVERIFY(chosen->hasFocus());
        QCOMPARE(namesOf<MenuRow>(*panel_).first(), u"Renamed, Connected"_s);
        QCOMPARE(nameOf(peer), u"Renamed, Connected"_s);
        QTest::keyClick(panel_.get(), Qt::Key_Tab);
        QCOMPARE(nameOf(panel_->focusWidget()), history[2]);
    }

    void highlightStaysUnderThePointer() {
        const QList<HistoryRow *> rows = seen<HistoryRow>(*panel_);
        QCursor::setPos(rows[2]->mapToGlobal(rows[2]->rect().center()));
        QTest::mouseMove(panel_->windowHandle(), rows[2]->mapTo(panel_.get(), rows[2]->rect().center()));
        QTRY_VERIFY(rows[2]->underMouse());
        const QColor plain = panel_->palette().color(QPalette::Dark);
        const QColor lit = rows[2]->palette().color(QPalette::Dark);
        QVERIFY(lit != plain);
        ServiceState service = transfer_;
        std::swap(service.history[1], service.history[2]);
        render(service);
        QVERIFY(!rows[2]->underMouse() && rows[1]->underMouse());
        QCOMPARE(rows[1]->palette().color(QPalette::Dark), lit);
        QCOMPARE(rows[2]->palette().color(QPalette::Dark), plain);
    }

    void goneRowsLeave() {
        const int full = panel_->height();
        // Two entries that claim to be the same one are two rows.
        ServiceState twins = transfer_;
        twins.history = {{1, {}, u"a"_s, {}, {}}, {1, {}, u"b"_s, {}, {}}};
        render(twins);
        settle();
        QCOMPARE(namesOf<HistoryRow>(*panel_), QStringList({u"a"_s, u"b"_s}));
        render({});
        QCOMPARE(namesOf<HistoryRow>(*panel_), QStringList());
        QVERIFY(panel_->height() < full);
    }

    void arrowsMoveAsTheTabKeyDoes() {
        const auto focusAfter = [](const QList<Qt::Key> &keys) {
            for (const Qt::Key key : keys)
                QTest::keyClick(QApplication::focusWidget(), key);
            return nameOf(QApplication::focusWidget());
        };
        const QString second = focusAfter({Qt::Key_Tab, Qt::Key_Tab});
        QCOMPARE(focusAfter({Qt::Key_Down, Qt::Key_Up}), second);
        QCOMPARE(focusAfter({Qt::Key_Up, Qt::Key_Tab}), second);
    }

    void previewsHaveRoomBesideAnySource() {
        useAppearance({}, 16);
        render(crowdedState());
        settle();
        for (const HistoryRow *row : seen<HistoryRow>(*panel_))
            QVERIFY(row->findChild<TextLabel *>()->width() >= 120);
    }

private:
    void render(const ServiceState &service) {
        UpdateState update;
        update.available.emplace().version = u"1.5.0"_s;
        panel_->render(menuBarModel(service, update));
    }

    const ServiceState transfer_ = scenario("transfer");
    std::unique_ptr<MenuBarView> panel_;
};

int main(int argc, char **argv) {
    return runViewTest<MenuBarViewTest>(argc, argv);
}
#include "MenuBarViewTest.moc"
