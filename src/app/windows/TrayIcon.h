#pragma once

#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QRect>

#include <memory>

class QAction;
class QMenu;
class QSystemTrayIcon;

namespace quorbit {

class Desktop;

/// The program's icon in the tray, made as soon as something is there to show it. Its menu offers what the
/// panel does, for hosts that pass no clicks on.
class TrayIcon : public QObject {
    Q_OBJECT

public:
    explicit TrayIcon(Desktop &desktop, QObject *parent = nullptr);
    ~TrayIcon() override;

    /// Looks for a tray; shown() follows when there is one, at once or later.
    void start();
    /// Whether a tray shows the icon now; a tray may have gone again.
    bool isShown() const;
    /// The icon's place on the screen; empty where the tray does not tell.
    QRect geometry() const;
    /// What the service reports; the menu shows nothing else.
    void setPaused(bool paused);

Q_SIGNALS:
    void shown();
    /// The icon was clicked.
    void clicked();
    void openRequested();
    void pauseRequested(bool pause);
    void settingsRequested();
    void quitRequested();

private:
    void show();
    void makeMenu();

    Desktop &desktop_;
    std::unique_ptr<QMenu> menu_;
    QPointer<QAction> pause_;
    bool paused_ = false;
    QSystemTrayIcon *icon_ = nullptr;
};

} // namespace quorbit
