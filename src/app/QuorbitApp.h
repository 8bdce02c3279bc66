#pragma once

#include "app/AppDelegate.h"
#include "platform/Clock.h"
#include "platform/Process.h"
#include "platform/UserDefaults.h"
#include "wording/TimeFormats.h"

#include <QFont>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace quorbit {

class ControlStyle;
class MenuBarView;
class PanelWindow;
class SettingsWindow;
struct SettingsServices;
class TrayIcon;

/// The application: its delegate, its icon with the panel under it, and its settings window. Made once, after
/// QApplication.
class QuorbitApp : public QObject {
    Q_OBJECT

public:
    /// `manifest` is where news of releases is found.
    QuorbitApp(Process &process, Desktop &desktop, UserDefaults &defaults, Clock &clock, QUrl manifest);
    ~QuorbitApp() override;

private:
    void connectTray();
    void finishLaunching();
    void adoptAppearance();
    void render();
    void openPanel();
    PanelWindow &panel();
    void openSettings();
    SettingsServices settingsServices();

    Process &process_;
    Platform &platform_;
    Desktop &desktop_;
    UserDefaults &defaults_;
    Clock &clock_;
    const QUrl manifest_;
    QStringList localizations_;
    std::optional<AppDelegate> delegate_;
    TrayIcon *tray_;
    ControlStyle *style_ = nullptr;
    const QFont toolkitFont_; ///< where the desktop names none
    QTimer rendering_;
    std::unique_ptr<PanelWindow> panel_;
    MenuBarView *view_ = nullptr;        ///< inside the panel
    std::optional<TimeFormats> formats_; ///< outlives the window
    std::unique_ptr<SettingsWindow> settings_;
};

} // namespace quorbit
