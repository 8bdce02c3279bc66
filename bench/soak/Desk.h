#pragma once

#include "app/windows/PanelWindow.h"
#include "app/windows/SettingsWindow.h"
#include "menubar/MenuBarView.h"
#include "settings/SettingsWorld.h"
#include "settings/devices/DeviceRow.h"
#include "ui/controls/Button.h"
#include "ui/controls/Switch.h"
#include "ui/overlay/Alert.h"
#include "ui/overlay/Sheet.h"

#include <QTimer>

namespace quorbit::test {

/// Makes whatever does not happen a failure: a user who meets nothing tests nothing.
template <class Thing>
Thing &need(Thing *thing, const char *name) {
    if (!thing)
        qFatal("no %s to use", name);
    return *thing;
}

/// The panel and the settings window tied to a Daemon, and a user who uses them.
class Desk : public QObject {
public:
    explicit Desk(SettingsWorld &world)
        : world_(world)
        , view_(new MenuBarView)
        , panel_(view_, [] { return true; })
        , settings_([this] { return new SettingsView(world_.services(formats_)); }) {
        Daemon *daemon = world_.daemon.get();
        rendering_.setSingleShot(true);
        connect(&rendering_, &QTimer::timeout, this,
                [this, daemon] { view_->render(menuBarModel(daemon->state(), world_.updater.state())); });
        connect(daemon, &Daemon::changed, &rendering_, [this] { rendering_.start(0); });
        openSettings();
        panel_.showAsWindow();
    }

    /// What the user does between two polls.
    void use(int poll) {
        // Ten polls long the user is at each tab.
        if (poll % 10 == 0)
            settings().showTab(poll / 10 % tabCount);

        const auto isAt = [poll](int period, int place) { return poll % period == place; };
        if (isAt(50, 13)) { // at the second tab
            for (Switch *each : settings_.findChildren<Switch *>()) {
                if (each->isVisible())
                    each->click();
            }
        }
        if (isAt(50, 10 * devicesTab + 1)) {
            press("devices.add");
            press("devices.add.show.generate");
        }
        if (isAt(50, 10 * devicesTab + 3))
            dismiss<Sheet>();
        if (isAt(50, 10 * devicesTab + 5))
            Q_EMIT need(settings_.findChild<DeviceRow *>(), "device").removeRequested();
        if (isAt(100, 10 * devicesTab + 7))
            dismiss<Alert>();
        if (isAt(100, 10 * devicesTab + 57))
            press("devices.unpair.confirm");

        if (isAt(100, 4))
            world_.daemon->setPaused(true);
        if (isAt(100, 14))
            world_.daemon->applyHistory(3);
        if (isAt(100, 24))
            world_.daemon->clearHistory();
        if (isAt(100, 54))
            panel_.dropDown({});
        if (isAt(100, 56))
            panel_.showAsWindow();
        if (isAt(100, 64))
            settings_.close();
        if (isAt(100, 66))
            openSettings();
    }

    /// Lets the time of the views pass.
    void advance(FakeClock::Delay span) { world_.viewClock.advance(span); }

private:
    void openSettings() {
        settings_.open();
        for (int tab = tabCount; tab > 0; --tab)
            settings().showTab(tab - 1);
    }

    SettingsView &settings() const { return need(settings_.findChild<SettingsView *>(), "settings"); }

    void press(const char *text) const {
        for (Button *button : settings_.findChildren<Button *>()) {
            if (button->isVisible() && button->label() == qtTrId(text))
                return button->click();
        }
        qFatal("no button \"%s\" to press", text);
    }

    template <class What>
    void dismiss() const {
        need(settings_.findChild<What *>(), What::staticMetaObject.className()).dismiss();
    }

    SettingsWorld &world_;
    TimeFormats formats_{QLocale(QStringLiteral("en"))};
    QTimer rendering_;
    MenuBarView *view_;
    PanelWindow panel_;
    SettingsWindow settings_;
};

} // namespace quorbit::test
