#pragma once

#include <QByteArrayView>
#include <QFileSystemWatcher>
#include <QObject>
#include <QString>

#include <optional>

namespace quorbit {

/// What the GTK settings files say of the look; absent is what they leave out.
struct GtkSettings {
    std::optional<QString> font; ///< such as "Cantarell 11"
    std::optional<QString> theme;
    std::optional<bool> preferDark;
    std::optional<bool> animations;

    bool operator==(const GtkSettings &) const = default;
};

/// Takes from a settings.ini what `settings` does not have yet.
void addGtkSettings(GtkSettings &settings, QByteArrayView file);

/// Follows gtk-4.0/settings.ini and gtk-3.0/settings.ini in the user's configuration folder, of which the
/// first counts where both speak. They are where a desktop without a portal keeps its look.
class GtkSettingsFiles : public QObject {
    Q_OBJECT

public:
    explicit GtkSettingsFiles(QString configFolder, QObject *parent = nullptr);

    const GtkSettings &current() const { return current_; }
    /// Reads the files, and again whenever they change.
    void start();

Q_SIGNALS:
    void changed();

private:
    void read();
    void watch();

    QString folder_;
    QFileSystemWatcher *watcher_ = nullptr;
    GtkSettings current_;
};

} // namespace quorbit
