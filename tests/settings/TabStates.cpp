#include "settings/TabStates.h"

#include <QByteArrayList>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

const QByteArray identity = R"({"device_id":"10b4e2f09a77c1d3","port":8080,)";
const QByteArray usualName = R"("device_name":"Studio Mac",)";
const QByteArray usualPeers =
    R"({"device_id":"10b91c33","name":"Travel laptop"},{"device_id":"77aa01fe","name":"Office Linux"})";
const QByteArray usualRest =
    R"("peers":[)" + usualPeers + R"(],"last_activity":"Received text from Office Linux"})";

const QByteArray empty = identity + usualName + R"("paused":false,"peers":[]})";
const QByteArray usual = identity + usualName + R"("paused":false,)" + usualRest;
const QByteArray paused = identity + usualName + R"("paused":true,)" + usualRest;
const QByteArray full =
    identity +
    R"("paused":false,"device_name":"The computer in the corner office on the second floor","peers":[)" +
    usualPeers +
    R"(,{"device_id":"5c01b8aa93d2470fbe1c6a0d5e7f8899",)"
    R"("name":"A travel laptop whose name is longer than any row could ever show"},{"device_id":"77","name":""}],)"
    R"("last_activity":"Received 128 files from A travel laptop whose name is longer than any row )"
    R"(could ever show, and more of it"})";

QByteArray settings(int fileCap) {
    return R"({"device_name":"Studio Mac","port":8080,"sync_text":true,"sync_image":true,"sync_files":false,)"
           R"("kvm_enabled":false,"kvm_side":"left","file_size_cap_mb":)" +
           QByteArray::number(fileCap) + '}';
}

const QByteArray shortHistory =
    R"({"id":1,"type":"text","label":"ssh deploy@10.0.0.12 'systemctl status quorbitd'","source":"Office Linux"},)"
    R"({"id":2,"type":"image","label":"Screenshot 1440 × 900","source":"Travel laptop"},)"
    R"({"id":3,"type":"files","label":"3 files","source":""})";
const QByteArray awkwardHistory =
    R"({"id":4,"type":"text","label":"A long line that is copied from somewhere and does not fit into one row )"
    R"(of the window, but ends with something that tells it apart",)"
    R"("source":"A computer with a name that is longer than it should be for this row"},)"
    R"({"id":5,"type":"link","label":"two lines\nand a\ttab, <b>no markup</b> & so on","source":"?"},)"
    R"json({"id":6,"type":"text","label":"שלום עולם, זה טקסט (1)","source":"מחשב המשרד"},{"id":7},)json"
    R"({"id":8,"type":"text","label":"今天下午三点在二楼会议室开会，请带上季度报告","source":"办公室 Linux"})";

} // namespace

std::vector<TabState> tabStates() {
    const QByteArray history = '[' + shortHistory + ']';
    return {{"nothing"_L1, {}, {}, {}},
            {"empty"_L1, empty, settings(100), "[]"},
            {"usual"_L1, usual, settings(100), history},
            {"full"_L1, full, settings(10240), '[' + shortHistory + ',' + awkwardHistory + ']'},
            {"paused"_L1, paused, settings(100), history}};
}

QByteArray longHistory(int count) {
    QByteArrayList history;
    for (int id = 1; id <= count; ++id) {
        const QByteArray number = QByteArray::number(id);
        const QByteArray preview = id % 100 == 0 ? "Needle " + number + " in a haystack of lines"
                                                 : "Line " + number + " of something that was copied";
        history << R"({"id":)" + number + R"(,"type":"text","source":"Office Linux","label":")" + preview +
                       R"(, of the usual length of a preview"})";
    }
    return '[' + history.join(',') + ']';
}

} // namespace quorbit
