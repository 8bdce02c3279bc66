#include "settings/AboutModel.h"
#include "settings/DevicesModel.h"
#include "settings/OverviewModel.h"
#include "settings/SyncModel.h"
#include "settings/TimeFormats.h"

#include "KeyTexts.h"

#include <QTest>

using namespace quorbit;
using namespace Qt::StringLiterals;

namespace {

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
        } rows[]{{{u"A"_s}, {}, u"A"_s},
                 {{std::nullopt}, {}, {}},
                 {{std::nullopt, u"A"_s}, {}, u"A"_s},
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
        QVERIFY(!committedName(service, u"Old"_s) && !committedName(service, {}));
        QCOMPARE(committedName(service, u" old "_s)->device_name, u" old "_s);
    }

    void stepsTheFileCap() {
        const std::tuple<qint64, int, qint64> rows[]{{1, 1, 11},
                                                     {7, -1, 1},
                                                     {10235, 1, 10240},
                                                     {std::numeric_limits<qint64>::max(), 1, 10240},
                                                     {std::numeric_limits<qint64>::min(), -3, 1}};
        for (const auto &[from, steps, to] : rows)
            QCOMPARE(steppedFileCap(from, steps), to);
    }

    void searchesTheHistory() {
        const std::tuple<QString, QString, bool> rows[]{{u" Foo "_s, u"my foo bar"_s, true},
                                                        {u"foo"_s, u"MY FOO"_s, true},
                                                        {u"a b"_s, u"ba bc"_s, true},
                                                        {u"a  b"_s, u"a b"_s, false},
                                                        {u"\u3000\u00A0\tfoo\u2003"_s, u"foo"_s, true},
                                                        {u"foo\n"_s, u"foo"_s, false},
                                                        {u" \t"_s, QString(), true},
                                                        {u"f"_s, QString(), false},
                                                        {u"ÄRGER Ж"_s, u"ärger ж"_s, true},
                                                        {u"e"_s, u"é"_s, false},
                                                        {u"\u00E9"_s, u"caf\u0065\u0301"_s, true},
                                                        {u"图片"_s, u"一张图片.png"_s, true}};
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
            std::optional<bool> online;
            std::optional<qint64> lastSeen;
            QString badge;
            Tint tint;
            bool changes;
        } rows[]{{true, 5, u"devices.online"_s, Tint::green, false},
                 {false, {}, u"devices.offline"_s, Tint::secondary, false},
                 {{}, 0, u"devices.offline"_s, Tint::secondary, false},
                 {{}, 1, u"devices.lastseen 56 yr ago"_s, Tint::secondary, true}};
        for (const auto &[online, lastSeen, badge, tint, changes] : rows) {
            ServiceState service;
            service.devices = {{.online = online, .last_seen = lastSeen}};
            const auto row = devicesModel(service, {}, now, formats_).rows.front();
            QCOMPARE(row.badge, badge);
            QVERIFY(row.badgeTint == tint);
            QCOMPARE(devicesModelHoldsFor(service, now).has_value(), changes);
        }
    }

    void listsDevices() {
        ServiceState service;
        service.devices = {{.platform = u"darwin"_s,
                            .fingerprint = u"sha256:0123456789abcdef"_s,
                            .last_seen = now - 125'000},
                           {.platform = u"Darwin"_s, .last_seen = now - 50}};
        const auto rows = devicesModel(service, {}, now, formats_).rows;
        QCOMPARE(rows[0].symbol, u"laptopcomputer"_s);
        QCOMPARE(rows[0].fingerprint, u"devices.fp 0123456789ab…"_s);
        QCOMPARE(rows[1].symbol, u"pc"_s);
        QVERIFY(devicesModelHoldsFor(service, now) == std::chrono::milliseconds(950));
    }

    /// Each by itself, so that writing from right to left moves nothing of the sentence around it.
    void textsFromOutsideAreMadeFit() {
        const QString rough = u"%1 א\n\u202Eb"_s;
        const QString fit = u"\u2068%1 א b\u2069"_s;
        ServiceState service = serviceCalled(rough);
        service.status->device_id = service.status->last_activity.emplace(rough);
        service.status->peers = {{rough, rough}, {u"p"_s, u"\u200B\n"_s}};
        service.devices = {{.device_id = u"a"_s, .name = rough, .fingerprint = rough}};
        const OverviewModel overview = overviewModel(service, {});
        const DevicesModel devices = devicesModel(service, service.devices[0], now, formats_);
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
            {devices.rows[0].fingerprint, u"devices.fp "_s + fit + u'…'},
            {devices.confirmation->message, u"devices.unpair.message["_s + fit + u']'},
            {about.banner->title, u"update.available.title["_s + fit + u']'},
            {about.checkStatus.text, u"update.available.title["_s + fit + u']'},
            {about.banner->notes, u"\u2068%1 א\u2069\nb"_s}};
        for (const auto &[shown, expected] : rows)
            QCOMPARE(shown, expected);
    }

private:
    KeyTexts texts_;
    TimeFormats formats_{QLocale(u"en_GB"_s)};
};

QTEST_GUILESS_MAIN(SettingsModelsTest)
#include "settings_models_test.moc"
