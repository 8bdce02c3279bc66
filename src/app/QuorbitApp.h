#pragma once

#include "app/AppDelegate.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "platform/UserDefaults.h"
#include "platform/linux/desktop/DesktopAppearance.h"
#include "platform/linux/process/SingleInstance.h"
#include "ui/access/AccessibilityGate.h"
#include "wording/TimeFormats.h"

#include <QFont>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace quorbit {

class ControlStyle;
class PanelWindow;
class SettingsWindow;
struct SettingsServices;
class TerminationHook;
class TrayIcon;

/// The application: its delegate, its icon with the panel under it, and its settings window. Made once, after
/// QApplication.
class QuorbitApp : public QObject {
    Q_OBJECT

public:
    /// What the application does without being asked.
    struct Start {
        QUrl manifest;        ///< where news of releases is found
        bool isByUser = true; ///< not by the session that begins: the user waits for something to see
    };

    QuorbitApp(Platform &platform, UserDefaults &defaults, Clock &clock, Start start);
    ~QuorbitApp() override;

    /// Shows the panel because the program was started again.
    void showPanel(const StartRequest &request);

private:
    void connectTray();
    void finishLaunching();
    void adoptAppearance();
    void render();
    void openPanel();
    PanelWindow &panel();
    void openSettings();
    SettingsServices settingsServices();

    Platform &platform_;
    UserDefaults &defaults_;
    Clock &clock_;
    const Start start_;
    AccessibilityGate gate_;
    QStringList localizations_;
    std::optional<AppDelegate> delegate_;
    std::unique_ptr<TerminationHook> termination_;
    TrayIcon *tray_;
    DesktopAppearance appearance_;
    ControlStyle *style_ = nullptr;
    const QFont toolkitFont_; ///< where the desktop names none
    QTimer rendering_;
    std::unique_ptr<PanelWindow> panel_;
    std::optional<TimeFormats> formats_; ///< outlives the window
    std::unique_ptr<SettingsWindow> settings_;
};

} // namespace quorbit
