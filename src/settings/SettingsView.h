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
    struct Page {
        QWidget *widget = nullptr; ///< none until the tab is first shown
        std::function<void()> refresh;
    };
    struct Tab {
        QString title;
        QString symbol;
        std::function<Page()> make;
        Page page = {};
    };

    std::vector<Tab> tabs() const;
    void addShortcuts();
    void refreshSoon();
    void refresh();

    const SettingsServices services_;
    std::vector<Tab> tabs_;
    TabBar *bar_;
    QStackedWidget *pages_;
    /// A refresh of the service publishes field by field; the tab is made of all of them once it is through.
    QTimer refreshing_;
};

} // namespace quorbit
