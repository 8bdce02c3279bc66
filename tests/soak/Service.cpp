#include "soak/Service.h"

#include "support/Samples.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace quorbit::test {

namespace {

QByteArray text(const auto &value) {
    return QJsonDocument(value).toJson(QJsonDocument::Compact);
}

QJsonObject sample(const QByteArray &json) {
    return QJsonDocument::fromJson(json).object();
}

QString deviceId(int number) {
    return u"device-%1"_s.arg(number);
}

QJsonObject status(int poll) {
    static const QJsonObject usual = sample(statusJson);
    QJsonObject status = usual;
    QJsonArray peers;
    for (int peer = 0; peer < poll % 4; ++peer)
        peers.append(QJsonObject{{u"device_id"_s, deviceId(peer)},
                                 {u"name"_s, u"Computer %1 of %2"_s.arg(peer).arg(poll % 4)}});
    status[u"peers"_s] = peers;
    status[u"paused"_s] = poll % 5 == 0;
    status[u"accessibility_granted"_s] = poll % 8 < 4;
    status[u"accessibility_needs_restart"_s] = poll % 8 == 5;
    status[u"last_activity"_s] = u"Received text number %1"_s.arg(poll % servicePeriod);
    if (poll % 2 == 0)
        status.remove(u"file_xfer"_s);
    else
        status[u"file_xfer"_s] = QJsonObject{{u"name"_s, u"a.bin"_s},
                                             {u"sent"_s, poll % 100},
                                             {u"total"_s, 100},
                                             {u"sending"_s, poll % 4 == 1}};
    return status;
}

QJsonObject settings(int poll) {
    static const QJsonObject usual = sample(settingsJson);
    QJsonObject settings = usual;
    settings[u"sync_text"_s] = poll % 2 == 0;
    settings[u"sync_image"_s] = poll % 4 < 2;
    settings[u"file_size_cap_mb"_s] = 50 + poll % 10;
    settings[u"kvm_enabled"_s] = poll % 10 < 8;
    settings[u"kvm_master"_s] = poll % 20 < 10;
    settings[u"kvm_switch_delay_ms"_s] = poll % 2 == 0 ? 250 : 0;
    QJsonObject layout;
    for (int screen = 0; screen < poll % 4; ++screen)
        layout[deviceId(screen)] = QJsonObject{
            {u"x"_s, 1500 * screen + poll % 10}, {u"y"_s, poll % 100}, {u"w"_s, 1440}, {u"h"_s, 900}};
    settings[u"kvm_layout"_s] = layout;
    settings[u"kvm_screens"_s] = layout;
    return settings;
}

QJsonArray devices(int poll) {
    QJsonArray devices;
    for (int device = 0; device < 1 + poll % 5; ++device)
        devices.append(
            QJsonObject{{u"device_id"_s, deviceId(device)},
                        {u"name"_s, u"Computer %1"_s.arg(device)},
                        {u"platform"_s, device % 2 == 0 ? u"linux"_s : u"darwin"_s},
                        {u"fingerprint"_s, u"sha256:%1"_s.arg(device)},
                        {u"online"_s, (poll + device) % 2 == 0},
                        {u"last_seen"_s, qint64{1'700'000'000'000} - qint64{60'000} * (poll % 10)}});
    return devices;
}

QJsonArray history(int poll) {
    QJsonArray history;
    const int oldest = poll % 40;
    for (int entry = oldest; entry < oldest + poll % 25; ++entry)
        history.append(QJsonObject{{u"id"_s, entry},
                                   {u"type"_s, entry % 3 == 0 ? u"image"_s : u"text"_s},
                                   {u"source"_s, u"Computer %1"_s.arg(entry % 4)},
                                   {u"label"_s, u"Entry %1 of something that was copied"_s.arg(entry)},
                                   {u"time"_s, entry}});
    return history;
}

constexpr const char *resources[] = {"GET /api/status", "GET /api/settings", "GET /api/devices",
                                     "GET /api/history"};

} // namespace

void changeService(FakeService &service, int poll) {
    service.answer(resources[0], {text(status(poll))});
    service.answer(resources[1], {text(settings(poll))});
    service.answer(resources[2], {text(devices(poll))});
    service.answer(resources[3], {text(history(poll))});
}

Trouble troubleAt(int poll) {
    switch (poll % 100) {
    case 7:
    case 27:
        return Trouble::garbage;
    case 29:
    case 49:
        return Trouble::cutOff;
    case 53:
    case 73:
        return Trouble::shut;
    case 77:
        return Trouble::hang;
    case 91:
        return Trouble::refused;
    default:
        return Trouble::none;
    }
}

void trouble(FakeService &service, Trouble trouble) {
    static int turn = 0;
    const char *one = resources[++turn % 4];
    switch (trouble) {
    case Trouble::garbage:
        service.answer(one, {R"({"device_id":7,"peers":[{"name":)"});
        break;
    case Trouble::cutOff:
        service.answer(one, {"[", 200, {}, Answer::cutOff});
        break;
    case Trouble::shut:
    case Trouble::hang:
        for (const char *resource : resources)
            service.answer(resource, {{}, 200, {}, trouble == Trouble::hang ? Answer::hang : Answer::shut});
        break;
    case Trouble::none:
    case Trouble::refused:
        break;
    }
}

} // namespace quorbit::test
