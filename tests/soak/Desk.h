#pragma once

#include "app/PanelWindow.h"
#include "app/SettingsWindow.h"
#include "daemon/Fixture.h"
#include "settings/TimeFormats.h"
#include "update/UpdateChecker.h"

#include <QTimer>

namespace quorbit {

class MenuBarView;
class SettingsView;

namespace test {

/// The panel and the settings window as the application ties them to a Daemon, and a user who uses them.
class Desk : public QObject {
public:
    explicit Desk(Fixture &world);

    /// What the user does between two polls.
    void use(int poll);
    /// Lets the time of the views pass.
    void advance(FakeClock::Delay span) { clock_.advance(span); }

private:
    void openSettings();
    SettingsView &settings() const;
    void press(const char *text) const;
    template <class What>
    void dismiss() const;

    Fixture &world_;
    /// Apart from the Daemon's, whose only alarm tells that a poll is over.
    FakeClock clock_;
    TimeFormats formats_{QLocale(QStringLiteral("en"))};
    UpdateChecker updater_;
    QTimer rendering_;
    MenuBarView *view_;
    PanelWindow panel_;
    SettingsWindow settings_;
};

} // namespace test
} // namespace quorbit
