#include "platform/linux/desktop/AccessibilitySettings.h"

namespace quorbit {

namespace {

struct SettingsProgram {
    const char *desktop;
    const char *executable;
    const char *argument;
};

constexpr SettingsProgram programs[] = {
    {"GNOME", "gnome-control-center", "universal-access"},
    {"GNOME-Classic", "gnome-control-center", "universal-access"},
    {"Unity", "unity-control-center", "universal-access"},
    {"Budgie", "budgie-control-center", "universal-access"},
    {"Budgie", "gnome-control-center", "universal-access"},
    {"KDE", "systemsettings", "kcm_access"},
    {"KDE", "systemsettings5", "kcm_access"},
    {"KDE", "kcmshell6", "kcm_access"},
    {"KDE", "kcmshell5", "kcm_access"},
    {"XFCE", "xfce4-accessibility-settings", ""},
    {"MATE", "mate-at-properties", ""},
    {"X-Cinnamon", "cinnamon-settings", "universal-access"},
    {"Cinnamon", "cinnamon-settings", "universal-access"},
    {"Pantheon", "io.elementary.settings", "universal-access"},
};

} // namespace

std::optional<SettingsCommand>
accessibilitySettingsCommand(const QString &desktops, const std::function<QString(const QString &)> &find) {
    const QStringList names = desktops.split(u':', Qt::SkipEmptyParts);
    for (const QString &name : names) {
        for (const SettingsProgram &program : programs) {
            if (name.compare(QLatin1String(program.desktop), Qt::CaseInsensitive) != 0)
                continue;
            const QString executable = find(QString::fromLatin1(program.executable));
            if (executable.isEmpty())
                continue;
            const QString argument = QString::fromLatin1(program.argument);
            return SettingsCommand{executable, argument.isEmpty() ? QStringList() : QStringList{argument}};
        }
    }
    return std::nullopt;
}

} // namespace quorbit
