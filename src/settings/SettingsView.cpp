#include "settings/SettingsView.h"

#include "daemon/Daemon.h"
#include "settings/devices/DevicesTab.h"
#include "settings/overview/OverviewTab.h"
#include "settings/sync/SyncTab.h"
#include "ui/controls/TabBar.h"
#include "update/UpdateChecker.h"

#include <QCoreApplication>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

/// Lays out a widget and all that is inside it, from the inside out: an outer layout knows what the inner
/// ones need only after they were made.
void layOut(QWidget &widget) {
    for (QObject *child : widget.children())
        if (child->isWidgetType())
            layOut(static_cast<QWidget &>(*child));
    if (QLayout *layout = widget.layout()) {
        layout->invalidate();
        layout->activate();
    }
}

} // namespace

std::vector<SettingsView::Tab> SettingsView::tabs() const {
    const auto page = [](auto *tab) { return Page{tab, [tab] { tab->refresh(); }}; };
    const auto overview = [this, page] { return page(new OverviewTab(services_.daemon)); };
    const auto sync = [this, page] { return page(new SyncTab(services_.daemon)); };
    const auto kvm = [this, page] { return page(new KvmTab(services_.daemon, services_.kvm)); };
    const auto devices = [this, page] {
        return page(new DevicesTab(services_.daemon, services_.formats, services_.clock));
    };
    const auto about = [this, page] {
        return page(
            new AboutTab(services_.updater, services_.formats, services_.about, services_.bundleVersion));
    };
    return {{qtTrId("tab.overview"), u"info.circle"_s, overview},
            {qtTrId("tab.sync"), u"arrow.triangle.2.circlepath"_s, sync},
            {qtTrId("tab.kvm"), u"rectangle.connected.to.line.below"_s, kvm},
            {qtTrId("tab.devices"), u"laptopcomputer.and.iphone"_s, devices},
            {qtTrId("tab.about"), u"questionmark.circle"_s, about}};
}

SettingsView::SettingsView(SettingsServices services, QWidget *parent)
    : KeyboardArea(parent)
    , AccessibleControl(this)
    , services_(std::move(services))
    , tabs_(tabs())
    , bar_(new TabBar)
    , pages_(new QStackedWidget) {
    auto *stack = new QVBoxLayout(this);
    stack->setContentsMargins({});
    stack->setSpacing(0);
    stack->addWidget(bar_);
    stack->addWidget(pages_, 1);

    QList<Choice> choices;
    for (const Tab &tab : tabs_)
        choices << Choice{tab.title, tab.symbol};
    bar_->setChoices(choices);
    connect(bar_, &TabBar::picked, this, &SettingsView::showTab);
    addShortcuts();

    refreshing_.setSingleShot(true);
    connect(&refreshing_, &QTimer::timeout, this, &SettingsView::refresh);
    connect(&services_.daemon, &Daemon::connectionStateChanged, this, &SettingsView::refreshSoon);
    connect(&services_.daemon, &Daemon::statusChanged, this, &SettingsView::refreshSoon);
    connect(&services_.daemon, &Daemon::settingsChanged, this, &SettingsView::refreshSoon);
    connect(&services_.daemon, &Daemon::devicesChanged, this, &SettingsView::refreshSoon);
    connect(&services_.daemon, &Daemon::historyChanged, this, &SettingsView::refreshSoon);
    connect(&services_.updater, &UpdateChecker::changed, this, &SettingsView::refreshSoon);
    showTab(0);
}

void SettingsView::addShortcuts() {
    const auto bind = [this](const QList<QKeySequence> &keys, int step) {
        auto *shortcut = new QShortcut(this);
        shortcut->setKeys(keys);
        connect(shortcut, &QShortcut::activated, this, [this, step] {
            const int count = static_cast<int>(tabs_.size());
            const int index = (bar_->current() + step + count) % count;
            bar_->item(index)->setFocus(Qt::ShortcutFocusReason);
            showTab(index);
        });
    };
    // QKeySequence::PreviousChild is Ctrl+Shift+Backtab on X11, which never matches.
    bind({Qt::CTRL | Qt::Key_Tab, Qt::CTRL | Qt::Key_PageDown}, 1);
    bind({Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, Qt::CTRL | Qt::Key_PageUp}, -1);
}

void SettingsView::showTab(int index) {
    if (index == bar_->current())
        return;
    Tab &tab = tabs_[static_cast<std::size_t>(index)];
    if (tab.page.widget == nullptr) {
        tab.page = tab.make();
        pages_->addWidget(tab.page.widget);
    }
    bar_->setCurrent(index);
    refresh(); // so that its first frame is right
    // The stack would focus the first control of the page.
    if (!bar_->isAncestorOf(window()->focusWidget()))
        rest(bar_->item(index));
    pages_->setCurrentWidget(tab.page.widget);
    if (isVisible()) {
        // Before anything is painted, or the page would be seen to fall into place.
        layOut(*tab.page.widget);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    }
}

void SettingsView::refreshSoon() {
    if (isVisible())
        refreshing_.start(0);
}

void SettingsView::refresh() {
    tabs_[static_cast<std::size_t>(bar_->current())].page.refresh();
}

void SettingsView::showEvent(QShowEvent *event) {
    refresh();
    QWidget::showEvent(event);
}

} // namespace quorbit
