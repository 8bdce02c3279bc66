#include "settings/KvmModel.h"
#include "settings/SettingsEdit.h"

#include "KeyTexts.h"

#include <QTest>

using namespace quorbit;
using namespace Qt::StringLiterals;

namespace {

/// This computer, the connected peer "peer" and "office", which is paired and not connected.
ServiceState ready() {
    ServiceState service;
    service.settings = DaemonSettings{};
    service.settings->kvm_enabled = true;
    service.settings->kvm_master_id = u"me"_s;
    service.status = Status{};
    service.status->device_id = u"me"_s;
    service.status->device_name = u"Studio"_s;
    service.status->accessibility_granted = true;
    service.status->peers = {{u"peer"_s, u"Peer now"_s}};
    service.devices = {{.device_id = u"peer"_s, .name = u"Peer once"_s, .platform = u"Linux"_s},
                       {.device_id = u"office"_s, .name = u"Office"_s, .online = true}};
    return service;
}

/// Changes a state to the one that a row is about.
using Change = std::function<void(ServiceState &)>;

ServiceState changed(const Change &change) {
    ServiceState service = ready();
    change(service);
    return service;
}

Change withMaster(const QString &id) {
    return [id](ServiceState &service) { service.settings->kvm_master_id = id; };
}

} // namespace

Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(Tint)

class KvmModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCoreApplication::installTranslator(&texts_); }

    void tellsTheStatus_data() {
        QTest::addColumn<Change>("change");
        QTest::addColumn<bool>("isTrusted");
        QTest::addColumn<QString>("text");
        QTest::addColumn<Tint>("dot");
        const auto row = [](const char *name, const Change &change, const QString &text,
                            Tint dot = Tint::orange, bool isTrusted = false) {
            QTest::newRow(name) << change << isTrusted << text << dot;
        };
        row(
            "ready", [](auto &) {}, u"kvm.status.ready"_s, Tint::green);
        row("off", [](auto &s) { s.settings->kvm_enabled = false; }, {});
        row(
            "not granted", [](auto &s) { s.status->accessibility_granted = false; }, u"kvm.status.need_ax"_s,
            Tint::orange, true);
        row(
            "not said, not trusted", [](auto &s) { s.status->accessibility_granted.reset(); },
            u"kvm.status.need_ax"_s);
        row(
            "not said, trusted", [](auto &s) { s.status->accessibility_granted.reset(); },
            u"kvm.status.ready"_s, Tint::green, true);
        row(
            "no status, not trusted", [](auto &s) { s.status.reset(); }, u"kvm.status.need_ax"_s);
        row(
            "no status, trusted", [](auto &s) { s.status.reset(); }, u"kvm.status.waiting"_s, Tint::orange,
            true);
        row(
            "no peers come before no master",
            [](auto &s) {
                s.status->peers.clear();
                s.settings->kvm_master_id.reset();
            },
            u"kvm.status.waiting"_s);
        row(
            "no master", [](auto &s) { s.settings->kvm_master_id.reset(); }, u"kvm.status.no_master"_s);
        row("empty master", withMaster({}), u"kvm.status.no_master"_s);
        row("connected master", withMaster(u"peer"_s), u"kvm.status.controlled[Peer now]"_s, Tint::green);
        row("paired master", withMaster(u"office"_s), u"kvm.status.master_off[Office]"_s);
        row("unknown master", withMaster(u"0123456789abcdef0123"_s), u"kvm.status.master_off[01234567]"_s);
        row("unknown master of few characters", withMaster(u"e\u0301x"_s),
            u"kvm.status.master_off[e\u0301x]"_s);
    }
    void tellsTheStatus() {
        QFETCH(Change, change);
        QFETCH(bool, isTrusted);
        QFETCH(QString, text);
        QFETCH(Tint, dot);
        const auto model = kvmModel(changed(change), isTrusted, false);
        QCOMPARE(model->statusLine.has_value(), !text.isEmpty());
        if (model->statusLine) {
            QCOMPARE(model->statusLine->text, text);
            QVERIFY(model->statusLine->dot == dot);
        }
    }

    void namesTheMaster_data() {
        QTest::addColumn<Change>("change");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("this computer")
            << Change([](auto &) {}) << QStringList{u"keyboard kvm.master.local_footer"_s};
        QTest::newRow("none") << withMaster({})
                              << QStringList{u"exclamationmark.triangle.fill kvm.master.none"_s};
        QTest::newRow("a Linux peer") << withMaster(u"peer"_s)
                                      << QStringList{u"keyboard kvm.master.peer_global[Peer once]"_s,
                                                     u"command kvm.master.linux_hotkey"_s};
        QTest::newRow("untold platform")
            << withMaster(u"office"_s) << QStringList{u"keyboard kvm.master.peer_global[Office]"_s};
        QTest::newRow("unknown") << withMaster(u"gone"_s)
                                 << QStringList{u"keyboard kvm.master.peer_global[?]"_s};
    }
    void namesTheMaster() {
        QFETCH(Change, change);
        QStringList lines;
        const auto model = kvmModel(changed(change), false, false);
        for (const auto &line : model->masterFooter)
            lines.append(line.symbol + u' ' + line.text);
        QTEST(lines, "lines");
    }

    void tellsOfAccessibility_data() {
        QTest::addColumn<std::optional<bool>>("granted");
        QTest::addColumn<std::optional<bool>>("needsRestart");
        QTest::addColumn<QString>("title");
        QTest::addColumn<Tint>("tint");
        QTest::addColumn<bool>("offersGrant");
        using Flag = std::optional<bool>;
        QTest::newRow("granted") << Flag(true) << Flag() << u"kvm.accessibility.granted"_s << Tint::green
                                 << false;
        QTest::newRow("not granted") << Flag() << Flag(false) << u"kvm.accessibility.not_granted"_s
                                     << Tint::orange << true;
        QTest::newRow("granted, to restart")
            << Flag(true) << Flag(true) << u"kvm.accessibility.needs_restart"_s << Tint::blue << false;
        QTest::newRow("not granted, to restart")
            << Flag(false) << Flag(true) << u"kvm.accessibility.needs_restart"_s << Tint::blue << true;
    }
    void tellsOfAccessibility() {
        ServiceState service = ready();
        QFETCH(std::optional<bool>, granted);
        QFETCH(std::optional<bool>, needsRestart);
        QFETCH(QString, title);
        QFETCH(Tint, tint);
        service.status->accessibility_granted = granted;
        service.status->accessibility_needs_restart = needsRestart;
        const auto shown = kvmModel(service, false, false)->accessibility;
        QCOMPARE(shown.title, title);
        QCOMPARE(shown.description, title + u"_desc"_s);
        QVERIFY(shown.tint == tint);
        QTEST(shown.offersGrant, "offersGrant");
    }

    void choosesOptions_data() {
        QTest::addColumn<std::optional<qint64>>("delay");
        QTest::addColumn<std::optional<double>>("sensitivity");
        QTest::addColumn<int>("delayIndex");
        QTest::addColumn<int>("sensitivityIndex");
        using Delay = std::optional<qint64>;
        using Factor = std::optional<double>;
        QTest::newRow("absent") << Delay() << Factor() << 0 << 0;
        QTest::newRow("off") << Delay(0) << Factor(0) << 0 << 0;
        QTest::newRow("known") << Delay(250) << Factor(1.5) << 2 << 2;
        QTest::newRow("last") << Delay(500) << Factor(3) << 3 << 4;
        QTest::newRow("foreign") << Delay(251) << Factor(1.50001) << -1 << -1;
    }
    void choosesOptions() {
        ServiceState service = ready();
        QFETCH(std::optional<qint64>, delay);
        QFETCH(std::optional<double>, sensitivity);
        service.settings->kvm_switch_delay_ms = delay;
        service.settings->kvm_corner_size = delay;
        service.settings->kvm_sensitivity = sensitivity;
        const auto model = kvmModel(service, false, false);
        const auto index = [](std::optional<std::size_t> chosen) {
            return chosen ? static_cast<int>(*chosen) : -1;
        };
        QTEST(index(model->switchDelay), "delayIndex");
        QTEST(index(model->sensitivity), "sensitivityIndex");
        QCOMPARE(index(model->cornerSize), delay.value_or(0) == 0 ? 0 : -1);
        QCOMPARE(sensitivityOptions()[2].label, u"1.5×"_s);
    }

    void listsTheScreens() {
        ServiceState service = ready();
        service.settings->kvm_layout = ScreenLayout{{u"peer"_s, {1, 2, 3, 4}}};
        const auto canvas = kvmModel(service, false, false)->canvas;
        QCOMPARE(canvas->masterID, u"me"_s);
        QVERIFY(canvas->desk.layout == *service.settings->kvm_layout);
        QVERIFY(canvas->desk.devices ==
                (std::vector<DeviceCard>{{u"me"_s, u"Studio"_s, u"darwin"_s, true},
                                         {u"peer"_s, u"Peer once"_s, u"Linux"_s, true},
                                         {u"office"_s, u"Office"_s, {}, false}}));
        service.status.reset();
        const auto unknown = kvmModel(service, false, false)->canvas;
        QVERIFY(unknown->desk.selfID.isEmpty());
        QVERIFY(!unknown->desk.devices[0].online && unknown->desk.devices.size() == 2);
        service.devices.pop_back();
        QVERIFY(!kvmModel(service, false, false)->canvas);
        service.settings.reset();
        QVERIFY(!kvmModel(service, true, true));
    }

    void editsOneField() {
        ServiceState service = ready();
        service.settings->kvm_layout_ver = 7;
        DaemonSettings expected = *service.settings;
        expected.kvm_switch_delay_ms = 0;
        QVERIFY(edited(service.settings, &DaemonSettings::kvm_switch_delay_ms, 0) == expected);
        QVERIFY(!edited(std::nullopt, &DaemonSettings::kvm_enabled, true));
    }

private:
    KeyTexts texts_;
};

QTEST_GUILESS_MAIN(KvmModelTest)
#include "kvm_model_test.moc"
