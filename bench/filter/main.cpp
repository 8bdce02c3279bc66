#include "Timing.h"
#include "settings/sync/SyncModel.h"

#include <array>
#include <cstdio>
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

} // namespace

/// Prints, in milliseconds, a line for each round: the first key of a search, and a later one.
int main() {
    const std::vector<HistoryEntry> history = newHistory();
    std::size_t found = 0;
    for (int round = 0; round < rounds; ++round) {
        HistoryFilter filter;
        const auto search = [&] { found = filter.matches(history, u"Ar"_s).size(); };
        const double first = computingTime(search);
        const double later = computingTime(search);
        std::printf("%.4f %.4f\n", first, later);
    }
    return found > 0 ? 0 : 1;
}
