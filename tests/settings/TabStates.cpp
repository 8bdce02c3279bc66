#include "settings/TabStates.h"

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

const QByteArray usual =
    R"({"device_id":"10b4e2f09a77c1d3","port":8080,"device_name":"Studio Mac","paused":false,)"
    R"("peers":[{"device_id":"10b91c33","name":"Travel laptop"},{"device_id":"77aa01fe","name":"Office Linux"}],)"
    R"("last_activity":"Received text from Office Linux"})";
const QByteArray empty =
    R"({"device_id":"10b4e2f09a77c1d3","port":8080,"device_name":"Studio Mac","paused":false,"peers":[]})";
const QByteArray settings =
    R"({"device_name":"Studio Mac","port":8080,"sync_text":true,"sync_image":true,"sync_files":false,)"
    R"("kvm_enabled":false,"kvm_side":"left","file_size_cap_mb":10240})";

const QByteArray history =
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

QByteArray changed(QByteArray status, const QByteArray &before, const QByteArray &after) {
    return status.replace(before, after);
}

} // namespace

void TabState::answerFrom(test::FakeService &service) const {
    service.answer("GET /api/status", {status});
    service.answer("GET /api/settings", {settings});
    service.answer("GET /api/history", {history});
}

std::vector<TabState> tabStates() {
    const QByteArray paused = changed(usual, R"("paused":false)", R"("paused":true)");
    const QByteArray full = changed(
        changed(changed(usual, "Studio Mac", "The computer in the corner office on the second floor"), "\"}]",
                R"("},{"device_id":"5c01b8aa93d2470fbe1c6a0d5e7f8899","name":"A travel laptop )"
                R"(whose name is longer than any row could show"},{"device_id":"77","name":""}])"),
        "text from", "128 files from a computer whose name is longer than any row could ever show, and");
    return {{"nothing"_L1, {}, {}, {}},
            {"empty"_L1, empty, settings, "[]"},
            {"usual"_L1, usual, settings, '[' + history + ']'},
            {"full"_L1, full, settings, '[' + history + ',' + awkwardHistory + ']'},
            {"paused"_L1, paused, settings, '[' + history + ']'}};
}

QByteArray longHistory(int count) {
    QByteArrayList entries;
    for (int id = 1; id <= count; ++id) {
        const QByteArray number = QByteArray::number(id);
        const QByteArray preview = id % 100 == 0 ? "Needle " + number + " in a haystack of lines"
                                                 : "Line " + number + " of something that was copied";
        entries << R"({"id":)" + number + R"(,"type":"text","source":"Office Linux","label":")" + preview +
                       R"(, of the usual length of a preview"})";
    }
    return '[' + entries.join(',') + ']';
}

} // namespace quorbit
