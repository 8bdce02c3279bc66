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

AvailableUpdate release(bool hasAddress) {
    AvailableUpdate update;
    update.version = u"1.5.0"_s;
    if (hasAddress)
        update.downloadURL = QUrl(u"https://example.org/quorbit.dmg"_s);
    return update;
}

} // namespace

Q_DECLARE_METATYPE(Tint)

class SettingsModelsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCoreApplication::installTranslator(&texts_); }

    void overviewShowsTheStatus() {
        QVERIFY(overviewModel({}, {u"typed"_s, {}}) == (OverviewModel{.draftName = u"typed"_s}));
        ServiceState service = serviceCalled(u"Studio"_s);
        service.status->device_id = u"10b4"_s;
        service.status->port = 8080;
        service.status->peers = {{u"p1"_s, u"Office"_s}, {u"p2"_s, {}}};
        service.status->last_activity = QString();
        OverviewModel expected{
            .identity = OverviewModel::Identity{u"10b4"_s, u"8080"_s, false, u"overview.status.running"_s},
            .peers = {{u"p1"_s, u"p1"_s, u"Office"_s}, {u"p2"_s, u"p2"_s, u"common.unnamed"_s}}};
        QVERIFY(overviewModel(service, {}) == expected);
        service.status->paused = true;
        service.status->last_activity = u" as sent "_s;
        expected.identity->isPaused = true;
        expected.identity->statusText = u"overview.status.paused"_s;
        expected.lastActivity = u" as sent "_s;
        QVERIFY(overviewModel(service, {}) == expected);
    }

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

    void savesAName() {
        ServiceState service;
        QVERIFY(!committedName(service, u"New"_s));
        service.settings = DaemonSettings{};
        service.settings->device_name = u"Old"_s;
        service.settings->port = 8080;
        QVERIFY(!committedName(service, u"Old"_s));
        QVERIFY(!committedName(service, {}));
        DaemonSettings expected = *service.settings;
        expected.device_name = u" old "_s;
        QVERIFY(committedName(service, u" old "_s) == expected);
    }

    void stepsTheFileCap() {
        const std::tuple<qint64, int, qint64> rows[]{{1, 1, 11},
                                                     {100, -1, 90},
                                                     {7, -1, 1},
                                                     {10235, 1, 10240},
                                                     {10240, 1, 10240},
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

    void syncShowsSettingsAndHistory() {
        HistoryFilter filter;
        ServiceState service = serviceWith({u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s});
        service.settings->sync_image = true;
        service.settings->file_size_cap_mb = 20000;
        service.history[0].type = u"text"_s;
        service.history[1].type = u"image"_s;
        service.history[2].type = u"files"_s;
        service.history[3].type = u"Text"_s;
        service.history[4].source = u"Office"_s;
        SyncModel expected{.syncsImage = true, .fileCap = 20000, .history = SyncModel::History{}};
        expected.history->rows = {{0, u"text.alignleft"_s, u"a"_s, {}},
                                  {1, u"photo"_s, u"b"_s, {}},
                                  {2, u"doc.on.doc"_s, u"c"_s, {}},
                                  {3, u"doc"_s, u"d"_s, {}},
                                  {4, u"doc"_s, u"e"_s, u"Office"_s}};
        QVERIFY(syncModel(service, {}, filter) == expected);
        // A search goes on even where the field is hidden.
        expected.history->rows = {expected.history->rows[1]};
        QVERIFY(syncModel(service, u"B"_s, filter) == expected);
        service.history.push_back({.id = 5});
        QVERIFY(syncModel(service, u"nothing"_s, filter)->history->hasSearchField);
        QVERIFY(syncModel(service, u"nothing"_s, filter)->history->rows.empty());
        service.history.clear();
        QVERIFY(!syncModel(service, {}, filter)->history);
        service.settings.reset();
        QVERIFY(!syncModel(service, {}, filter));
    }

    void describesDevices_data() {
        QTest::addColumn<std::optional<bool>>("online");
        QTest::addColumn<std::optional<qint64>>("lastSeen");
        QTest::addColumn<QString>("badge");
        QTest::addColumn<Tint>("tint");
        QTest::addColumn<bool>("changes");
        using Online = std::optional<bool>;
        using Seen = std::optional<qint64>;
        QTest::newRow("online") << Online(true) << Seen(5) << u"devices.online"_s << Tint::green << false;
        QTest::newRow("never seen") << Online(false) << Seen() << u"devices.offline"_s << Tint::secondary
                                    << false;
        QTest::newRow("seen at 0") << Online() << Seen(0) << u"devices.offline"_s << Tint::secondary << false;
        QTest::newRow("before 0") << Online() << Seen(-9) << u"devices.offline"_s << Tint::secondary << false;
        QTest::newRow("seen at 1") << Online() << Seen(1) << u"devices.lastseen 56 yr ago"_s
                                   << Tint::secondary << true;
        QTest::newRow("just now") << Online(false) << Seen(now - 125'000) << u"devices.lastseen 2 min ago"_s
                                  << Tint::secondary << true;
    }
    void describesDevices() {
        QFETCH(std::optional<bool>, online);
        QFETCH(std::optional<qint64>, lastSeen);
        QFETCH(Tint, tint);
        ServiceState service;
        service.devices = {{.device_id = u"a"_s, .online = online, .last_seen = lastSeen}};
        const auto row = devicesModel(service, {}, now, formats_).rows.front();
        QTEST(row.badge, "badge");
        QVERIFY(row.badgeTint == tint);
        QTEST(devicesModelHoldsFor(service, now).has_value(), "changes");
    }

    void listsDevices() {
        ServiceState service;
        service.devices = {{.device_id = u"a"_s,
                            .name = u"A %1"_s,
                            .platform = u"darwin"_s,
                            .fingerprint = u"sha256:0123456789abcdef"_s,
                            .last_seen = now - 125'000},
                           {.device_id = u"b"_s, .platform = u"Darwin"_s, .last_seen = now - 50}};
        const auto model = devicesModel(service, service.devices[0], now, formats_);
        QCOMPARE(model.rows[0].symbol, u"laptopcomputer"_s);
        QCOMPARE(model.rows[0].fingerprint, u"devices.fp 0123456789ab…"_s);
        QCOMPARE(model.rows[1].symbol, u"pc"_s);
        QCOMPARE(model.rows[1].fingerprint, u"devices.fp …"_s);
        QCOMPARE(model.confirmation->message, u"devices.unpair.message[A %1]"_s);
        QCOMPARE(model.confirmation->deviceId, u"a"_s);
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
        AvailableUpdate update = release(true);
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

    void tellsOfChecks() {
        const QString warning = u"exclamationmark.triangle.fill"_s;
        const std::tuple<CheckState, QString, QString> rows[]{
            {check::Idle{}, QString(), u"update.never_checked"_s},
            {check::Checking{}, QString(), u"update.checking"_s},
            {check::UpToDate{u"1.4.1"_s}, u"checkmark.circle.fill"_s, u"update.uptodate[1.4.1]"_s},
            {check::Available{release(true)}, u"arrow.down.circle.fill"_s,
             u"update.available.title[1.5.0]"_s},
            {check::Failed{FailureReason::network}, warning, u"update.failed.network"_s},
            {check::Failed{FailureReason::server}, warning, u"update.failed.server"_s},
            {check::Failed{FailureReason::parse}, warning, u"update.failed.parse"_s},
            {check::Failed{FailureReason::unknown}, warning, u"update.failed"_s}};
        for (const auto &[state, symbol, text] : rows) {
            const AboutModel model = aboutModel({.state = state}, {}, formats_);
            QCOMPARE(model.checkStatus.text, text);
            QCOMPARE(model.checkStatus.symbol, symbol);
            QCOMPARE(model.isChecking, std::holds_alternative<check::Checking>(state));
            QVERIFY(!model.banner && model.lastChecked.isEmpty() && model.version.isEmpty());
        }
    }

    void offersDownloads() {
        using Shown = AboutModel::Download;
        const std::pair<DownloadState, Shown> rows[]{{DownloadState::idle, Shown::offered},
                                                     {DownloadState::downloading, Shown::running},
                                                     {DownloadState::done, Shown::done},
                                                     {DownloadState::failed, Shown::failed}};
        for (const auto &[state, download] : rows) {
            for (const bool hasAddress : {true, false}) {
                // A failed check leaves the update that an earlier one found.
                const UpdateState update{.available = release(hasAddress),
                                         .state = check::Failed{FailureReason::network},
                                         .lastChecked = QDateTime(QDate(2026, 11, 22), QTime(9, 41)),
                                         .downloadState = state};
                const AboutModel model =
                    aboutModel(update, {.bundleVersion = u"1.4.1"_s, .currentVersion = u"1.4.1"_s}, formats_);
                QVERIFY(model.banner == (AboutModel::Banner{u"update.available.title[1.5.0]"_s,
                                                            u"update.available.subtitle[1.4.1]"_s,
                                                            {},
                                                            download,
                                                            hasAddress}));
                QCOMPARE(model.lastChecked, u"update.last_checked[22 Nov 2026, 09:41]"_s);
                QCOMPARE(model.version, u"about.version[1.4.1]"_s);
            }
        }
    }

    void choosesTheLanguage() {
        const QStringList choices{QString(), u"zh-Hans"_s, u"en"_s};
        const std::pair<QString, int> rows[]{
            {QString(), 0}, {u"zh-Hans"_s, 1}, {u"en"_s, 2}, {u"fr"_s, 0}, {u"zh-hans"_s, 0}};
        for (const auto &[stored, index] : rows) {
            QCOMPARE(aboutModel({}, {.languages = choices, .storedLanguage = stored}, formats_).language,
                     index);
            for (const QString &picked : choices)
                QCOMPARE(changesLanguage(stored, picked), stored != picked);
        }
    }

private:
    KeyTexts texts_;
    TimeFormats formats_{QLocale(u"en_GB"_s)};
};

QTEST_GUILESS_MAIN(SettingsModelsTest)
#include "settings_models_test.moc"
