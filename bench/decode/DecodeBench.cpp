#include "daemon/ServiceState.h"
#include "support/Samples.h"

#include <nlohmann/json.hpp>

#include <QTextStream>

#include <algorithm>
#include <chrono>
#include <limits>
#include <vector>

/// What one refresh with a long clipboard history costs beyond the bare parsing of the same bytes.

using namespace quorbit;
using namespace Qt::StringLiterals;

namespace {

constexpr int historyEntries = 1000;
constexpr int rounds = 200;

QByteArray longHistory() {
    QByteArray json = "[";
    for (int id = 0; id < historyEntries; ++id) {
        json += R"({"id":)" + QByteArray::number(id) + R"(,"type":"text","source":"Laptop \u4e2d\u6587",)" +
                R"("label":"The quick brown fox jumps over the lazy dog, 敏捷的棕色狐狸 number )" +
                QByteArray::number(id) + R"(","time":)" + QByteArray::number(1700000000000 + id) + "},";
    }
    json.back() = ']';
    return json;
}

/// The duration of one call, in microseconds.
template <class Action>
double durationOf(const Action &action) {
    const auto begin = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count();
}

} // namespace

int main() {
    const QByteArray history = longHistory();
    const std::vector<QByteArray> bodies{test::statusJson, test::settingsJson, test::devicesJson, history};

    ServiceState state;
    std::size_t parsed = 0;
    // The fastest of many rounds that take turns, so that other work of the machine disturbs neither.
    double decoding = std::numeric_limits<double>::infinity();
    double parsing = decoding;
    for (int round = 0; round < rounds; ++round) {
        decoding = std::min(decoding, durationOf([&] {
                                state.status = wire::decode<std::optional<Status>>(bodies[0]);
                                state.settings = wire::decode<std::optional<DaemonSettings>>(bodies[1]);
                                state.devices = *wire::decode<std::optional<std::vector<Device>>>(bodies[2]);
                                state.history =
                                    *wire::decode<std::optional<std::vector<HistoryEntry>>>(bodies[3]);
                            }));
        parsing = std::min(parsing, durationOf([&] {
                               for (const QByteArray &body : bodies)
                                   parsed += nlohmann::json::parse(body.begin(), body.end()).size();
                           }));
    }

    QTextStream(stdout) << u"decode and publish %1 us, bare parse %2 us, ratio %3 (%4 entries, %5 bytes)\n"_s
                               .arg(decoding, 0, 'f', 0)
                               .arg(parsing, 0, 'f', 0)
                               .arg(decoding / parsing, 0, 'f', 2)
                               .arg(state.history.size())
                               .arg(history.size());
    return parsed > 0 ? 0 : 1;
}
