#include "settings/TabStates.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

QByteArray compact(const auto &value) {
    return QJsonDocument(value).toJson(QJsonDocument::Compact);
}

QJsonObject status() {
    return {{u"device_id"_s, u"10b4e2f09a77c1d3"_s},
            {u"device_name"_s, u"Studio Mac"_s},
            {u"port"_s, 8080},
            {u"paused"_s, false},
            {u"peers"_s,
             QJsonArray{QJsonObject{{u"device_id"_s, u"10b91c33"_s}, {u"name"_s, u"Travel laptop"_s}},
                        QJsonObject{{u"device_id"_s, u"77aa01fe"_s}, {u"name"_s, u"Office Linux"_s}}}},
            {u"last_activity"_s, u"Received text from Office Linux"_s}};
}

QJsonObject settings() {
    return {{u"device_name"_s, u"Studio Mac"_s},
            {u"port"_s, 8080},
            {u"file_size_cap_mb"_s, 100},
            {u"sync_text"_s, true},
            {u"sync_image"_s, true},
            {u"sync_files"_s, false},
            {u"kvm_enabled"_s, false},
            {u"kvm_side"_s, u"left"_s}};
}

QJsonObject entry(int id, const QString &type, const QString &preview, const QString &source) {
    return {{u"id"_s, id}, {u"type"_s, type}, {u"label"_s, preview}, {u"source"_s, source}};
}

QJsonArray shortHistory() {
    return {entry(1, u"text"_s, u"ssh deploy@10.0.0.12 'systemctl status quorbitd'"_s, u"Office Linux"_s),
            entry(2, u"image"_s, u"Screenshot 1440 × 900"_s, u"Travel laptop"_s),
            entry(3, u"files"_s, u"3 files"_s, QString())};
}

QJsonArray awkwardHistory() {
    QJsonArray history = shortHistory();
    history.append(entry(4, u"text"_s,
                         u"A long line that is copied from somewhere and does not fit into one row "_s +
                             u"of the window, but ends with something that tells it apart"_s,
                         u"A computer with a name that is longer than it should be for this row"_s));
    history.append(entry(5, u"link"_s, u"two lines\nand a\ttab, <b>no markup</b> & so on"_s, u"?"_s));
    history.append(entry(6, u"text"_s, u"שלום עולם, זה טקסט (1)"_s, u"מחשב המשרד"_s));
    history.append(QJsonObject{{u"id"_s, 7}});
    history.append(entry(8, u"text"_s, u"今天下午三点在二楼会议室开会，请带上季度报告"_s, u"办公室 Linux"_s));
    return history;
}

} // namespace

std::vector<TabState> tabStates() {
    QJsonObject bare = status();
    bare[u"peers"_s] = QJsonArray();
    bare.remove(u"last_activity"_s);

    QJsonObject full = status();
    full[u"device_name"_s] = u"The computer in the corner office on the second floor"_s;
    QJsonArray peers = full[u"peers"_s].toArray();
    peers.append(
        QJsonObject{{u"device_id"_s, u"5c01b8aa93d2470fbe1c6a0d5e7f8899"_s},
                    {u"name"_s, u"A travel laptop whose name is longer than any row could ever show"_s}});
    peers.append(QJsonObject{{u"device_id"_s, u"77"_s}, {u"name"_s, QString()}});
    full[u"peers"_s] = peers;
    full[u"last_activity"_s] =
        u"Received 128 files from A travel laptop whose name is longer than any row "_s +
        u"could ever show, and more of it"_s;
    QJsonObject large = settings();
    large[u"file_size_cap_mb"_s] = 10240;

    QJsonObject paused = status();
    paused[u"paused"_s] = true;

    return {{"nothing"_L1, {}, {}, {}},
            {"empty"_L1, compact(bare), compact(settings()), "[]"},
            {"usual"_L1, compact(status()), compact(settings()), compact(shortHistory())},
            {"full"_L1, compact(full), compact(large), compact(awkwardHistory())},
            {"paused"_L1, compact(paused), compact(settings()), compact(shortHistory())}};
}

QByteArray longHistory(int count) {
    QJsonArray history;
    for (int id = 1; id <= count; ++id) {
        const QString preview =
            (id % 100 == 0 ? u"Needle %1 in a haystack of lines, of the usual length of a preview"_s
                           : u"Line %1 of something that was copied, of the usual length of a preview"_s)
                .arg(id);
        history.append(entry(id, u"text"_s, preview, u"Office Linux"_s));
    }
    return compact(history);
}

} // namespace quorbit
