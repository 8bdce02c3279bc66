#include "platform/linux/desktop/GtkSettings.h"

#include "platform/RegularFile.h"

#include <QFileInfo>
#include <QList>

#include <array>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr std::array versions{"gtk-4.0", "gtk-3.0"};
constexpr qint64 longestFile = 65'536; // far more than any settings.ini

std::optional<bool> flag(const QString &value) {
    if (value == "1"_L1 || value.compare("true"_L1, Qt::CaseInsensitive) == 0)
        return true;
    if (value == "0"_L1 || value.compare("false"_L1, Qt::CaseInsensitive) == 0)
        return false;
    return std::nullopt;
}

} // namespace

// QSettings would take the comma of a font's name for a list.
void addGtkSettings(GtkSettings &settings, QByteArrayView file) {
    bool inSettings = false;
    GtkSettings found;
    const QStringList lines = QString::fromUtf8(file).split(u'\n');
    for (const QString &line : lines) {
        const QString entry = line.trimmed();
        if (entry.startsWith(u'['))
            inSettings = entry == "[Settings]"_L1;
        const qsizetype equals = entry.indexOf(u'=');
        if (!inSettings || equals < 0)
            continue;
        const QString key = entry.first(equals).trimmed();
        const QString value = entry.sliced(equals + 1).trimmed();
        if (key == "gtk-font-name"_L1)
            found.font = value;
        else if (key == "gtk-theme-name"_L1)
            found.theme = value;
        else if (key == "gtk-application-prefer-dark-theme"_L1)
            found.preferDark = flag(value);
        else if (key == "gtk-enable-animations"_L1)
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
        const QString path = folder_ + u'/' + QLatin1String(version) + "/settings.ini"_L1;
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
        const QString folder = folder_ + u'/' + QLatin1String(version);
        paths << folder << folder + "/settings.ini"_L1;
    }
    const QStringList watched = watcher_->directories() + watcher_->files();
    for (const QString &path : paths) {
        if (!watched.contains(path) && QFileInfo(path).isReadable())
            watcher_->addPath(path);
    }
}

} // namespace quorbit
