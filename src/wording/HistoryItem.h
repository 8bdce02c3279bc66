#pragma once

#include <QString>

#include <optional>

namespace quorbit {

/// An entry of the clipboard history as the views show it.
struct HistoryItem {
    qint64 id = 0;
    QString symbol;
    QString preview;
    QString source; ///< empty: not shown

    bool operator==(const HistoryItem &) const = default;
};

/// The symbol of a history entry of that type; a plain document for types that this program does not know.
QString historyKindSymbol(const std::optional<QString> &type);

/// What a screen reader calls an entry, of its preview and source as they are shown.
QString spokenHistoryItem(const QString &preview, const QString &source);

} // namespace quorbit
