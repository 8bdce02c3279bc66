#include "daemon/Fixture.h"
#include "settings/KvmStates.h"
#include "settings/KvmTab.h"
#include "settings/ScreenLayoutCanvas.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/Button.h"
#include "ui/ControlStyle.h"
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
    void initTestCase() { QApplication::setStyle(new ControlStyle); }
    void init();
    void cleanup();

    void controlsSaveOneFieldEach_data();
    void controlsSaveOneFieldEach();
    void failedSaveIsUndoneByTheNextPoll();
    void onlyTheSwitchTellsOfARestart();
    void savesNothingWithoutSettings();
    void buttonsAskForThePermission();
    void otherValuesSelectNothing();
    void samePublicationPaintsNothing();
    void everyStateFits_data();
    void everyStateFits();

private:
    void show();
    void answerSave(const QByteArray &body) { world_->service.answer("PUT /api/settings", {body}); }
    void publish(const QByteArray &settings) {
        world_->service.answer("GET /api/settings", {settings});
        QVERIFY(world_->pollAgain());
    }
    QByteArrayList saved() const;
    template <class Widget>
    Widget *control(const QString &name) const {
        return named<Widget>(*tab_, name);
    }

    std::unique_ptr<Fixture> world_;
    std::unique_ptr<KvmTab> tab_;
    int restarts_ = 0;
};

void KvmTabTest::init() {
    useLanguage("en"_L1);
    useAppearance({.reducedMotion = true}, 9);
    world_ = std::make_unique<Fixture>();
    world_->service.answerAll();
    restarts_ = 0;
}

void KvmTabTest::cleanup() {
    tab_.reset();
    world_.reset();
}

void KvmTabTest::show() {
    KvmServices services;
    services.isAccessibilityTrusted = [this] { return world_->platform.trusted; };
    services.openAccessibilitySettings = [this] { world_->platform.openAccessibilitySettings(); };
    services.restart = [this] { ++restarts_; };
    tab_ = std::make_unique<KvmTab>(*world_->daemon, services);
    for (const auto signal : {&Daemon::statusChanged, &Daemon::settingsChanged, &Daemon::devicesChanged})
        connect(world_->daemon.get(), signal, tab_.get(), &KvmTab::refresh);
    tab_->refresh();
    tab_->resize(560, 1200);
    openWindow(*tab_);
}

QByteArrayList KvmTabTest::saved() const {
    QByteArrayList bodies;
    for (const SeenRequest &request : world_->service.seen) {
        if (request.line == "PUT /api/settings")
            bodies << request.body;
    }
    return bodies;
}

void KvmTabTest::controlsSaveOneFieldEach_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("option"); // of a picker; -1 flips a switch
    QTest::addColumn<QString>("field");
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("enable") << u"Share keyboard and mouse"_s << -1 << u"kvm_enabled"_s << QByteArray("true");
    QTest::newRow("swap") << u"Swap ⌘ and Ctrl"_s << -1 << u"kvm_swap_modifiers"_s << QByteArray("true");
    QTest::newRow("delay") << u"Switch delay"_s << 3 << u"kvm_switch_delay_ms"_s << QByteArray("500");
    QTest::newRow("no delay") << u"Switch delay"_s << 0 << u"kvm_switch_delay_ms"_s << QByteArray("0");
    QTest::newRow("corners") << u"Dead corners"_s << 2 << u"kvm_corner_size"_s << QByteArray("32");
    QTest::newRow("no corners") << u"Dead corners"_s << 0 << u"kvm_corner_size"_s << QByteArray("0");
    QTest::newRow("speed") << u"Pointer speed"_s << 4 << u"kvm_sensitivity"_s << QByteArray("3.0");
    QTest::newRow("automatic speed") << u"Pointer speed"_s << 0 << u"kvm_sensitivity"_s << QByteArray("0.0");
    QTest::newRow("master") << u"canvas"_s << 0 << u"kvm_master_id"_s << QByteArray(R"("d2")");
    QTest::newRow("layout") << u"canvas"_s << 1 << u"kvm_layout"_s
                            << QByteArray(R"({"d2":{"x":0.0,"y":0.5,"w":2.0,"h":1.0}})");
}

void KvmTabTest::controlsSaveOneFieldEach() {
    QFETCH(const QString, name);
    QFETCH(const int, option);
    QFETCH(const QString, field);
    QFETCH(const QByteArray, value);
    answerSave(R"({"ok":true})");
    QVERIFY(world_->startAndPoll());
    show();
    auto *canvas = tab_->findChild<ScreenLayoutCanvas *>();
    if (name == u"canvas"_s && option == 0)
        Q_EMIT canvas->masterPicked(u"d2"_s);
    else if (name == u"canvas"_s)
        Q_EMIT canvas->arranged({{u"d2"_s, {0, 0.5, 2, 1}}});
    else if (option < 0)
        QTest::mouseClick(control<Switch>(name), Qt::LeftButton);
    else
        Q_EMIT control<MenuPicker>(name)->picked(option);

    QTRY_COMPARE(saved().size(), 1);
    QVERIFY(world_->refreshed());
    QJsonObject wanted = object(settingsJson);
    wanted[field] = object("{\"v\":" + value + '}')[u"v"_s];
    QCOMPARE(object(saved().front()), wanted);
    // Digits that a double does not hold travel back as they came.
    QVERIFY(saved().front().contains(R"("kvm_layout_ver":9007199254740993)"));
    if (field != u"kvm_layout"_s)
        QVERIFY(saved().front().contains(QByteArray("\"") + field.toUtf8() + "\":" + value));
}

void KvmTabTest::failedSaveIsUndoneByTheNextPoll() {
    world_->service.answer("PUT /api/settings", {"{}", 500});
    QVERIFY(world_->startAndPoll());
    show();
    auto *enable = control<Switch>(u"Share keyboard and mouse"_s);
    auto *delay = control<MenuPicker>(u"Switch delay"_s);
    QTest::mouseClick(enable, Qt::LeftButton);
    Q_EMIT delay->picked(1);
    QTRY_COMPARE(saved().size(), 2);
    QVERIFY(world_->pollAgain());
    QVERIFY(!enable->isOn());
    QCOMPARE(delay->accessibleText(), u"250 ms"_s);
}

void KvmTabTest::onlyTheSwitchTellsOfARestart() {
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
    flip(enable, R"({"ok":true,"need_restart":false})");
    QVERIFY(!textsOf(*tab_).contains(hint));
    flip(enable, R"({"ok":false,"need_restart":true})");
    QVERIFY(textsOf(*tab_).contains(hint));
    flip(enable, R"({"ok":true})");
    QVERIFY(textsOf(*tab_).contains(hint));
    show(); // a tab built afresh
    QVERIFY(!textsOf(*tab_).contains(hint));
}

void KvmTabTest::savesNothingWithoutSettings() {
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

void KvmTabTest::buttonsAskForThePermission() {
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
    control<Button>(u"Restart"_s)->click();
    QCOMPARE(restarts_, 1);

    // The system decides when the service does not say; the row keeps its height, and the focus its place.
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

void KvmTabTest::otherValuesSelectNothing() {
    QVERIFY(world_->startAndPoll()); // with a sensitivity of 1.25
    show();
    auto *speed = control<MenuPicker>(u"Pointer speed"_s);
    QCOMPARE(speed->accessibleText(), QString());
    QCOMPARE(control<MenuPicker>(u"Dead corners"_s)->accessibleText(), u"16 px"_s);
    publish(QByteArray(settingsJson).replace(R"("kvm_sensitivity":1.25,)", ""));
    QCOMPARE(speed->accessibleText(), u"Automatic"_s);
    QCOMPARE(saved().size(), 0);
}

void KvmTabTest::samePublicationPaintsNothing() {
    QVERIFY(world_->startAndPoll());
    show();
    QTest::qWait(100);
    PaintWatch watch;
    QVERIFY(world_->pollAgain());
    QCOMPARE(watch.painted(), QSet<QWidget *>());
}

void KvmTabTest::everyStateFits_data() {
    QTest::addColumn<QString>("language");
    QTest::addColumn<double>("points");
    for (const QString &language : {u"en"_s, u"zh_Hans"_s}) {
        for (const double points : {9.0, 16.0})
            QTest::addRow("%s at %.0f", qPrintable(language), points) << language << points;
    }
}

void KvmTabTest::everyStateFits() {
    QFETCH(const QString, language);
    QFETCH(const double, points);
    useLanguage(QLatin1String(language.toLatin1()));
    useAppearance({.reducedMotion = true}, points);
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

int main(int argc, char **argv) {
    useTestFonts();
    QApplication app(argc, argv);
    KvmTabTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "kvm_tab_test.moc"
