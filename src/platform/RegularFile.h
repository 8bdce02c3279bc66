#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quorbit {

/// What a regular file holds; absent when there is none, when it cannot be read and when it holds more than
/// `maximumSize` bytes. Never waits: a pipe or a device in the file's place is none.
std::optional<QByteArray> readRegularFile(const QString &path, qint64 maximumSize);

} // namespace quorbit
