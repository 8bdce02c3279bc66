#include "daemon/Fixture.h"
#include "settings/KvmStates.h"
#include "settings/KvmTab.h"
#include "settings/ScreenLayoutCanvas.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/Button.h"
#include "ui/MenuPicker.h"
#include "ui/Switch.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

namespace {

QJsonObject object(const QByteArray &json) {
    return QJsonDocument::fromJson(json).object();
}

} // namespace

class KvmTabTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        useLanguage("en"_L1);
        useAppearance({.reducedMotion = true}, 9);
        world_ = std::make_unique<Fixture>();
        world_->service.answerAll();
    }

    void cleanup() {
        tab_.reset();
        world_.reset();
    }

    void savesTheOtherFieldsAsTheyCame() {
        answerSave(R"({"ok":true})");
        QVERIFY(world_->startAndPoll());
        show();
        Q_EMIT control<MenuPicker>(u"Pointer speed"_s)->picked(0);
        Q_EMIT tab_->findChild<ScreenLayoutCanvas *>()->arranged({{u"d2"_s, {0, 0.5, 2, 1}}});
        QTRY_COMPARE(saved().size(), 2);
        QJsonObject faster = object(settingsJson);
        faster[u"kvm_sensitivity"_s] = 0.0;
        QCOMPARE(object(saved()[0]), faster);
        QJsonObject arranged = object(settingsJson);
        arranged[u"kvm_layout"_s] = object(R"({"d2":{"x":0.0,"y":0.5,"w":2.0,"h":1.0}})");
        QCOMPARE(object(saved()[1]), arranged);
        // Digits that a double does not hold travel back as they came.
        QVERIFY(saved()[0].contains(R"("kvm_sensitivity":0.0)"));
        QVERIFY(saved()[1].contains(R"("kvm_layout_ver":9007199254740993)"));
    }

    void failedSaveIsUndoneByTheNextPoll() {
        world_->service.answer("PUT /api/settings", {"{}", 500});
        QVERIFY(world_->startAndPoll());
        show();
        auto *delay = control<MenuPicker>(u"Switch delay"_s);
        Q_EMIT delay->picked(1);
        QTRY_COMPARE(saved().size(), 1);
        QVERIFY(world_->pollAgain());
        QCOMPARE(delay->accessibleText(), u"250 ms"_s);
    }

    void onlyTheSwitchTellsOfARestart() {
        const QString hint = u"This takes effect once the Quorbit service restarts."_s;
        auto flip = [this, count = 0](const QString &name, const QByteArray &answer) mutable {
            answerSave(answer);
            QTest::mouseClick(control<Switch>(name), Qt::LeftButton);
            ++count;
            QTRY_COMPARE(saved().size(), count);
            QTest::qWait(100); // for the refresh that follows
        };
        const QString enable = u"Share keyboard and mouse"_s;
        QVERIFY(world_->startAndPoll());
        show();
        flip(u"Swap ⌘ and Ctrl"_s, R"({"ok":true,"need_restart":true})");
        flip(enable, R"({"ok":true})");
        QVERIFY(!textsOf(*tab_).contains(hint));
        flip(enable, R"({"ok":false,"need_restart":true})");
        QVERIFY(textsOf(*tab_).contains(hint));
        flip(enable, R"({"ok":true})");
        QVERIFY(textsOf(*tab_).contains(hint));
        show(); // a tab built afresh
        QVERIFY(!textsOf(*tab_).contains(hint));
    }

    void savesNothingWithoutSettings() {
        world_->service.answer("GET /api/settings", {"{}"});
        QVERIFY(world_->startAndPoll());
        show();
        QCOMPARE(textsOf(*tab_), QStringList{u"Loading…"_s});
        for (auto *hidden : tab_->findChildren<Switch *>())
            Q_EMIT hidden->flipped(true);
        for (auto *hidden : tab_->findChildren<MenuPicker *>())
            Q_EMIT hidden->picked(0);
        QTest::qWait(60);
        QCOMPARE(saved().size(), 0);
        publish(settingsJson);
        QVERIFY(control<Switch>(u"Share keyboard and mouse"_s));
    }

    void buttonsAskForThePermission() {
        const QByteArray line = "POST /api/accessibility/prompt";
        const QByteArray granted = R"("accessibility_granted":true)";
        const QByteArray refused = R"("accessibility_granted":false)";
        world_->service.answer("GET /api/status", {QByteArray(statusJson).replace(granted, refused)});
        world_->service.answer(line, {{}, 500, {}, Answer::hang});
        QVERIFY(world_->startAndPoll());
        show();
        auto *grant = control<Button>(u"Allow…"_s);
        grant->setFocus();
        QTest::keyClick(grant, Qt::Key_Space);
        // The page opens although the service does not answer.
        QCOMPARE(world_->platform.accessibilitySettingsOpened, 1);
        QTRY_COMPARE(world_->service.count(line), 1);
        QVERIFY(control<Button>(u"Restart"_s));

        // The system decides when the service does not say; the row keeps its height, and the focus its
        // place.
        const auto row = [this] { return control<QWidget>(u"Permission"_s)->height(); };
        const int height = row();
        world_->service.answer("GET /api/status", {QByteArray(statusJson).replace(granted + ',', "")});
        QVERIFY(world_->pollAgain());
        QTest::qWait(60);
        QVERIFY(textsOf(*tab_).contains(u"Accessibility is allowed"_s));
        QVERIFY(!control<Button>(u"Allow…"_s) && !control<Button>(u"Restart"_s));
        QCOMPARE(row(), height);
        QVERIFY(!qobject_cast<QAbstractButton *>(QApplication::focusWidget()));
        world_->platform.trusted = false;
        QVERIFY(world_->pollAgain());
        QVERIFY(control<Button>(u"Allow…"_s));
    }

    void otherValuesSelectNothing() {
        QVERIFY(world_->startAndPoll()); // with a sensitivity of 1.25
        show();
        PaintWatch watch;
        QVERIFY(world_->pollAgain());
        QCOMPARE(watch.painted(), QSet<QWidget *>()); // by the same publication
        auto *speed = control<MenuPicker>(u"Pointer speed"_s);
        QCOMPARE(speed->accessibleText(), QString());
        publish(QByteArray(settingsJson).replace(R"("kvm_sensitivity":1.25,)", ""));
        QCOMPARE(speed->accessibleText(), u"Automatic"_s);
        QCOMPARE(saved().size(), 0);
    }

    void everyStateFits_data() { addLooks({9.0, 16.0}); }
    void everyStateFits() {
        useLook();
        show();
        tab_->resize(560, 460);
        for (const KvmState &state : kvmStates()) {
            tab_->render(state.model());
            const auto misfit = [&] { return firstCut(*tab_); };
            QVERIFY2(QTest::qWaitFor([&] { return misfit().isEmpty(); }, 1000),
                     qPrintable(state.name + u": "_s + misfit()));
            for (QWidget *widget : tab_->findChildren<QWidget *>()) {
                const int right = widget->mapTo(tab_.get(), QPoint(widget->width(), 0)).x();
                QVERIFY2(!widget->isVisible() || right <= 560, qPrintable(state.name));
            }
        }
    }

private:
    void show() {
        KvmServices services;
        services.isAccessibilityTrusted = [this] { return world_->platform.trusted; };
        services.openAccessibilitySettings = [this] { world_->platform.openAccessibilitySettings(); };
        tab_ = std::make_unique<KvmTab>(*world_->daemon, services);
        for (const auto signal : {&Daemon::statusChanged, &Daemon::settingsChanged, &Daemon::devicesChanged})
            connect(world_->daemon.get(), signal, tab_.get(), &KvmTab::refresh);
        tab_->refresh();
        tab_->resize(560, 1200);
        openWindow(*tab_);
    }

    void answerSave(const QByteArray &body) { world_->service.answer("PUT /api/settings", {body}); }
    void publish(const QByteArray &settings) {
        world_->service.answer("GET /api/settings", {settings});
        QVERIFY(world_->pollAgain());
    }
    QByteArrayList saved() const {
        QByteArrayList bodies;
        for (const SeenRequest &request : world_->service.seen) {
            if (request.line == "PUT /api/settings")
                bodies << request.body;
        }
        return bodies;
    }

    template <class Widget>
    Widget *control(const QString &name) const {
        return named<Widget>(*tab_, name);
    }

    std::unique_ptr<Fixture> world_;
    std::unique_ptr<KvmTab> tab_;
};

int main(int argc, char **argv) {
    return runViewTest<KvmTabTest>(argc, argv);
}
#include "kvm_tab_test.moc"
