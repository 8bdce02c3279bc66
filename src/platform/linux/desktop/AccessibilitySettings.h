#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace quorbit {

/// The command that opens a desktop's page of accessibility settings.
struct SettingsCommand {
    QString executable;
    QStringList arguments;
};

/// `desktops` is what XDG_CURRENT_DESKTOP says, names separated by colons; `find` gives the full path of an
/// installed program or the empty text. Absent when no fitting program is installed.
std::optional<SettingsCommand>
accessibilitySettingsCommand(const QString &desktops, const std::function<QString(const QString &)> &find);

} // namespace quorbit
