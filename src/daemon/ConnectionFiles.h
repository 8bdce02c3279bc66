#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace quorbit {

/// The service's address and the bearer token that its requests need.
struct ConnectionInfo {
    QUrl address;
    QString token; ///< may be empty
};

/// Reads the two small files that a running service leaves under the user's home; absent while either of them
/// is missing, unreadable or malformed. Never waits, whatever lies at their paths.
std::optional<ConnectionInfo> readConnectionFiles(const QString &homeDirectory);

} // namespace quorbit
