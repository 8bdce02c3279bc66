#include "platform/linux/desktop/GtkSettings.h"

#include "platform/RegularFile.h"

#include <QFileInfo>
#include <QList>

#include <array>

namespace quorbit {

namespace {

constexpr std::array versions{"gtk-4.0", "gtk-3.0"};
constexpr qint64 longestFile = 65'536; // far more than any settings.ini

std::optional<bool> flag(const QString &value) {
    if (value == QLatin1String("1") || value.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
        return true;
    if (value == QLatin1String("0") || value.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
        return false;
    return std::nullopt;
}

} // namespace

// QSettings would take the comma of a font's name for a list.
void addGtkSettings(GtkSettings &settings, QByteArrayView file) {
    bool inSettings = false;
    GtkSettings found;
    const QStringList lines = QString::fromUtf8(file).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QString entry = line.trimmed();
        if (entry.startsWith(QLatin1Char('[')))
            inSettings = entry == QLatin1String("[Settings]");
        const qsizetype equals = entry.indexOf(QLatin1Char('='));
        if (!inSettings || equals < 0)
            continue;
        const QString key = entry.first(equals).trimmed();
        const QString value = entry.sliced(equals + 1).trimmed();
        if (key == QLatin1String("gtk-font-name"))
            found.font = value;
        else if (key == QLatin1String("gtk-theme-name"))
            found.theme = value;
        else if (key == QLatin1String("gtk-application-prefer-dark-theme"))
            found.preferDark = flag(value);
        else if (key == QLatin1String("gtk-enable-animations"))
            found.animations = flag(value);
    }
    const auto add = [](auto &own, auto &other) { own = own ? std::move(own) : std::move(other); };
    add(settings.font, found.font);
    add(settings.theme, found.theme);
    add(settings.preferDark, found.preferDark);
    add(settings.animations, found.animations);
}

GtkSettingsFiles::GtkSettingsFiles(QString configFolder, QObject *parent)
    : QObject(parent), folder_(std::move(configFolder)) {}

void GtkSettingsFiles::start() {
    watcher_ = new QFileSystemWatcher(this);
    connect(watcher_, &QFileSystemWatcher::fileChanged, this, &GtkSettingsFiles::read);
    connect(watcher_, &QFileSystemWatcher::directoryChanged, this, &GtkSettingsFiles::read);
    read();
}

void GtkSettingsFiles::read() {
    watch(); // before reading, so that no change falls between the two
    GtkSettings next;
    for (const char *version : versions) {
        const QString path =
            folder_ + QLatin1Char('/') + QLatin1String(version) + QLatin1String("/settings.ini");
        if (const auto file = readRegularFile(path, longestFile))
            addGtkSettings(next, *file);
    }
    if (next == current_)
        return;
    current_ = next;
    Q_EMIT changed();
}

/// QFileSystemWatcher reports files that come and are replaced for their folder, and writing for the file
/// itself. It cannot watch what cannot be read.
void GtkSettingsFiles::watch() {
    QStringList paths{folder_};
    for (const char *version : versions) {
        const QString folder = folder_ + QLatin1Char('/') + QLatin1String(version);
        paths << folder << folder + QLatin1String("/settings.ini");
    }
    const QStringList watched = watcher_->directories() + watcher_->files();
    for (const QString &path : paths) {
        if (!watched.contains(path) && QFileInfo(path).isReadable())
            watcher_->addPath(path);
    }
}

} // namespace quorbit
