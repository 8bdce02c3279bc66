#include "menubar/MenuBarModel.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace quorbit;

namespace {

using InfoRow = MenuBarModel::InfoRow;

// No table is installed, so that every text is its key.
InfoRow notice(const QString &symbol, const QString &text, TextColor color = TextColor::secondary) {
    return {InfoRow::Kind::notice, {}, symbol, text, color};
}

InfoRow peer(const QString &id, const QString &symbol, const QString &text) {
    return {InfoRow::Kind::peer, id, symbol, text, TextColor::primary};
}

ServiceState serviceWith(ConnectionState connection, std::optional<Status> status = {}) {
    ServiceState service;
    service.connectionState = connection;
    service.status = std::move(status);
    return service;
}

Status statusWith(std::vector<PeerStatus> peers) {
    Status status;
    status.device_name = u"Studio"_s;
    status.peers = std::move(peers);
    return status;
}

Status paused() {
    Status status;
    status.paused = true;
    return status;
}

MenuBarModel modelOf(const ServiceState &service) {
    return menuBarModel(service, UpdateState());
}

} // namespace

class MenuBarModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void dotTellsTheState() {
        using enum ConnectionState;
        const QString yellow = u"ellipsis.circle.fill"_s;
        const QString green = u"checkmark.circle.fill"_s;
        const struct {
            ServiceState service;
            QString symbol;
            TextColor color;
            QString label;
        } rows[]{{serviceWith(starting), yellow, TextColor::yellow, u"menu.status.starting"_s},
                 {serviceWith(starting, paused()), yellow, TextColor::yellow, u"menu.status.starting"_s},
                 {serviceWith(connected), green, TextColor::green, u"menu.status.connected"_s},
                 {serviceWith(connected, Status()), green, TextColor::green, u"menu.status.connected"_s},
                 {serviceWith(connected, paused()), u"pause.circle.fill"_s, TextColor::orange,
                  u"menu.status.paused"_s},
                 {serviceWith(disconnected, paused()), u"exclamationmark.circle.fill"_s, TextColor::red,
                  u"menu.status.disconnected"_s}};
        for (const auto &[service, symbol, color, label] : rows) {
            const auto dot = modelOf(service).dot;
            QCOMPARE(dot.spokenLabel, label);
            QCOMPARE(dot.symbol, symbol);
            QCOMPARE(dot.color, color);
            QCOMPARE(modelOf(service).isPaused, service.status && service.status->paused);
        }
    }

    void headerNamesDeviceAndUpdate() {
        QCOMPARE(modelOf(serviceWith(ConnectionState::starting)).deviceName, u"common.dash"_s);
        const ServiceState service = serviceWith(ConnectionState::connected, statusWith({}));
        QCOMPARE(modelOf(service).deviceName, u"Studio"_s);
        QVERIFY(!modelOf(service).availableVersion);
        UpdateState update;
        update.available.emplace().version = u"1.5.0"_s;
        QCOMPARE(menuBarModel(service, update).availableVersion, u"1.5.0"_s);
    }

    void peersOrWhyThereAreNone() {
        using enum ConnectionState;
        const InfoRow noDevices = notice(u"person.badge.plus"_s, u"menu.no_devices"_s);
        const InfoRow waiting = notice(u"antenna.radiowaves.left.and.right"_s, u"menu.waiting_peer"_s);
        const InfoRow unreachable =
            notice(u"wifi.exclamationmark"_s, u"menu.daemon_disconnected"_s, TextColor::red);
        ServiceState paired = serviceWith(connected, Status());
        paired.devices.resize(1);
        ServiceState pairedAndLost = paired;
        pairedAndLost.connectionState = disconnected;
        const std::pair<ServiceState, std::vector<InfoRow>> rows[]{
            {serviceWith(starting), {noDevices}},
            {serviceWith(connected, Status()), {noDevices}},
            {serviceWith(disconnected, Status()), {unreachable}},
            {paired, {waiting}},
            {pairedAndLost, {unreachable}},
            {serviceWith(disconnected, statusWith({{u"10b4e2"_s, u"Travel"_s}})), // of before
             {peer(u"10b4e2"_s, u"laptopcomputer"_s, u"Travel"_s)}},
            {serviceWith(connected, statusWith({{u"a10b"_s, u"Office"_s}, {u"10B4"_s, {}}, {u"10b"_s, {}}})),
             {peer(u"a10b"_s, u"pc"_s, u"Office"_s), peer(u"10B4"_s, u"pc"_s, u"10B4"_s),
              peer(u"10b"_s, u"laptopcomputer"_s, u"10b"_s)}}};
        for (const auto &[service, expected] : rows)
            QCOMPARE(modelOf(service).rows, expected);
    }

    void lastActivityIsShownAsSent() {
        Status status = statusWith({});
        status.last_activity = u""_s;
        QCOMPARE(modelOf(serviceWith(ConnectionState::connected, status)).rows.size(), std::size_t(1));
        status.last_activity = u"2026-11-22T09:41:00Z  text"_s;
        const InfoRow expected{InfoRow::Kind::lastActivity,
                               {},
                               u"clock"_s,
                               u"2026-11-22T09:41:00Z  text"_s,
                               TextColor::secondary};
        QCOMPARE(modelOf(serviceWith(ConnectionState::connected, status)).rows.back(), expected);
    }

    void transferShowsItsProgress() {
        constexpr qint64 most = std::numeric_limits<qint64>::max();
        constexpr qint64 least = std::numeric_limits<qint64>::min();
        const std::pair<FileXfer, QString> rows[]{
            {{u"report.pdf"_s, {}, 512, 2048, true}, u"report.pdf · 25%"_s},
            {{u"a"_s, 3, 1999, 2000, false}, u"a · 99%"_s},
            {{{}, {}, 0, 10, false}, u" · 0%"_s},
            {{u"unknown total"_s, {}, 300, 0, true}, u"unknown total · 0%"_s},
            {{u"a"_s, {}, 300, 200, true}, u"a · 150%"_s},
            {{u"a"_s, {}, -300, 200, true}, u"a · 0%"_s},
            {{u"a"_s, {}, least, least, true}, u"a · 0%"_s},
            {{u"a"_s, {}, most / 2, most, true}, u"a · 49%"_s},
            {{u"a"_s, {}, most, 1, true}, u"a · 9223372036854775807%"_s},
            {{u"דוח.pdf"_s, {}, 1, 4, true}, u"\u2068דוח.pdf\u2069 · 25%"_s}};
        for (const auto &[transfer, text] : rows) {
            Status status = statusWith({{u"1"_s, u"a"_s}});
            status.file_xfer = transfer;
            status.last_activity = u"earlier"_s;
            const MenuBarModel model = modelOf(serviceWith(ConnectionState::connected, status));
            QCOMPARE(model.rows.size(), std::size_t(3));
            QCOMPARE(model.rows.back().kind, InfoRow::Kind::transfer);
            QCOMPARE(model.rows.back().symbol,
                     transfer.sending ? u"arrow.up.circle"_s : u"arrow.down.circle"_s);
            QCOMPARE(model.rows.back().text, text);
        }
    }

    void historyIsCutAfterEightEntries() {
        for (const int count : {0, 1, 8, 9, 100}) {
            ServiceState service = serviceWith(ConnectionState::connected);
            for (int entry = 0; entry < count; ++entry)
                service.history.push_back({entry, {}, {}, {}, {}});
            const MenuBarModel model = modelOf(service);
            QCOMPARE(std::ssize(model.history), std::min(count, 8));
            for (int row = 0; row < std::ssize(model.history); ++row)
                QCOMPARE(model.history.at(static_cast<std::size_t>(row)).id, row);
        }
    }

    void historyRowsShowKindPreviewAndSource() {
        ServiceState service = serviceWith(ConnectionState::connected);
        service.history = {{7, u"text"_s, u"hello"_s, u"Office"_s, 1},
                           {8, u"image"_s, {}, {}, {}},
                           {9, u"files"_s, u""_s, u""_s, {}},
                           {10, u"Text"_s, {}, {}, {}},
                           {11, {}, u"x"_s, {}, {}},
                           {7, u"text/html"_s, {}, {}, {}}};
        const std::vector<MenuBarModel::HistoryRow> expected{
            {7, u"text.alignleft"_s, u"hello"_s, u"Office"_s},
            {8, u"photo"_s, {}, {}},
            {9, u"doc.on.doc"_s, {}, {}},
            {10, u"doc"_s, {}, {}},
            {11, u"doc"_s, u"x"_s, {}},
            {7, u"doc"_s, {}, {}}};
        QCOMPARE(modelOf(service).history, expected);
    }

    void outsideTextsStayInOneLine() {
        const QString rough = u"a\r\nb\u202Ec"_s;
        const QString plain = u"a bc"_s;
        Status status = statusWith({{u"1"_s, rough}, {rough, {}}});
        status.device_name = rough;
        status.last_activity = rough;
        status.file_xfer = FileXfer{rough, {}, 1, 1, true};
        ServiceState service = serviceWith(ConnectionState::connected, status);
        service.history = {{1, {}, rough, rough, {}}};
        UpdateState update;
        update.available.emplace().version = rough;

        const MenuBarModel model = menuBarModel(service, update);
        QCOMPARE(model.deviceName, plain);
        QCOMPARE(model.availableVersion, plain);
        QCOMPARE(model.rows.at(0).text, plain);
        QCOMPARE(model.rows.at(1).text, plain);
        QCOMPARE(model.rows.at(2).text, plain);
        QCOMPARE(model.rows.at(3).text, plain + u" · 100%"_s);
        QCOMPARE(model.history.at(0).preview, plain);
        QCOMPARE(model.history.at(0).source, plain);
    }
};

QTEST_GUILESS_MAIN(MenuBarModelTest)
#include "menubar_model_test.moc"
