#include "settings/SyncModel.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <random>

using namespace quorbit;
using namespace Qt::StringLiterals;

namespace {

constexpr int entryCount = 10'000;
constexpr int rounds = 50;

/// Entries of 20 to 200 letters, half of them Chinese or accented, as a poll would bring them.
std::vector<HistoryEntry> newHistory() {
    const std::array<QString, 4> alphabets{u"abcdefghijklm NOPQRSTUVWXYZ"_s,
                                           u"ssh deploy@10.0.0.12 'status'"_s, u"一张图片剪贴板历史记录"_s,
                                           u"ärgerliche Größe élan ÇA"_s};
    std::mt19937 random(1);
    std::vector<HistoryEntry> history;
    for (int id = 0; id < entryCount; ++id) {
        const QString &alphabet = alphabets[random() % alphabets.size()];
        QString preview;
        for (unsigned length = 20 + static_cast<unsigned>(random() % 181); length > 0; --length)
            preview += alphabet[static_cast<qsizetype>(random() % static_cast<unsigned>(alphabet.size()))];
        HistoryEntry &entry = history.emplace_back();
        entry.id = id;
        entry.preview = preview;
    }
    return history;
}

/// Milliseconds that this process has computed for; other programs' load does not count.
double cpuTime() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// The middle one of many runs, in milliseconds of computing.
template <typename Prepare, typename Run>
double median(Prepare prepare, Run run) {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        prepare();
        const double start = cpuTime();
        run();
        times.push_back(cpuTime() - start);
    }
    std::nth_element(times.begin(), times.begin() + rounds / 2, times.end());
    return times[rounds / 2];
}

} // namespace

int main() {
    std::vector<HistoryEntry> history = newHistory();
    HistoryFilter filter;
    std::size_t found = 0;
    const auto search = [&] { found = filter.matches(history, u"Ar"_s).size(); };

    const double first = median([&] { filter = {}; }, search);
    const double next = median([] {}, search);
    const double polled = median([&] { history = newHistory(); }, search);
    std::printf(
        "history filter, %d entries, %zu found: first %.2f ms, next key %.2f ms, after a poll %.2f ms\n",
        entryCount, found, first, next, polled);
}
