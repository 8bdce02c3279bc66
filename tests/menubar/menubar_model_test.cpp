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
        const std::tuple<ServiceState, QString, TextColor, QString> rows[]{
            {serviceWith(starting, paused()), yellow, TextColor::yellow, u"menu.status.starting"_s},
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
        }
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

    void moreComputersThanFitAreCounted() {
        Status crowd = statusWith(std::vector<PeerStatus>(10'000, {u"10b"_s, u"Travel"_s}));
        crowd.last_activity = u"Received"_s;
        const std::vector<InfoRow> rows = modelOf(serviceWith(ConnectionState::connected, crowd)).rows;
        QCOMPARE(rows.size(), std::size_t{102});
        QCOMPARE(rows[99].kind, InfoRow::Kind::peer);
        QCOMPARE(rows[100].kind, InfoRow::Kind::notice);
        QCOMPARE(rows[101].text, u"Received"_s);
    }

    void transferShowsItsProgress() {
        constexpr qint64 most = std::numeric_limits<qint64>::max();
        constexpr qint64 least = std::numeric_limits<qint64>::min();
        const std::pair<FileXfer, QString> rows[]{
            {{u"a"_s, 3, 1999, 2000, false}, u"a · 99%"_s},
            {{{}, {}, 0, 10, false}, u" · 0%"_s},
            {{u"unknown total"_s, {}, 300, 0, true}, u"unknown total · 0%"_s},
            {{u"a"_s, {}, 300, 200, true}, u"a · 150%"_s},
            {{u"a"_s, {}, -300, 200, true}, u"a · 0%"_s},
            {{u"a"_s, {}, least, least, true}, u"a · 0%"_s},
            {{u"a"_s, {}, most, 1, true}, u"a · 9223372036854775807%"_s},
            {{u"דוח.pdf"_s, {}, 1, 4, true}, u"\u2068דוח.pdf\u2069 · 25%"_s}};
        for (const auto &[transfer, text] : rows) {
            Status status = statusWith({{u"1"_s, u"a"_s}});
            status.file_xfer = transfer;
            const InfoRow row = modelOf(serviceWith(ConnectionState::connected, status)).rows.back();
            QCOMPARE(row.kind, InfoRow::Kind::transfer);
            QCOMPARE(row.symbol, transfer.sending ? u"arrow.up.circle"_s : u"arrow.down.circle"_s);
            QCOMPARE(row.text, text);
        }
    }

    void historyIsCutAfterEightEntries() {
        ServiceState service = serviceWith(ConnectionState::connected);
        for (const int count : {8, 9}) {
            service.history.resize(static_cast<std::size_t>(count));
            QCOMPARE(std::ssize(modelOf(service).history), 8);
        }
    }

    void historyKindsHaveSymbols() {
        const std::pair<std::optional<QString>, QString> rows[]{{u"text"_s, u"text.alignleft"_s},
                                                                {u"image"_s, u"photo"_s},
                                                                {u"files"_s, u"doc.on.doc"_s},
                                                                {u"Text"_s, u"doc"_s},
                                                                {{}, u"doc"_s}};
        for (const auto &[kind, symbol] : rows) {
            ServiceState service;
            service.history = {{7, kind, {}, {}, {}}};
            QCOMPARE(modelOf(service).history[0].symbol, symbol);
        }
    }

    void outsideTextsStayInOneLine() {
        const QString rough = u"a\r\nb\u202Ec"_s;
        const QString plain = u"a bc"_s;
        Status status = statusWith({{u"1"_s, rough}, {rough, {}}});
        status.device_name = status.last_activity.emplace(rough);
        status.file_xfer = FileXfer{rough, {}, 1, 1, true};
        ServiceState service = serviceWith(ConnectionState::connected, status);
        service.history = {{1, {}, rough, rough, {}}};
        UpdateState update;
        update.available.emplace().version = rough;

        const MenuBarModel model = menuBarModel(service, update);
        for (const QString &shown :
             {model.deviceName, *model.availableVersion, model.rows.at(0).text, model.rows.at(1).text,
              model.rows.at(2).text, model.history.at(0).preview, model.history.at(0).source})
            QCOMPARE(shown, plain);
        QCOMPARE(model.rows.at(3).text, plain + u" · 100%"_s);
    }
};

QTEST_GUILESS_MAIN(MenuBarModelTest)
#include "menubar_model_test.moc"
