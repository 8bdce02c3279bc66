#pragma once

#include "settings/about/AboutTab.h"
#include "settings/kvm/KvmTab.h"
#include "ui/access/Accessibility.h"
#include "ui/access/KeyboardArea.h"

#include <QTimer>

#include <functional>
#include <optional>
#include <vector>

class QStackedWidget;

namespace quorbit {

class Clock;
class Daemon;
class SettingsTab;
class TabBar;
class TimeFormats;
class UpdateChecker;

/// What the tabs show and drive; all of it outlives them.
struct SettingsServices {
    Daemon &daemon;
    UpdateChecker &updater;
    Clock &clock;
    const TimeFormats &formats;
    AboutServices about;
    std::optional<QString> bundleVersion;
    KvmServices kvm = {};
};

/// The content of the settings window: its tabs, of which it starts on the first. While it can be seen, the
/// tab that is shown follows what the service and the update checker publish.
class SettingsView final : public KeyboardArea, public AccessibleControl {
    Q_OBJECT

public:
    explicit SettingsView(SettingsServices services, QWidget *parent = nullptr);

    void showTab(int index);

    QAccessible::Role accessibleRole() const override { return QAccessible::Grouping; }
    bool isAccessibleLeaf() const override { return false; }
    /// It has the focus while none of its controls does.
    void addAccessibleState(QAccessible::State &state) const override { state.focusable = true; }

protected:
    void showEvent(QShowEvent *event) override;

private:
    struct Tab {
        QString title;
        QString symbol;
        std::function<SettingsTab *()> make;
        SettingsTab *page = nullptr; ///< none until the tab is first chosen
    };

    std::vector<Tab> tabs() const;
    void showState();
    void addShortcuts();

    const SettingsServices services_;
    std::vector<Tab> tabs_;
    TabBar *bar_;
    QStackedWidget *pages_;
    /// A refresh publishes field by field; the tab shows the state once all of them are there.
    QTimer showing_;
};

} // namespace quorbit
