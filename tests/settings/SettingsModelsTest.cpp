#include "settings/about/AboutModel.h"
#include "settings/devices/DevicesModel.h"
#include "settings/kvm/KvmModel.h"
#include "settings/overview/OverviewModel.h"
#include "settings/sync/SyncModel.h"
#include "wording/TimeFormats.h"

#include <QTest>
#include <QTranslator>

using namespace quorbit;
using namespace Qt::StringLiterals;

namespace {

/// Shows every text as its key, and what is filled into it in brackets: "devices.unpair.message[Desk]".
class KeyTexts : public QTranslator {
public:
    bool isEmpty() const override { return false; }

    QString translate(const char * /*context*/, const char *key, const char * /*disambiguation*/,
                      int /*n*/) const override {
        static const QStringList filled{u"update.available.title"_s, u"update.uptodate"_s,
                                        u"devices.unpair.message"_s, u"kvm.status.controlled"_s,
                                        u"kvm.status.master_off"_s,  u"kvm.master.peer_global"_s};
        const QString text = QString::fromUtf8(key);
        return filled.contains(text) ? text + u"[%1]"_s : text;
    }
};

constexpr qint64 now = 1'795'340'460'000;

ServiceState serviceCalled(const std::optional<QString> &name) {
    ServiceState service;
    if (name) {
        service.status = Status{};
        service.status->device_name = *name;
    }
    return service;
}

ServiceState serviceWith(const QStringList &previews) {
    ServiceState service;
    service.settings = DaemonSettings{};
    for (const QString &preview : previews)
        service.history.push_back({.id = static_cast<qint64>(service.history.size()), .preview = preview});
    return service;
}

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
    service.status->peers = {{u"peer"_s, u"Peer now"_s}, {u"unnamed"_s, u"\u200B "_s}};
    service.devices = {{.device_id = u"peer"_s, .name = u"Peer once"_s, .platform = u"Linux"_s},
                       {.device_id = u"office"_s, .name = u"Office"_s, .online = true},
                       {.device_id = u"unnamed"_s, .name = u"\u3164"_s}};
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

class SettingsModelsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCoreApplication::installTranslator(&texts_); }

    void fillsTheNameField() {
        using Names = std::vector<std::optional<QString>>;
        const struct {
            Names reported;               ///< none: no status
            std::optional<QString> typed; ///< replaces the text once it was shown
            QString text;
        } rows[]{{{std::nullopt, u"A"_s}, {}, u"A"_s},
                 {{std::nullopt, u"A"_s}, u"mine"_s, u"mine"_s},
                 {{u"A"_s, u"B"_s}, {}, u"A"_s},
                 {{u"A"_s, u"A"_s, u"B"_s}, u""_s, u"B"_s},
                 {{u"A"_s, u"A"_s}, u""_s, u""_s}};
        for (const auto &[reported, typed, text] : rows) {
            NameDraft draft = shownNameDraft(serviceCalled(reported.front()));
            draft.text = typed.value_or(draft.text);
            for (std::size_t poll = 1; poll < reported.size(); ++poll)
                draft = followedNameDraft(draft, serviceCalled(reported[poll]));
            QCOMPARE(draft.text, text);
        }
    }

    void savesOnlyAnotherName() {
        ServiceState service;
        QVERIFY(!committedName(service, u"New"_s));
        service.settings = DaemonSettings{};
        service.settings->device_name = u"Old"_s;
        QVERIFY(!committedName(service, u"Old"_s) && !committedName(service, {}) &&
                !committedName(service, u" \u3164"_s));
        QCOMPARE(committedName(service, u" old "_s)->device_name, u" old "_s);
    }

    void searchesTheHistory() {
        const std::tuple<QString, QString, bool> rows[]{{u"\u3000\u00A0\tFoo\u2003"_s, u"my foo bar"_s, true},
                                                        {u"a  b"_s, u"a b"_s, false},
                                                        {u"foo\n"_s, u"foo"_s, false},
                                                        {u" \t"_s, QString(), true},
                                                        {u"ÄRGER Ж"_s, u"ärger ж"_s, true},
                                                        {u"\u00E9"_s, u"caf\u0065\u0301"_s, true}};
        for (const auto &[search, preview, isFound] : rows) {
            HistoryFilter filter;
            const auto model = syncModel(serviceWith({preview}), search, filter);
            QVERIFY2(model->history->rows.empty() != isFound, qPrintable(search));
        }
    }

    void searchFollowsTheHistory() {
        HistoryFilter filter;
        const auto found = [&filter](const QStringList &previews) {
            return filter.matches(serviceWith(previews).history, u"foo"_s);
        };
        const auto indices = [](std::initializer_list<std::size_t> all) { return std::vector(all); };
        QVERIFY(found({u"foo"_s, u"bar"_s}) == indices({0}));
        QVERIFY(found({u"bar"_s, u"foo"_s, u"foo 2"_s}) == indices({1, 2}));
        QVERIFY(found({u"foo"_s}) == indices({0}));
        QVERIFY(found({}).empty());
        std::vector<HistoryEntry> twins(2);
        twins[1].preview = u"foo"_s;
        twins[0].source = u"foo"_s;
        QVERIFY(filter.matches(twins, u"foo"_s) == indices({1}));
    }

    void describesDevices() {
        const struct {
            Device device;
            QString badge;
            TextColor color;
            std::optional<qint64> holds = {}; ///< milliseconds
        } rows[]{{{.online = true, .last_seen = 5}, u"devices.online"_s, TextColor::green},
                 {{.online = false}, u"devices.offline"_s, TextColor::secondary},
                 {{.last_seen = 0}, u"devices.offline"_s, TextColor::secondary},
                 {{.last_seen = now - 50}, u"devices.lastseen now"_s, TextColor::secondary, 950}};
        for (const auto &[device, badge, color, holds] : rows) {
            ServiceState service;
            service.devices = {device};
            const auto row = devicesModel(service, {}, now, formats_).rows.front();
            QCOMPARE(row.badge, badge);
            QVERIFY(row.badgeColor == color);
            const auto shown = devicesModelHoldsFor(service, now);
            QCOMPARE(shown ? std::optional<qint64>(shown->count()) : std::nullopt, holds);
        }
        ServiceState two;
        two.devices = {
            {.platform = u"darwin"_s, .fingerprint = u"sha256:0123456789abcdef"_s, .last_seen = now - 5050},
            {.platform = u"Darwin"_s, .last_seen = now - 50}};
        const auto shown = devicesModel(two, {}, now, formats_).rows;
        QCOMPARE(shown[0].fingerprint, u"devices.fp 0123456789ab…"_s);
        QVERIFY(shown[0].symbol == u"laptopcomputer"_s && shown[1].symbol == u"pc"_s);
        QVERIFY(devicesModelHoldsFor(two, now) == std::chrono::milliseconds(950)); // the sooner
    }

    /// Each by itself, so that writing from right to left moves nothing of the sentence around it.
    void textsFromOutsideAreMadeFit() {
        const QString rough = u"%1 א\n\u202Eb"_s;
        const QString fit = u"\u2068%1 א b\u2069"_s;
        ServiceState service = serviceCalled(rough);
        service.status->device_id = service.status->last_activity.emplace(rough);
        service.status->peers = {{rough, rough}, {u"p"_s, u"\u200B\n"_s}};
        service.devices = {{.device_id = u"a"_s, .name = rough, .fingerprint = rough}, {.name = u"\u3164"_s}};
        const OverviewModel overview = overviewModel(service, {});
        const DevicesModel devices = devicesModel(service, service.devices[0], now, formats_);
        const DevicesModel nameless = devicesModel(service, service.devices[1], now, formats_);
        AvailableUpdate update;
        update.version = update.releaseNotesText.emplace(rough);
        const AboutModel about =
            aboutModel({.available = update, .state = check::Available{update}}, {}, formats_);
        const std::pair<QString, QString> rows[]{
            {overview.identity->deviceId, fit},
            {overview.peers[0].shownId, fit},
            {overview.peers[0].label, fit},
            {overview.peers[1].label, u"common.unnamed"_s},
            {overview.lastActivity.value(), fit},
            {devices.rows[0].name, fit},
            {nameless.rows[1].name, u"common.unnamed"_s},
            {nameless.confirmation->message, u"devices.unpair.message[common.unnamed]"_s},
            {devices.rows[0].fingerprint, u"devices.fp "_s + fit + u'…'},
            {devices.confirmation->message, u"devices.unpair.message["_s + fit + u']'},
            {about.banner->title, u"update.available.title["_s + fit + u']'},
            {about.checkStatus.text, u"update.available.title["_s + fit + u']'},
            {about.banner->notes, u"\u2068%1 א\u2069\nb"_s}};
        for (const auto &[shown, expected] : rows)
            QCOMPARE(shown, expected);
    }

    void tellsOfTheCheck() {
        AvailableUpdate update;
        update.version = u"2"_s;
        const auto failed = [](FailureReason reason) { return CheckState(check::Failed{reason}); };
        const std::pair<CheckState, QString> rows[]{{check::Idle{}, u"never_checked"_s},
                                                    {check::Checking{}, u"checking"_s},
                                                    {check::UpToDate{u"1"_s}, u"uptodate[1]"_s},
                                                    {check::Available{update}, u"available.title[2]"_s},
                                                    {failed(FailureReason::network), u"failed.network"_s},
                                                    {failed(FailureReason::server), u"failed.server"_s},
                                                    {failed(FailureReason::parse), u"failed.parse"_s},
                                                    {failed(FailureReason::unknown), u"failed"_s}};
        for (const auto &[state, text] : rows)
            QCOMPARE(aboutModel({.state = state}, {}, formats_).checkStatus.text, u"update."_s + text);
    }

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
            QString text;
            TextColor dot = TextColor::orange;
            bool isTrusted = false;
        } rows[]{{asIs, u"ready"_s, TextColor::green},
                 {isOff, {}},
                 {granted(false), u"need_ax"_s, TextColor::orange, true},
                 {granted({}), u"need_ax"_s},
                 {granted({}), u"ready"_s, TextColor::green, true},
                 {noStatus, u"need_ax"_s},
                 {noStatus, u"waiting"_s, TextColor::orange, true},
                 {alone, u"waiting"_s},
                 {withMaster({}), u"no_master"_s},
                 {withMaster(u"peer"_s), u"controlled[Peer now]"_s, TextColor::green},
                 {withMaster(u"office"_s), u"master_off[Office]"_s},
                 {withMaster(u"0123456789abcdef0123"_s), u"master_off[01234567]"_s},
                 {withMaster(u"e\u0301x"_s), u"master_off[e\u0301x]"_s},
                 {withMaster(u"unnamed"_s), u"controlled[unnamed]"_s, TextColor::green}};
        for (const auto &[change, text, dot, isTrusted] : rows) {
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
            {u"unnamed"_s, {u"keyboard kvm.master.peer_global[common.unnamed]"_s}},
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
            TextColor color;
            bool offersGrant;
        } rows[]{{granted(true), u"granted"_s, TextColor::green, false},
                 {granted({}, false), u"not_granted"_s, TextColor::orange, true},
                 {granted(true, true), u"needs_restart"_s, TextColor::accent, false},
                 {granted(false, true), u"needs_restart"_s, TextColor::accent, true}};
        for (const auto &[change, title, color, offersGrant] : rows) {
            const auto shown = modelAfter(change)->accessibility;
            QCOMPARE(shown.title, u"kvm.accessibility."_s + title);
            QCOMPARE(shown.description, shown.title + u"_desc"_s);
            QVERIFY(shown.color == color);
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
                                         {u"office"_s, u"Office"_s, {}, false},
                                         {u"unnamed"_s, u"\u3164"_s, {}, true}}));
        service.status.reset();
        const auto unknown = kvmModel(service, false, false)->canvas;
        QVERIFY(unknown->desk.selfID.isEmpty());
        QVERIFY(!unknown->desk.devices[0].online && unknown->desk.devices.size() == 3);
        service.devices.resize(1);
        QVERIFY(!kvmModel(service, false, false)->canvas);
        service.settings.reset();
        QVERIFY(!kvmModel(service, true, true));
    }

private:
    KeyTexts texts_;
    TimeFormats formats_{QLocale(u"en_GB"_s)};
};

QTEST_GUILESS_MAIN(SettingsModelsTest)
#include "SettingsModelsTest.moc"
