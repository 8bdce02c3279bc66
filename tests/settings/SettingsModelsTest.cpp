#include "settings/about/AboutModel.h"
#include "settings/devices/DevicesModel.h"
#include "settings/kvm/KvmModel.h"
#include "settings/overview/OverviewModel.h"
#include "settings/sync/SyncModel.h"
#include "support/Row.h"
#include "support/ServiceStates.h"
#include "wording/TimeFormats.h"

#include <QTranslator>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;

namespace {

/// Shows every text as its key, and what is filled into it in brackets: "devices.unpair.message[Desk]".
class KeyTexts : public QTranslator {
public:
    bool isEmpty() const override { return false; }

    QString translate(const char * /*context*/, const char *key, const char * /*disambiguation*/,
                      int /*n*/) const override {
        static const QStringList filled{u"update.available.title"_s,    u"update.uptodate"_s,
                                        u"update.available.subtitle"_s, u"update.last_checked"_s,
                                        u"devices.unpair.message"_s,    u"kvm.status.controlled"_s,
                                        u"kvm.status.master_off"_s,     u"kvm.master.peer_global"_s};
        const QString text = QString::fromUtf8(key);
        return filled.contains(text) ? text + u"[%1]"_s : text;
    }
};

constexpr qint64 now = 1'795'340'460'000;

ServiceState serviceCalled(const std::optional<QString> &name) {
    ServiceState service;
    if (name)
        service.status.emplace().device_name = *name;
    return service;
}

ServiceState serviceWith(const QStringList &previews) {
    ServiceState service;
    service.settings = DaemonSettings{};
    for (const QString &preview : previews)
        service.history.push_back({.id = static_cast<qint64>(service.history.size()), .preview = preview});
    return service;
}

/// The usual one, in which a computer has been renamed and another has no name to see.
ServiceState ready() {
    ServiceState service = usualState();
    service.status->peers = {{officeId, u"Office now"_s}, {u"unnamed"_s, u"\u200B "_s}};
    service.devices.push_back({.device_id = u"unnamed"_s, .name = u"\u3164"_s});
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

KvmModel modelAfter(const Change &change, bool isTrusted = false) {
    ServiceState service = ready();
    change(service);
    return kvmModel(service, isTrusted, false).value();
}

} // namespace

class SettingsModelsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCoreApplication::installTranslator(&texts_); }

    void fillsTheNameField() {
        const struct {
            const char *name;
            std::vector<std::optional<QString>> reported; ///< none: no status
            std::optional<QString> typed;                 ///< replaces the text once it was shown
            QString text;
        } rows[]{{"comes later", {std::nullopt, u"A"_s}, {}, u"A"_s},
                 {"typed meanwhile", {std::nullopt, u"A"_s}, u"mine"_s, u"mine"_s},
                 {"changes", {u"A"_s, u"B"_s}, {}, u"A"_s},
                 {"changes when emptied", {u"A"_s, u"A"_s, u"B"_s}, u""_s, u"B"_s},
                 {"stays emptied", {u"A"_s, u"A"_s}, u""_s, u""_s}};
        for (const auto &[name, reported, typed, text] : rows) {
            const Row row(name);
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
        service.settings.emplace().device_name = u"Old"_s;
        for (const QString &same : {u"Old"_s, QString(), u" \u3164"_s})
            QVERIFY(!committedName(service, same));
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
            const Row row(search.toUtf8());
            HistoryFilter filter;
            const auto model = syncModel(serviceWith({preview}), search, filter);
            QCOMPARE(!model->history->rows.empty(), isFound);
        }
    }

    void searchFollowsTheHistory() {
        HistoryFilter filter;
        const auto found = [&](const std::vector<HistoryEntry> &history) {
            const auto indices = filter.matches(history, u"foo"_s);
            return QList<std::size_t>(indices.begin(), indices.end());
        };
        const std::pair<QStringList, QList<std::size_t>> steps[]{{{u"foo"_s, u"bar"_s}, {0}},
                                                                 {{u"bar"_s, u"foo"_s, u"foo 2"_s}, {1, 2}},
                                                                 {{u"foo"_s}, {0}},
                                                                 {{}, {}}};
        for (const auto &[previews, indices] : steps)
            QCOMPARE(found(serviceWith(previews).history), indices);
        std::vector<HistoryEntry> twins(2); // that claim to be the same entry
        twins[1].preview = u"foo"_s;
        twins[0].source = u"foo"_s;
        QCOMPARE(found(twins), QList<std::size_t>{1});
        for (const int count : {5, 6}) {
            const ServiceState service = serviceWith(QStringList(count, u"foo"_s));
            QCOMPARE(syncModel(service, {}, filter)->history->hasSearchField, count == 6);
        }
    }

    void describesDevices() {
        const struct {
            const char *name;
            Device device;
            QString badge;
            TextColor color = TextColor::secondary;
            std::optional<qint64> holds = {}; ///< milliseconds
        } rows[]{{"online", {.online = true, .last_seen = 5}, u"devices.online"_s, TextColor::green},
                 {"offline", {.online = false}, u"devices.offline"_s},
                 {"never seen", {.last_seen = 0}, u"devices.offline"_s},
                 {"seen", {.last_seen = now - 50}, u"devices.lastseen now"_s, TextColor::secondary, 950}};
        for (const auto &[name, device, badge, color, holds] : rows) {
            const Row row(name);
            ServiceState service;
            service.devices = {device};
            const auto shown = devicesModel(service, {}, now, formats_).rows.front();
            QCOMPARE(shown.badge, badge);
            QCOMPARE(shown.badgeColor, color);
            const auto shownFor = devicesModelHoldsFor(service, now);
            QCOMPARE(shownFor ? shownFor->count() : -1, holds.value_or(-1));
        }
        ServiceState two;
        two.devices = {
            {.platform = u"darwin"_s, .fingerprint = u"sha256:0123456789abcdef"_s, .last_seen = now - 5050},
            {.name = u"\u3164"_s, .platform = u"Darwin"_s, .last_seen = now - 50}};
        const auto shown = devicesModel(two, two.devices[1], now, formats_);
        QCOMPARE(shown.rows[0].fingerprint, u"devices.fp 0123456789ab…"_s);
        QCOMPARE(shown.rows[0].symbol, u"laptopcomputer"_s);
        QCOMPARE(shown.rows[1].symbol, u"pc"_s);
        QCOMPARE(shown.confirmation->message, u"devices.unpair.message[common.unnamed]"_s);
        QCOMPARE(devicesModelHoldsFor(two, now)->count(), 950); // the sooner
    }

    void tellsOfTheCheck() {
        const auto failed = [](FailureReason reason) { return CheckState(check::Failed{reason}); };
        AvailableUpdate update;
        update.version = u"2"_s;
        const QString warning = u"exclamationmark.triangle.fill"_s;
        const struct {
            CheckState state;
            QString text;
            QString symbol = {};
            TextColor color = TextColor::secondary; ///< of the symbol
        } rows[]{{check::Idle{}, u"never_checked"_s},
                 {check::Checking{}, u"checking"_s},
                 {check::UpToDate{u"1"_s}, u"uptodate[1]"_s, u"checkmark.circle.fill"_s, TextColor::green},
                 {check::Available{update}, u"available.title[2]"_s, u"arrow.down.circle.fill"_s,
                  TextColor::accent},
                 {failed(FailureReason::network), u"failed.network"_s, warning, TextColor::orange},
                 {failed(FailureReason::server), u"failed.server"_s, warning, TextColor::orange},
                 {failed(FailureReason::parse), u"failed.parse"_s, warning, TextColor::orange},
                 {failed(FailureReason::unknown), u"failed"_s, warning, TextColor::orange}};
        for (const auto &[state, text, symbol, color] : rows) {
            const Row row(text.toUtf8());
            const AboutModel model = aboutModel({.state = state}, {}, formats_);
            QCOMPARE(model.checkStatus.text, u"update."_s + text);
            QCOMPARE(model.checkStatus.symbol, symbol);
            QCOMPARE(model.checkStatus.symbolColor, color);
            QCOMPARE(model.isChecking, state == CheckState(check::Checking{}));
        }
    }

    void tellsOfAnUpdate() {
        UpdateState update;
        update.available.emplace().version = u"2"_s;
        update.lastChecked = QDateTime(QDate(2026, 11, 22), QTime(9, 41));
        const AboutInput input{.currentVersion = u"1"_s,
                               .languages = {QString(), u"en"_s},
                               .storedLanguage = u"fr"_s}; // which is no choice
        const AboutModel model = aboutModel(update, input, formats_);
        QCOMPARE(model.banner->title, u"update.available.title[2]"_s);
        QCOMPARE(model.banner->subtitle, u"update.available.subtitle[1]"_s);
        QCOMPARE(model.lastChecked,
                 u"update.last_checked["_s + formats_.dateTime(*update.lastChecked) + u']');
        QCOMPARE(model.language, 0);

        // What would start any other program than a browser is not opened.
        const std::pair<const char *, bool> rows[]{
            {"https://host/app.dmg", true},  {"http://host/app", true}, {"ssh://host/app.dmg", false},
            {"file:///etc/hostname", false}, {"javascript:app", false}, {"https:///app", false}};
        for (const auto &[address, opens] : rows) {
            const Row row(address);
            update.available->downloadURL = QUrl(QString::fromLatin1(address));
            QCOMPARE(aboutModel(update, {}, formats_).banner->browserAddress.has_value(), opens);
        }
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
            const char *name;
            Change change;
            QString text;
            TextColor dot = TextColor::orange;
            bool isTrusted = false;
        } rows[]{{"own", asIs, u"ready"_s, TextColor::green},
                 {"off", isOff, {}},
                 {"refused", granted(false), u"need_ax"_s, TextColor::orange, true},
                 {"not known and not trusted", granted({}), u"need_ax"_s},
                 {"not known but trusted", granted({}), u"ready"_s, TextColor::green, true},
                 {"no status", noStatus, u"need_ax"_s},
                 {"no status but trusted", noStatus, u"waiting"_s, TextColor::orange, true},
                 {"alone", alone, u"waiting"_s},
                 {"no master", withMaster({}), u"no_master"_s},
                 {"controlled", withMaster(officeId), u"controlled[Office now]"_s, TextColor::green},
                 {"off", withMaster(livingRoomId), u"master_off[Living room]"_s},
                 {"unknown", withMaster(u"0123456789abcdef0123"_s), u"master_off[01234567]"_s},
                 {"unknown, of few characters", withMaster(u"e\u0301x"_s), u"master_off[e\u0301x]"_s},
                 {"unnamed", withMaster(u"unnamed"_s), u"controlled[unnamed]"_s, TextColor::green}};
        for (const auto &[name, change, text, dot, isTrusted] : rows) {
            const Row row(name);
            const auto line = modelAfter(change, isTrusted).statusLine;
            QCOMPARE(line ? line->text : QString(), text.isEmpty() ? text : u"kvm.status."_s + text);
            QCOMPARE(line ? line->dot : dot, dot);
        }
    }

    void namesTheMaster() {
        const std::pair<QString, QStringList> rows[]{
            {ownId, {u"keyboard kvm.master.local_footer"_s}},
            {u""_s, {u"exclamationmark.triangle.fill kvm.master.none"_s}},
            {officeId,
             {u"keyboard kvm.master.peer_global[Office Linux]"_s, u"command kvm.master.linux_hotkey"_s}},
            {laptopId, {u"keyboard kvm.master.peer_global[Travel laptop]"_s}},
            {u"unnamed"_s, {u"keyboard kvm.master.peer_global[common.unnamed]"_s}},
            {u"gone"_s, {u"keyboard kvm.master.peer_global[?]"_s}}};
        for (const auto &[id, expected] : rows) {
            const Row row(id.toUtf8());
            QStringList lines;
            for (const auto &line : modelAfter(withMaster(id)).masterFooter) {
                lines << line.symbol + u' ' + line.text;
                QCOMPARE(line.color, id.isEmpty() ? TextColor::orange : TextColor::secondary);
            }
            QCOMPARE(lines, expected);
        }
    }

    void tellsOfAccessibility() {
        const struct {
            const char *name;
            Change change;
            QString title;
            QString symbol;
            TextColor color;
            bool offersGrant;
        } rows[]{{"granted", granted(true), u"granted"_s, u"checkmark.shield"_s, TextColor::green, false},
                 {"not known", granted({}, false), u"not_granted"_s, u"exclamationmark.shield"_s,
                  TextColor::orange, true},
                 {"in vain", granted(true, true), u"needs_restart"_s, u"arrow.clockwise.circle"_s,
                  TextColor::accent, false},
                 {"refused, and needs a restart", granted(false, true), u"needs_restart"_s,
                  u"arrow.clockwise.circle"_s, TextColor::accent, true}};
        for (const auto &[name, change, title, symbol, color, offersGrant] : rows) {
            const Row row(name);
            const auto shown = modelAfter(change).accessibility;
            QCOMPARE(shown.title, u"kvm.accessibility."_s + title);
            QCOMPARE(shown.description, shown.title + u"_desc"_s);
            QCOMPARE(shown.symbol, symbol + u".fill"_s);
            QCOMPARE(shown.color, color);
            QCOMPARE(shown.offersGrant, offersGrant);
        }
    }

    void choosesOptions() {
        const struct {
            const char *name;
            std::optional<qint64> delay;
            std::optional<double> sensitivity;
            int delayIndex, cornerIndex, sensitivityIndex; ///< -1: none of the options
        } rows[]{{.name = "not told", .delayIndex = 0, .cornerIndex = 0, .sensitivityIndex = 0},
                 {"told", 500, 3, 3, -1, 4},
                 {"no option", 251, 1.50001, -1, -1, -1}};
        for (const auto &[name, delay, sensitivity, delayIndex, cornerIndex, sensitivityIndex] : rows) {
            const Row row(name);
            const KvmModel model = modelAfter([&, delay = delay, sensitivity = sensitivity](auto &service) {
                service.settings->kvm_switch_delay_ms = service.settings->kvm_corner_size = delay;
                service.settings->kvm_sensitivity = sensitivity;
            });
            const auto index = [](std::optional<std::size_t> chosen) {
                return chosen ? static_cast<int>(*chosen) : -1;
            };
            QCOMPARE(index(model.switchDelay), delayIndex);
            QCOMPARE(index(model.cornerSize), cornerIndex);
            QCOMPARE(index(model.sensitivity), sensitivityIndex);
        }
    }

    void listsTheScreens() {
        const auto told = [](const ServiceState &service) {
            QStringList cards;
            for (const DeviceCard &card : deviceCards(service))
                cards << card.name + u' ' + card.platform.value_or(u"?"_s) +
                             (card.online ? u" on"_s : QString());
            return cards;
        };
        ServiceState service = ready();
        service.status->platform.reset();
        QCOMPARE(told(service),
                 (QStringList{u"Studio Mac darwin on"_s, u"Office Linux linux on"_s,
                              u"Travel laptop darwin"_s, u"Living room ?"_s, u"\u3164 ? on"_s}));
        service.status.reset();
        QVERIFY(told(service).filter(u" on"_s).isEmpty());
        const auto unknown = kvmModel(service, false, false)->canvas;
        QVERIFY(unknown->desk.selfID.isEmpty());
        service.devices.resize(1);
        QVERIFY(!kvmModel(service, false, false)->canvas);
        service.settings.reset();
        QVERIFY(!kvmModel(service, true, true));
        service.devices.resize(10'000);
        QCOMPARE(told(service).size(), 200);
    }

private:
    KeyTexts texts_;
    TimeFormats formats_{QLocale(u"en_GB"_s)};
};

QTEST_GUILESS_MAIN(SettingsModelsTest)
#include "SettingsModelsTest.moc"
