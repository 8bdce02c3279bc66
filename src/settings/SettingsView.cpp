#include "settings/SettingsView.h"

#include "daemon/Daemon.h"
#include "settings/OverviewTab.h"
#include "settings/SyncTab.h"
#include "ui/TabBar.h"
#include "update/UpdateChecker.h"

#include <QCoreApplication>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

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

template <class View, class... Arguments>
std::function<SettingsView::Page()> SettingsView::page(Arguments &...arguments) {
    return [&arguments...] {
        auto *view = new View(arguments...);
        return Page{view, [view] { view->refresh(); }};
    };
}

SettingsView::SettingsView(Daemon &daemon, UpdateChecker &updater, QWidget *parent)
    : QWidget(parent)
    , tabs_{{qtTrId("tab.overview"), u"info.circle"_s, page<OverviewTab>(daemon)},
            {qtTrId("tab.sync"), u"arrow.triangle.2.circlepath"_s, page<SyncTab>(daemon)}}
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
    const auto addStep = [this](QKeySequence::StandardKey keys, int step) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, [this, step] {
            const int count = static_cast<int>(tabs_.size());
            showTab((bar_->current() + step + count) % count);
        });
    };
    addStep(QKeySequence::NextChild, 1);
    addStep(QKeySequence::PreviousChild, -1);

    refreshing_.setSingleShot(true);
    connect(&refreshing_, &QTimer::timeout, this, &SettingsView::refresh);
    connect(&daemon, &Daemon::connectionStateChanged, this, &SettingsView::refreshSoon);
    connect(&daemon, &Daemon::statusChanged, this, &SettingsView::refreshSoon);
    connect(&daemon, &Daemon::settingsChanged, this, &SettingsView::refreshSoon);
    connect(&daemon, &Daemon::devicesChanged, this, &SettingsView::refreshSoon);
    connect(&daemon, &Daemon::historyChanged, this, &SettingsView::refreshSoon);
    connect(&updater, &UpdateChecker::changed, this, &SettingsView::refreshSoon);
    showTab(0);
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
    tab.page.refresh(); // so that its first frame is right
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
