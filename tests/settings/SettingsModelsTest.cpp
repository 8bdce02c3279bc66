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
using enum TextColor;

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
    service.settings.emplace();
    for (const QString &preview : previews)
        service.history.push_back({.id = static_cast<qint64>(service.history.size()), .preview = preview});
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

/// Of the usual state, in which a computer has been renamed and another has no name to see.
KvmModel modelAfter(const Change &change, bool isTrusted = false) {
    ServiceState service = usualState();
    service.status->peers = {{officeId, u"Office now"_s}, {u"unnamed"_s, u"\u200B "_s}};
    service.devices.push_back({.device_id = u"unnamed"_s, .name = u"\u3164"_s});
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
            QCOMPARE(!syncModel(serviceWith({preview}), search, filter)->history->rows.empty(), isFound);
        }
    }

    void searchFollowsTheHistory() {
        HistoryFilter filter;
        const auto found = [&](const std::vector<HistoryEntry> &history) {
            const auto indices = filter.matches(history, u"foo"_s);
            return QList<std::size_t>(indices.begin(), indices.end());
        };
        QCOMPARE(found(serviceWith({u"foo"_s, u"bar"_s}).history), QList<std::size_t>{0});
        QCOMPARE(found(serviceWith({u"bar"_s, u"foo"_s, u"foo 2"_s}).history), (QList<std::size_t>{1, 2}));
        QCOMPARE(found(serviceWith({u"foo"_s}).history), QList<std::size_t>{0});
        std::vector<HistoryEntry> twins(2); // that claim to be the same entry
        twins[1].preview = u"foo"_s;
        QCOMPARE(found(twins), QList<std::size_t>{1});
        for (const int count : {5, 6})
            QCOMPARE(syncModel(serviceWith(QStringList(count)), {}, filter)->history->hasSearchField,
                     count == 6);
    }

    void describesDevices() {
        const std::tuple<const char *, Device, QString, TextColor> rows[]{
            {"online", {.online = true, .last_seen = 5}, u"devices.online"_s, green},
            {"offline", {.online = false}, u"devices.offline"_s, secondary},
            {"never seen", {.last_seen = 0}, u"devices.offline"_s, secondary},
            {"seen", {.last_seen = now - 50}, u"devices.lastseen now"_s, secondary}};
        for (const auto &[name, device, badge, color] : rows) {
            const Row row(name);
            ServiceState service;
            service.devices = {device};
            const auto shown = devicesModel(service, {}, now, formats_).rows.front();
            QCOMPARE(shown.badge, badge);
            QCOMPARE(shown.badgeColor, color);
            QCOMPARE(devicesModelHoldsFor(service, now).has_value(), badge.startsWith(u"devices.lastseen"_s));
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
        AvailableUpdate update;
        update.version = u"2"_s;
        const auto failed = [](FailureReason reason) { return CheckState(check::Failed{reason}); };
        const QString warning = u"exclamationmark.triangle.fill"_s;
        const std::tuple<CheckState, QString, QString, TextColor> rows[]{
            {check::Idle{}, u"never_checked"_s, {}, secondary},
            {check::Checking{}, u"checking"_s, {}, secondary},
            {check::UpToDate{u"1"_s}, u"uptodate[1]"_s, u"checkmark.circle.fill"_s, green},
            {check::Available{update}, u"available.title[2]"_s, u"arrow.down.circle.fill"_s, accent},
            {failed(FailureReason::network), u"failed.network"_s, warning, orange},
            {failed(FailureReason::server), u"failed.server"_s, warning, orange},
            {failed(FailureReason::parse), u"failed.parse"_s, warning, orange},
            {failed(FailureReason::unknown), u"failed"_s, warning, orange}};
        for (const auto &[state, text, symbol, color] : rows) {
            const Row row(text.toUtf8());
            const auto shown = aboutModel({.state = state}, {}, formats_).checkStatus;
            QCOMPARE(shown.text, u"update."_s + text);
            QCOMPARE(shown.symbol, symbol);
            QCOMPARE(shown.symbolColor, color);
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
        QCOMPARE(model.lastChecked, u"update.last_checked[22 Nov 2026, 09:41]"_s);
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
        const Change noStatus = [](auto &service) { service.status.reset(); };
        const Change alone = [](auto &service) { service.status->peers.clear(); };
        const struct {
            const char *name;
            Change change;
            QString text;
            TextColor dot = orange;
            bool isTrusted = false;
        } rows[]{{"own", withMaster(ownId), u"ready"_s, green},
                 {"refused", granted(false), u"need_ax"_s, orange, true},
                 {"not known and not trusted", granted({}), u"need_ax"_s},
                 {"not known but trusted", granted({}), u"ready"_s, green, true},
                 {"no status", noStatus, u"need_ax"_s},
                 {"no status but trusted", noStatus, u"waiting"_s, orange, true},
                 {"alone", alone, u"waiting"_s},
                 {"no master", withMaster({}), u"no_master"_s},
                 {"controlled", withMaster(officeId), u"controlled[Office now]"_s, green},
                 {"master off", withMaster(livingRoomId), u"master_off[Living room]"_s},
                 {"unknown", withMaster(u"0123456789abcdef0123"_s), u"master_off[01234567]"_s},
                 {"unnamed", withMaster(u"unnamed"_s), u"controlled[unnamed]"_s, green}};
        for (const auto &[name, change, text, dot, isTrusted] : rows) {
            const Row row(name);
            const auto line = modelAfter(change, isTrusted).statusLine.value();
            QCOMPARE(line.text, u"kvm.status."_s + text);
            QCOMPARE(line.dot, dot);
        }
        QVERIFY(!modelAfter([](auto &service) { service.settings->kvm_enabled = false; }).statusLine);
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
            for (const auto &line : modelAfter(withMaster(id)).masterFooter)
                lines << line.symbol + u' ' + line.text;
            QCOMPARE(lines, expected);
        }
    }

    void tellsOfAccessibility() {
        const std::tuple<const char *, Change, QString, QString, TextColor, bool> rows[]{
            {"granted", granted(true), u"granted"_s, u"checkmark.shield"_s, green, false},
            {"not known", granted({}), u"not_granted"_s, u"exclamationmark.shield"_s, orange, true},
            {"in vain", granted(true, true), u"needs_restart"_s, u"arrow.clockwise.circle"_s, accent, false},
            {"refused", granted(false, true), u"needs_restart"_s, u"arrow.clockwise.circle"_s, accent, true}};
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
        constexpr std::size_t none = 99;
        const auto check = [&](const Change &change, std::size_t delay, std::size_t corner,
                               std::size_t sensitivity) {
            const KvmModel model = modelAfter(change);
            QCOMPARE(model.switchDelay.value_or(none), delay);
            QCOMPARE(model.cornerSize.value_or(none), corner);
            QCOMPARE(model.sensitivity.value_or(none), sensitivity);
        };
        check([](auto &) {}, 2, 2, 2);
        check([](auto &service) { service.settings = DaemonSettings{}; }, 0, 0, 0);
        const auto noOption = [](auto &service) {
            service.settings->kvm_switch_delay_ms = service.settings->kvm_corner_size = 251;
            service.settings->kvm_sensitivity = 1.50001;
        };
        check(noOption, none, none, none);
    }

    void listsTheScreens() {
        const auto told = [](const ServiceState &service) {
            QStringList cards;
            for (const DeviceCard &card : deviceCards(service))
                cards << card.name + u' ' + card.platform.value_or(u"?"_s) + (card.online ? u" on"_s : u""_s);
            return cards;
        };
        ServiceState service = usualState();
        service.status->platform.reset();
        service.status->peers.resize(1);
        QCOMPARE(told(service), (QStringList{u"Studio Mac darwin on"_s, u"Office Linux linux"_s,
                                             u"Travel laptop darwin on"_s, u"Living room ?"_s}));
        service.status.reset();
        QCOMPARE(told(service).filter(u" on"_s), QStringList());
        QCOMPARE(kvmModel(service, false, false)->canvas->desk.selfID, QString());
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
