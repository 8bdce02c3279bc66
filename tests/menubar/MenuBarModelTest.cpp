#include "menubar/MenuBarModel.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace quorbit;

namespace {

ServiceState serviceWith(ConnectionState connection, const std::vector<PeerStatus> &peers = {}) {
    ServiceState service;
    service.connectionState = connection;
    service.status.emplace().peers = peers;
    return service;
}

MenuBarModel modelOf(const ServiceState &service) {
    return menuBarModel(service, UpdateState());
}

} // namespace

// No table is installed, so that every text is its key.
class MenuBarModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void dotTellsTheState() {
        using enum ConnectionState;
        const std::tuple<ConnectionState, bool, QString, TextColor, QString> rows[]{
            {starting, true, u"ellipsis"_s, TextColor::yellow, u"starting"_s},
            {connected, false, u"checkmark"_s, TextColor::green, u"connected"_s},
            {connected, true, u"pause"_s, TextColor::orange, u"paused"_s},
            {disconnected, true, u"exclamationmark"_s, TextColor::red, u"disconnected"_s}};
        for (const auto &[connection, isPaused, symbol, color, label] : rows) {
            ServiceState service = serviceWith(connection);
            service.status->paused = isPaused;
            const auto dot = modelOf(service).dot;
            QCOMPARE(dot.spokenLabel, u"menu.status."_s + label);
            QCOMPARE(dot.symbol, symbol + u".circle.fill"_s);
            QCOMPARE(dot.color, color);
        }
    }

    void peersOrWhyThereAreNone() {
        using enum ConnectionState;
        const QString unreachable = u"wifi.exclamationmark menu.daemon_disconnected"_s;
        ServiceState paired = serviceWith(connected);
        paired.devices.resize(1);
        ServiceState pairedAndLost = paired;
        pairedAndLost.connectionState = disconnected;
        const std::pair<ServiceState, QStringList> rows[]{
            {serviceWith(connected), {u"person.badge.plus menu.no_devices"_s}},
            {paired, {u"antenna.radiowaves.left.and.right menu.waiting_peer"_s}},
            {pairedAndLost, {unreachable}},
            {serviceWith(disconnected, {{u"10b4e2"_s, u"Travel"_s}}),
             {u"laptopcomputer Travel"_s}}, // of before
            {serviceWith(connected, {{u"a10b"_s, u"Office"_s}, {u"10B4"_s, {}}, {u"10b"_s, {}}}),
             {u"pc Office"_s, u"pc 10B4"_s, u"laptopcomputer 10b"_s}}};
        for (const auto &[service, expected] : rows) {
            QStringList shown;
            for (const MenuBarModel::InfoRow &row : modelOf(service).rows) {
                shown << row.symbol + u' ' + row.text;
                QCOMPARE(row.color == TextColor::red, shown.last() == unreachable);
            }
            QCOMPARE(shown, expected);
        }
    }

    void aCrowdIsCutAfterAHundred() {
        const std::vector<PeerStatus> crowd(10'000, {u"10b"_s, u"Travel"_s});
        ServiceState service = serviceWith(ConnectionState::connected, crowd);
        service.status->last_activity = u"Received"_s;
        const auto rows = modelOf(service).rows;
        QCOMPARE(rows.size(), std::size_t{102});
        QCOMPARE(rows[99].text, u"Travel"_s);
        QVERIFY(rows[100].text.startsWith(u"common.more"_s));
        QCOMPARE(rows[101].text, u"Received"_s);
    }

    void transferShowsItsProgress() {
        constexpr qint64 most = std::numeric_limits<qint64>::max();
        constexpr qint64 least = std::numeric_limits<qint64>::min();
        const std::pair<FileXfer, QString> rows[]{
            {{u"a"_s, 3, 1999, 2000, false}, u"arrow.down.circle a · 99%"_s},
            {{u"unknown total"_s, {}, 300, 0, true}, u"arrow.up.circle unknown total · 0%"_s},
            {{{}, {}, least, least, true}, u"arrow.up.circle  · 0%"_s},
            {{u"a"_s, {}, most, 1, true}, u"arrow.up.circle a · 9223372036854775807%"_s}};
        for (const auto &[transfer, text] : rows) {
            ServiceState service = serviceWith(ConnectionState::connected, {{u"1"_s, u"a"_s}});
            service.status->file_xfer = transfer;
            const auto row = modelOf(service).rows.back();
            QCOMPARE(row.symbol + u' ' + row.text, text);
        }
    }

    void historyKindsHaveSymbols() {
        const std::pair<std::optional<QString>, QString> rows[]{{u"text"_s, u"text.alignleft"_s},
                                                                {u"image"_s, u"photo"_s},
                                                                {u"files"_s, u"doc.on.doc"_s},
                                                                {u"Text"_s, u"doc"_s},
                                                                {{}, u"doc"_s}};
        ServiceState service;
        service.history.resize(9);
        for (const auto &[kind, symbol] : rows) {
            service.history[7].type = kind;
            QCOMPARE(modelOf(service).history.back().symbol, symbol); // the list ends after eight
        }
    }

    void outsideTextsStayInOneLine() {
        const QString rough = u"a\r\nb\u202Ec"_s;
        const QString plain = u"a bc"_s;
        const QString blank = u"\u3164 "_s; // there is nothing to see in it
        const QString unnamed = qtTrId("common.unnamed");
        ServiceState service = serviceWith(ConnectionState::connected, {{u"1"_s, rough}, {rough, {}}});
        service.status->device_name = service.status->last_activity.emplace(rough);
        service.status->file_xfer = FileXfer{rough, {}, 1, 1, true};
        service.history = {{1, {}, rough, rough, {}}};
        UpdateState update;
        update.available.emplace().version = rough;

        const MenuBarModel model = menuBarModel(service, update);
        for (const QString &shown :
             {model.deviceName, *model.availableVersion, model.rows.at(0).text, model.rows.at(1).text,
              model.rows.at(2).text, model.history.at(0).preview, model.history.at(0).source})
            QCOMPARE(shown, plain);
        QCOMPARE(model.rows.at(3).text, plain + u" · 100%"_s);

        service.status->peers = {{u"id"_s, blank}, {blank, blank}};
        service.status->device_name = service.status->last_activity.emplace(blank);
        const MenuBarModel nameless = menuBarModel(service, update);
        QCOMPARE(nameless.deviceName, unnamed);
        QCOMPARE(nameless.rows.at(0).text, u"id"_s);
        QCOMPARE(nameless.rows.at(1).text, unnamed);
        QVERIFY(nameless.rows.at(2).kind != MenuBarModel::InfoRow::Kind::lastActivity);
    }
};

QTEST_GUILESS_MAIN(MenuBarModelTest)
#include "MenuBarModelTest.moc"
