#pragma once

#include "update/Manifest.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace quorbit {

namespace version {

/// The components of a version number. What follows the first hyphen does not count; a component that is not
/// a decimal number is 0; the result may be empty.
std::vector<qint64> parse(const QString &text);

/// Whether `version` is strictly newer than `isNewerThan`. Missing components are 0 and suffixes have no
/// order.
bool compare(const QString &version, const QString &isNewerThan);

} // namespace version

/// The Chinese notes where the first of the interface languages (BCP 47, best first) is Chinese, else the
/// English ones; for want of these the others.
std::optional<QString> pickNotes(const std::optional<Manifest::Notes> &notes, const QStringList &languages);

} // namespace quorbit
