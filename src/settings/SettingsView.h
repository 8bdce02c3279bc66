#pragma once

#include <QTimer>
#include <QWidget>

#include <functional>
#include <vector>

class QStackedWidget;

namespace quorbit {

class Daemon;
class TabBar;
class UpdateChecker;

/// The content of the settings window: its tabs, of which it starts on the first. While it can be seen, the
/// tab that is shown follows what the service and the update checker publish.
class SettingsView final : public QWidget {
    Q_OBJECT

public:
    SettingsView(Daemon &daemon, UpdateChecker &updater, QWidget *parent = nullptr);

    void showTab(int index);

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

    /// Makes a `View` of `arguments`, which outlive this one.
    template <class View, class... Arguments>
    static std::function<Page()> page(Arguments &...arguments);
    void refreshSoon();
    void refresh();

    std::vector<Tab> tabs_;
    TabBar *bar_;
    QStackedWidget *pages_;
    /// A refresh of the service publishes field by field; the tab is made of all of them once it is through.
    QTimer refreshing_;
};

} // namespace quorbit
