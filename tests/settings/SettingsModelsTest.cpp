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
        // What the service reports poll after poll, no status at first; what replaces the text once it was
        // shown.
        using Reports = std::vector<std::optional<QString>>;
        const std::tuple<const char *, Reports, std::optional<QString>, QString> rows[]{
            {"comes later", {std::nullopt, u"A"_s}, {}, u"A"_s},
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

    void tellsOfSharing() {
        const auto told = [](const KvmModel &model) {
            QStringList lines;
            if (const auto &line = model.statusLine)
                lines << (line->dot == green ? u"green "_s : u"orange "_s) + line->text;
            for (const auto &line : model.masterFooter)
                lines << line.symbol + u' ' + line.text;
            return lines.join(u"; "_s).remove(u"kvm."_s);
        };
        const auto off = [](auto &service) { service.settings->kvm_enabled = false; };
        const auto alone = [](auto &service) { service.status->peers.clear(); };
        const std::tuple<const char *, Change, QString> rows[]{
            {"own", withMaster(ownId), u"green status.ready; keyboard master.local_footer"_s},
            {"off", off, u"keyboard master.local_footer"_s},
            {"alone", alone, u"orange status.waiting; keyboard master.local_footer"_s},
            {"no master", withMaster({}),
             u"orange status.no_master; exclamationmark.triangle.fill master.none"_s},
            {"controlled", withMaster(officeId),
             u"green status.controlled[Office now]; keyboard master.peer_global[Office Linux]; "_s
             u"command master.linux_hotkey"_s},
            {"master off", withMaster(laptopId),
             u"orange status.master_off[Travel laptop]; keyboard master.peer_global[Travel laptop]"_s},
            {"unknown", withMaster(u"0123456789abcdef"_s),
             u"orange status.master_off[01234567]; keyboard master.peer_global[?]"_s},
            {"unnamed", withMaster(u"unnamed"_s),
             u"green status.controlled[unnamed]; keyboard master.peer_global[common.unnamed]"_s}};
        for (const auto &[name, change, text] : rows) {
            const Row row(name);
            QCOMPARE(told(modelAfter(change)), text);
        }
    }

    void tellsOfAccessibility() {
        const QString needsRestart = u"arrow.clockwise.circle.fill kvm.accessibility.needs_restart"_s;
        const QString refused = u"exclamationmark.shield.fill kvm.accessibility.not_granted"_s;
        const QString fine = u"checkmark.shield.fill kvm.accessibility.granted"_s;
        const Change noStatus = [](auto &service) { service.status.reset(); };
        const std::tuple<const char *, Change, bool, QString, TextColor, bool> rows[]{
            {"granted", granted(true), false, fine, green, false},
            {"refused", granted(false), true, refused, orange, true},
            {"not known", granted({}), false, refused, orange, true},
            {"not known but trusted", granted({}), true, fine, green, false},
            {"no status", noStatus, false, refused, orange, true},
            {"in vain", granted(true, true), false, needsRestart, accent, false},
            {"refused and in vain", granted(false, true), true, needsRestart, accent, true}};
        for (const auto &[name, change, isTrusted, text, color, offersGrant] : rows) {
            const Row row(name);
            const KvmModel model = modelAfter(change, isTrusted);
            const auto &shown = model.accessibility;
            QCOMPARE(shown.symbol + u' ' + shown.title, text);
            QCOMPARE(shown.description, shown.title + u"_desc"_s);
            QCOMPARE(shown.color, color);
            QCOMPARE(shown.offersGrant, offersGrant);
            QCOMPARE(model.statusLine->text == u"kvm.status.need_ax"_s, offersGrant);
        }
    }

    void choosesOptions() {
        KvmModel model = modelAfter([](auto &service) { service.settings = DaemonSettings{}; });
        QVERIFY(model.switchDelay == 0U && model.cornerSize == 0U && model.sensitivity == 0U);
        model = modelAfter([](auto &service) {
            service.settings->kvm_switch_delay_ms = service.settings->kvm_corner_size = 251;
            service.settings->kvm_sensitivity = 1.50001;
        });
        QVERIFY(!model.switchDelay && !model.cornerSize && !model.sensitivity); // none of them
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
                                             u"Travel laptop darwin on"_s}));
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
