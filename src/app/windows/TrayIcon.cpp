#include "app/windows/TrayIcon.h"

#include "platform/Desktop.h"
#include "ui/look/Symbol.h"

#include <QMenu>
#include <QSystemTrayIcon>

using namespace Qt::StringLiterals;

namespace quorbit {

TrayIcon::TrayIcon(Desktop &desktop, QObject *parent) : QObject(parent), desktop_(desktop) {}

TrayIcon::~TrayIcon() = default;

void TrayIcon::start() {
    desktop_.findTray([this] { show(); });
}

bool TrayIcon::isShown() const {
    return icon_ && desktop_.hasTray();
}

void TrayIcon::show() {
    makeMenu();
    icon_ = new QSystemTrayIcon(outlinedSymbolIcon(u"cursorarrow.and.square.on.square.dashed"_s), this);
    icon_->setToolTip(qtTrId("common.app_name"));
    icon_->setContextMenu(menu_.get());
    connect(icon_, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        // An X11 tray reports the second of two quick clicks as a double click, and only so.
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
            Q_EMIT clicked();
    });
    icon_->show();
    Q_EMIT shown();
}

void TrayIcon::makeMenu() {
    menu_ = std::make_unique<QMenu>();
    connect(menu_->addAction(qtTrId("common.app_name")), &QAction::triggered, this, &TrayIcon::openRequested);
    pause_ = menu_->addAction(qtTrId("menu.pause_sync"));
    pause_->setCheckable(true);
    pause_->setChecked(paused_);
    connect(pause_, &QAction::triggered, this, [this](bool pause) {
        pause_->setChecked(paused_);
        Q_EMIT pauseRequested(pause);
    });
    menu_->addSeparator();
    connect(menu_->addAction(qtTrId("menu.settings")), &QAction::triggered, this,
            &TrayIcon::settingsRequested);
    connect(menu_->addAction(qtTrId("menu.quit")), &QAction::triggered, this, &TrayIcon::quitRequested);
}

QRect TrayIcon::geometry() const {
    return icon_ ? icon_->geometry() : QRect();
}

void TrayIcon::setPaused(bool paused) {
    paused_ = paused;
    if (pause_)
        pause_->setChecked(paused);
}

} // namespace quorbit
