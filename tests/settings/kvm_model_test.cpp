#include "settings/KvmModel.h"

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

Change withMaster(const std::optional<QString> &id) {
    return [id](ServiceState &service) { service.settings->kvm_master_id = id; };
}

Change granted(const std::optional<bool> &is, const std::optional<bool> &needsRestart = {}) {
    return [=](ServiceState &service) {
        service.status->accessibility_granted = is;
        service.status->accessibility_needs_restart = needsRestart;
    };
}

std::optional<KvmModel> modelAfter(const Change &change, bool isTrusted = false) {
    ServiceState service = ready();
    change(service);
    return kvmModel(service, isTrusted, false);
}

} // namespace

class KvmModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCoreApplication::installTranslator(&texts_); }

    void tellsTheStatus() {
        const Change asIs = [](auto &) {};
        const Change isOff = [](auto &service) { service.settings->kvm_enabled = false; };
        const Change noStatus = [](auto &service) { service.status.reset(); };
        const Change alone = [](auto &service) {
            service.status->peers.clear();
            service.settings->kvm_master_id.reset();
        };
        const struct {
            Change change;
            bool isTrusted;
            QString text;
            Tint dot = Tint::orange;
        } rows[]{{asIs, false, u"ready"_s, Tint::green},
                 {isOff, false, {}},
                 {granted(false), true, u"need_ax"_s},
                 {granted({}), false, u"need_ax"_s},
                 {granted({}), true, u"ready"_s, Tint::green},
                 {noStatus, false, u"need_ax"_s},
                 {noStatus, true, u"waiting"_s},
                 {alone, false, u"waiting"_s},
                 {withMaster({}), false, u"no_master"_s},
                 {withMaster(u""_s), false, u"no_master"_s},
                 {withMaster(u"peer"_s), false, u"controlled[Peer now]"_s, Tint::green},
                 {withMaster(u"office"_s), false, u"master_off[Office]"_s},
                 {withMaster(u"0123456789abcdef0123"_s), false, u"master_off[01234567]"_s},
                 {withMaster(u"e\u0301x"_s), false, u"master_off[e\u0301x]"_s}};
        for (const auto &[change, isTrusted, text, dot] : rows) {
            const auto line = modelAfter(change, isTrusted)->statusLine;
            QCOMPARE(line ? line->text : QString(), text.isEmpty() ? text : u"kvm.status."_s + text);
            QVERIFY(!line || line->dot == dot);
        }
    }

    void namesTheMaster() {
        const std::pair<QString, QStringList> rows[]{
            {u"me"_s, {u"keyboard kvm.master.local_footer"_s}},
            {u""_s, {u"exclamationmark.triangle.fill kvm.master.none"_s}},
            {u"peer"_s,
             {u"keyboard kvm.master.peer_global[Peer once]"_s, u"command kvm.master.linux_hotkey"_s}},
            {u"office"_s, {u"keyboard kvm.master.peer_global[Office]"_s}},
            {u"gone"_s, {u"keyboard kvm.master.peer_global[?]"_s}}};
        for (const auto &[id, expected] : rows) {
            QStringList lines;
            const auto model = modelAfter(withMaster(id));
            for (const auto &line : model->masterFooter)
                lines.append(line.symbol + u' ' + line.text);
            QCOMPARE(lines, expected);
        }
    }

    void tellsOfAccessibility() {
        const struct {
            Change change;
            QString title;
            Tint tint;
            bool offersGrant;
        } rows[]{{granted(true), u"granted"_s, Tint::green, false},
                 {granted({}, false), u"not_granted"_s, Tint::orange, true},
                 {granted(true, true), u"needs_restart"_s, Tint::blue, false},
                 {granted(false, true), u"needs_restart"_s, Tint::blue, true}};
        for (const auto &[change, title, tint, offersGrant] : rows) {
            const auto shown = modelAfter(change)->accessibility;
            QCOMPARE(shown.title, u"kvm.accessibility."_s + title);
            QCOMPARE(shown.description, shown.title + u"_desc"_s);
            QVERIFY(shown.tint == tint);
            QCOMPARE(shown.offersGrant, offersGrant);
        }
    }

    void choosesOptions() {
        const struct {
            std::optional<qint64> delay;
            std::optional<double> sensitivity;
            int delayIndex, sensitivityIndex;
        } rows[]{{{}, {}, 0, 0}, {500, 3, 3, 4}, {251, 1.50001, -1, -1}};
        for (const auto &[delay, sensitivity, delayIndex, sensitivityIndex] : rows) {
            ServiceState service = ready();
            service.settings->kvm_switch_delay_ms = service.settings->kvm_corner_size = delay;
            service.settings->kvm_sensitivity = sensitivity;
            const auto model = kvmModel(service, false, false);
            const auto index = [](std::optional<std::size_t> chosen) {
                return chosen ? static_cast<int>(*chosen) : -1;
            };
            QCOMPARE(index(model->switchDelay), delayIndex);
            QCOMPARE(index(model->sensitivity), sensitivityIndex);
            QCOMPARE(index(model->cornerSize), delay ? -1 : 0);
        }
    }

    void listsTheScreens() {
        ServiceState service = ready();
        const auto canvas = kvmModel(service, false, false)->canvas;
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

private:
    KeyTexts texts_;
};

QTEST_GUILESS_MAIN(KvmModelTest)
#include "kvm_model_test.moc"
