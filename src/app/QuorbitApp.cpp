#include "app/QuorbitApp.h"

#include "app/Localization.h"
#include "app/Relaunch.h"
#include "app/windows/PanelWindow.h"
#include "app/windows/SettingsWindow.h"
#include "app/windows/TrayIcon.h"
#include "menubar/MenuBarView.h"
#include "settings/SettingsView.h"
#include "ui/look/ControlStyle.h"
#include "ui/look/TextStyle.h"
#include "ui/look/Theme.h"
#include "ui/overlay/Overlay.h"

#include <QApplication>
#include <QLocale>
#include <QSessionManager>
#include <QWindow>

namespace quorbit {

using namespace std::chrono_literals;

namespace {

/// What can wait gives the icon this long to be there first.
constexpr auto iconFirst = 150ms;
/// How long a tray may take to come before the user is given a window instead.
constexpr auto trayTimeout = 5s;

void neverRestart(QSessionManager &session) {
    session.setRestartHint(QSessionManager::RestartNever);
}

} // namespace

QuorbitApp::QuorbitApp(Process &process, Desktop &desktop, UserDefaults &defaults, Clock &clock,
                       QUrl manifest)
    : process_(process)
    , platform_(process.platform())
    , desktop_(desktop)
    , defaults_(defaults)
    , clock_(clock)
    , manifest_(std::move(manifest))
    , tray_(new TrayIcon(desktop, this))
    , toolkitFont_(QApplication::font()) {
    process_.callAtEnd([this] {
        if (delegate_)
            delegate_->applicationWillTerminate();
    });
    applyStoredLanguageOverride(defaults_);
    localizations_ = preferredLocalizations(defaults_, platform_);
    QLocale::setDefault(localeFor(localizations_.front(), QLocale::system()));
    installTranslations(localizations_.front());

    QApplication::setQuitOnLastWindowClosed(false);
    desktop_.guardAccessibility(Overlay::covers);
    connect(qApp, &QGuiApplication::commitDataRequest, this, neverRestart, Qt::DirectConnection);
    connect(qApp, &QGuiApplication::saveStateRequest, this, neverRestart, Qt::DirectConnection);

    rendering_.setSingleShot(true);
    connect(&rendering_, &QTimer::timeout, this, &QuorbitApp::render);
    connectTray();
    tray_->start();
    QTimer::singleShot(iconFirst, this, &QuorbitApp::finishLaunching);
    process_.finishStart([this] {
        openPanel();
        return panel_->windowHandle();
    });
}

QuorbitApp::~QuorbitApp() = default;

void QuorbitApp::connectTray() {
    connect(tray_, &TrayIcon::shown, this, &QuorbitApp::finishLaunching, Qt::QueuedConnection);
    connect(tray_, &TrayIcon::clicked, this, [this] { panel().toggle(tray_->geometry()); });
    connect(tray_, &TrayIcon::openRequested, this, &QuorbitApp::openPanel);
    connect(tray_, &TrayIcon::settingsRequested, this, &QuorbitApp::openSettings);
    connect(tray_, &TrayIcon::quitRequested, this, terminateApplication);
    connect(tray_, &TrayIcon::pauseRequested, this, [this](bool pause) {
        finishLaunching();
        delegate_->daemon().setPaused(pause);
    });
}

void QuorbitApp::finishLaunching() {
    if (delegate_)
        return;
    delegate_.emplace(platform_, defaults_, clock_, manifest_, localizations_);

    style_ = new ControlStyle;
    QApplication::setStyle(style_);
    adoptAppearance();

    // A refresh publishes field by field; the panel is rendered once all of them are there.
    const auto renderSoon = [this] { rendering_.start(0); };
    connect(&delegate_->daemon(), &Daemon::changed, this, renderSoon);
    connect(&delegate_->updater(), &UpdateChecker::changed, this, renderSoon);

    delegate_->applicationDidFinishLaunching();
    desktop_.followAppearance([this] { adoptAppearance(); });
    QTimer::singleShot(trayTimeout, this, [this] {
        if (!process_.isStartedBySession() && !tray_->isShown())
            openPanel();
    });
}

void QuorbitApp::adoptAppearance() {
    const Appearance &wanted = desktop_.appearance();
    style_->setReducedMotion(wanted.reducedMotion);
    QApplication::setPalette(themePalette(wanted.colors));

    const QFont font = wanted.font ? applicationFont(*wanted.font, wanted.textScale)
                                   : scaledFont(toolkitFont_, wanted.textScale);
    if (font != QApplication::font()) {
        QApplication::setFont(font);
        QApplication::setFont(textFont(TextStyle::body, font), "QMenu");
    }
}

void QuorbitApp::render() {
    const ServiceState &service = delegate_->daemon().state();
    tray_->setPaused(service.status && service.status->paused);
    if (view_)
        view_->render(menuBarModel(service, delegate_->updater().state()));
}

PanelWindow &QuorbitApp::panel() {
    if (panel_)
        return *panel_;
    finishLaunching();
    view_ = new MenuBarView;
    connect(view_, &MenuBarView::pauseRequested, this,
            [this](bool pause) { delegate_->daemon().setPaused(pause); });
    connect(view_, &MenuBarView::historyChosen, this,
            [this](qint64 id) { delegate_->daemon().applyHistory(id); });
    connect(view_, &MenuBarView::updateRequested, this, &QuorbitApp::openSettings);
    connect(view_, &MenuBarView::settingsRequested, this, &QuorbitApp::openSettings);
    connect(view_, &MenuBarView::quitRequested, this, terminateApplication);
    panel_ = std::make_unique<PanelWindow>(view_, [this] { return desktop_.blendsWindows(); });
    render();
    return *panel_;
}

void QuorbitApp::openPanel() {
    if (tray_->isShown())
        panel().dropDown(tray_->geometry());
    else
        panel().showAsWindow();
}

SettingsServices QuorbitApp::settingsServices() {
    AboutServices about;
    about.languages.push_back({QString(), qtTrId("about.language.system")});
    for (const AppLanguage &language : appLanguages())
        about.languages.push_back({language.rawValue, qtTrId(language.labelKey)});
    about.storedLanguage = [this] { return storedLanguage(defaults_); };
    about.chooseLanguage = [this](const QString &value) { LanguageOverride::apply(value, defaults_); };
    about.restart = [this] { relaunchQuorbitApp(platform_); };
    about.openAddress = [this](const QUrl &address) { platform_.open(address); };
    KvmServices kvm;
    kvm.isAccessibilityTrusted = [this] { return platform_.isAccessibilityTrusted(); };
    kvm.openAccessibilitySettings = [this] { platform_.openAccessibilitySettings(); };
    kvm.restart = about.restart;
    return {delegate_->daemon(), delegate_->updater(),      clock_,        *formats_,
            std::move(about),    platform_.bundleVersion(), std::move(kvm)};
}

void QuorbitApp::openSettings() {
    finishLaunching();
    if (!formats_)
        formats_.emplace(QLocale());
    if (!settings_)
        settings_ = std::make_unique<SettingsWindow>([this] { return new SettingsView(settingsServices()); });
    settings_->open();
}

} // namespace quorbit
