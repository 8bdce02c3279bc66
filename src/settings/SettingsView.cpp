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

/// Activates the layouts from the inside out. By themselves they do so one level a turn of the event loop,
/// and the first frame is painted at the end of the first turn.
void layOut(QWidget &widget) {
    for (QWidget *child : widget.findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
        layOut(*child);
    if (QLayout *layout = widget.layout())
        layout->activate();
}

} // namespace

std::vector<SettingsView::Tab> SettingsView::tabs() const {
    const auto overview = [this] { return new OverviewTab(services_.daemon); };
    const auto sync = [this] { return new SyncTab(services_.daemon); };
    const auto kvm = [this] { return new KvmTab(services_.daemon, services_.kvm); };
    const auto devices = [this] {
        return new DevicesTab(services_.daemon, services_.formats, services_.clock);
    };
    const auto about = [this] {
        return new AboutTab(services_.updater, services_.formats, services_.about, services_.bundleVersion);
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

    showing_.setSingleShot(true);
    connect(&showing_, &QTimer::timeout, this, &SettingsView::showState);
    const auto showSoon = [this] { showing_.start(0); };
    connect(&services_.daemon, &Daemon::changed, this, showSoon);
    connect(&services_.updater, &UpdateChecker::changed, this, showSoon);
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
    if (!tab.page) {
        tab.page = tab.make();
        pages_->addWidget(tab.page);
    }
    bar_->setCurrent(index);
    // The stack would focus the first control of the page.
    if (!bar_->isAncestorOf(window()->focusWidget()))
        rest(bar_->item(index));
    // All of it before the page is first painted, or it would be seen to fall into place.
    tab.page->showState();
    pages_->setCurrentWidget(tab.page);
    layOut(*tab.page);
}

void SettingsView::showState() {
    if (isVisible())
        tabs_[static_cast<std::size_t>(bar_->current())].page->showState();
}

void SettingsView::showEvent(QShowEvent *event) {
    showState();
    QWidget::showEvent(event);
}

} // namespace quorbit
