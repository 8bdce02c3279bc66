#include "menubar/MenuBarModel.h"
#include "support/Row.h"

#include <limits>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

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

/// The rows' symbols and texts.
QStringList rowsOf(const ServiceState &service) {
    QStringList rows;
    for (const MenuBarModel::InfoRow &row : modelOf(service).rows)
        rows << row.symbol + u' ' + row.text;
    return rows;
}

} // namespace

// No table is installed, so that every text is its key.
class MenuBarModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void dotTellsTheState() {
        using enum ConnectionState;
        const std::tuple<const char *, ConnectionState, bool, QString, TextColor> rows[]{
            {"starting", starting, true, u"ellipsis"_s, TextColor::yellow},
            {"connected", connected, false, u"checkmark"_s, TextColor::green},
            {"paused", connected, true, u"pause"_s, TextColor::orange},
            {"disconnected", disconnected, true, u"exclamationmark"_s, TextColor::red}};
        for (const auto &[label, connection, isPaused, symbol, color] : rows) {
            const Row row(label);
            ServiceState service = serviceWith(connection);
            service.status->paused = isPaused;
            const auto dot = modelOf(service).dot;
            QCOMPARE(dot.spokenLabel, u"menu.status."_s + QLatin1String(label));
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
        const std::tuple<const char *, ServiceState, QStringList> rows[]{
            {"none", serviceWith(connected), {u"person.badge.plus menu.no_devices"_s}},
            {"paired", paired, {u"antenna.radiowaves.left.and.right menu.waiting_peer"_s}},
            {"paired and lost", pairedAndLost, {unreachable}},
            {"of before",
             serviceWith(disconnected, {{u"10b4"_s, u"Travel"_s}}),
             {u"laptopcomputer Travel"_s}},
            {"kinds and names",
             serviceWith(connected, {{u"a10b"_s, u"Office"_s}, {u"10B4"_s, {}}, {u"10b"_s, u"\u3164 "_s}}),
             {u"pc Office"_s, u"pc 10B4"_s, u"laptopcomputer 10b"_s}}};
        for (const auto &[name, service, expected] : rows) {
            const Row row(name);
            QCOMPARE(rowsOf(service), expected);
            QCOMPARE(modelOf(service).rows[0].color == TextColor::red, expected[0] == unreachable);
        }
    }

    void aCrowdIsCutAfterAHundred() {
        ServiceState service =
            serviceWith(ConnectionState::connected, std::vector<PeerStatus>(10'000, {u"10b"_s, u"Travel"_s}));
        service.status->last_activity = u"Received"_s;
        const QStringList rows = rowsOf(service);
        QCOMPARE(rows.lastIndexOf(u"laptopcomputer Travel"_s), 99);
        QVERIFY(rows[100].startsWith(u"pc common.more"_s));
        QCOMPARE(rows.mid(101), QStringList(u"clock Received"_s));
    }

    void transferShowsItsProgress() {
        constexpr qint64 most = std::numeric_limits<qint64>::max();
        constexpr qint64 least = std::numeric_limits<qint64>::min();
        const std::pair<FileXfer, QString> rows[]{
            {{u"a"_s, 3, 1999, 2000, false}, u"arrow.down.circle a · 99%"_s},
            {{u"b"_s, {}, 300, 0, true}, u"arrow.up.circle b · 0%"_s},
            {{{}, {}, least, least, true}, u"arrow.up.circle  · 0%"_s},
            {{u"a"_s, {}, most, 1, true}, u"arrow.up.circle a · 9223372036854775807%"_s}};
        for (const auto &[transfer, text] : rows) {
            ServiceState service = serviceWith(ConnectionState::connected);
            service.status->file_xfer = transfer;
            QCOMPARE(rowsOf(service).last(), text);
        }
    }

    void historyEndsAfterEight() {
        ServiceState service;
        service.history.resize(9);
        const QStringList kinds{u"text"_s, u"image"_s, u"files"_s, u"Text"_s};
        for (qsizetype entry = 0; entry < kinds.size(); ++entry)
            service.history[static_cast<std::size_t>(entry)].type = kinds[entry];
        QStringList symbols;
        for (const HistoryItem &item : modelOf(service).history)
            symbols << item.symbol;
        QCOMPARE(symbols, (QStringList{u"text.alignleft"_s, u"photo"_s, u"doc.on.doc"_s, u"doc"_s, u"doc"_s,
                                       u"doc"_s, u"doc"_s, u"doc"_s}));
    }
};

QTEST_GUILESS_MAIN(MenuBarModelTest)
#include "MenuBarModelTest.moc"
