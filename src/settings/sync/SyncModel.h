#pragma once

#include "daemon/ServiceState.h"
#include "wording/HistoryItem.h"

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace quorbit {

/// What the Sync tab shows, but for its fixed labels.
struct SyncModel {
    struct History {
        bool hasSearchField = false;
        std::vector<HistoryItem> rows; ///< empty: the tab says that nothing matches

        bool operator==(const History &) const = default;
    };

    bool syncsText = false;
    bool syncsImage = false;
    bool syncsFiles = false;
    qint64 fileCap = 0;             ///< megabytes
    std::optional<History> history; ///< absent: no such section

    bool operator==(const SyncModel &) const = default;
};

/// The range of the file-size stepper and how far it moves at a press, in megabytes.
constexpr qint64 smallestFileCap = 1;
constexpr qint64 largestFileCap = 10240;
constexpr qint64 fileCapStep = 10;

/// Finds history entries by their preview. It keeps the previews as they are compared, so that a search costs
/// little at every key press; whatever it keeps, the answer depends on the arguments alone.
class HistoryFilter {
public:
    /// The indices of the entries whose preview contains `search`, in any letter case and without the spaces
    /// around it; all of them for an empty search.
    std::vector<std::size_t> matches(const std::vector<HistoryEntry> &history, const QString &search);

private:
    struct Folded {
        QString preview;
        QString folded;
    };
    QHash<qint64, Folded> folded_;
};

/// Absent while there are no settings: the tab says that it is loading.
std::optional<SyncModel> syncModel(const ServiceState &service, const QString &search, HistoryFilter &filter);

} // namespace quorbit
