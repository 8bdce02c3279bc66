#include "settings/sync/SyncModel.h"

#include "wording/TextRules.h"

#include <numeric>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr std::size_t fewestSearchable = 6;

/// How texts are compared: letter case does not count, nor whether an accent is a character of its own, as
/// it is in file names of some systems.
QString folded(const QString &text) {
    return text.toLower().normalized(QString::NormalizationForm_C);
}

} // namespace

std::vector<std::size_t> HistoryFilter::matches(const std::vector<HistoryEntry> &history,
                                                const QString &search) {
    const auto size = static_cast<qsizetype>(history.size());
    if (folded_.size() > 2 * size)
        folded_.clear(); // Most of it is of entries that are gone.
    const QString query = folded(trimmedSpaces(search));
    if (query.isEmpty()) {
        std::vector<std::size_t> all(history.size());
        std::iota(all.begin(), all.end(), std::size_t{0});
        return all;
    }
    folded_.reserve(size);

    std::vector<std::size_t> found;
    for (std::size_t index = 0; index < history.size(); ++index) {
        const std::optional<QString> &preview = history[index].preview;
        if (!preview)
            continue;
        Folded &kept = folded_[history[index].id];
        if (kept.preview != *preview)
            kept = {*preview, folded(*preview)};
        if (kept.folded.contains(query))
            found.push_back(index);
    }
    return found;
}

std::optional<SyncModel> syncModel(const ServiceState &service, const QString &search,
                                   HistoryFilter &filter) {
    if (!service.settings)
        return std::nullopt;
    SyncModel model{.syncsText = service.settings->sync_text,
                    .syncsImage = service.settings->sync_image,
                    .syncsFiles = service.settings->sync_files,
                    .fileCap = service.settings->file_size_cap_mb,
                    .history = {}};
    if (service.history.empty())
        return model;
    SyncModel::History history{.hasSearchField = service.history.size() >= fewestSearchable, .rows = {}};
    for (const std::size_t index : filter.matches(service.history, search)) {
        const HistoryEntry &entry = service.history[index];
        history.rows.push_back({entry.id, historyKindSymbol(entry.type), entry.preview.value_or(QString()),
                                entry.source.value_or(QString())});
    }
    model.history = std::move(history);
    return model;
}

} // namespace quorbit
