#include "Timing.h"
#include "daemon/ServiceState.h"
#include "support/Samples.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <vector>

/// What one refresh with a long clipboard history costs beyond the bare parsing of the same bytes. Prints, in
/// milliseconds, a line for each round: the bare parsing, and decoding and publishing.

using namespace quorbit;

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

} // namespace

int main() {
    const QByteArray history = longHistory();
    const std::vector<QByteArray> bodies{test::statusJson, test::settingsJson, test::devicesJson, history};

    ServiceState state;
    std::size_t parsed = 0;
    for (int round = 0; round < rounds; ++round) {
        const double parsing = computingTime([&] {
            for (const QByteArray &body : bodies)
                parsed += nlohmann::json::parse(body.begin(), body.end()).size();
        });
        const double decoding = computingTime([&] {
            state.status = wire::decode<std::optional<Status>>(bodies[0]);
            state.settings = wire::decode<std::optional<DaemonSettings>>(bodies[1]);
            state.devices = *wire::decode<std::optional<std::vector<Device>>>(bodies[2]);
            state.history = *wire::decode<std::optional<std::vector<HistoryEntry>>>(bodies[3]);
        });
        std::printf("%.4f %.4f\n", parsing, decoding);
    }
    return parsed > 0 && state.history.size() == historyEntries ? 0 : 1;
}
