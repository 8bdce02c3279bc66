#include "settings/sync/HistoryListAccessible.h"

#include "settings/sync/HistoryList.h"
#include "wording/DisplayLine.h"
#include "wording/HistoryItem.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QHash>
#include <QPointer>
#include <QWindow>

namespace quorbit {

namespace {

/// The row at a place of the list, whatever entry stands there.
class RowInterface final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    RowInterface(HistoryList *list, int row) : list_(list), row_(row) {}

    bool isValid() const override { return list_ && row_ < static_cast<int>(list_->rows().size()); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return list_ ? list_->window()->windowHandle() : nullptr; }
    QAccessibleInterface *parent() const override {
        return QAccessible::queryAccessibleInterface(list_.data());
    }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    int row() const { return row_; }

    QRect rect() const override {
        if (!isValid())
            return {};
        const QRect inList = list_->rowRect(row_);
        return {list_->mapToGlobal(inList.topLeft()), inList.size()};
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.focusable = true;
        state.selectable = true;
        state.focused = state.selected = list_->hasFocus() && list_->currentRow() == row_;
        state.invisible = !list_->isVisible();
        state.offscreen = !list_->visibleRegion().intersects(list_->rowRect(row_));
        return state;
    }

    QString text(QAccessible::Text kind) const override {
        if (!isValid())
            return {};
        if (kind == QAccessible::Description)
            return qtTrId("sync.history.hint");
        if (kind != QAccessible::Name)
            return {};
        const HistoryList::Row &entry = list_->rows()[static_cast<std::size_t>(row_)];
        return spokenHistoryItem(displayLine(entry.preview), displayLine(entry.source));
    }
    void setText(QAccessible::Text, const QString &) override {}

    void *interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString &action) override {
        if (!isValid())
            return;
        if (action == pressAction()) {
            list_->apply(row_);
        } else if (action == setFocusAction()) {
            list_->setCurrentRow(row_);
            list_->setFocus(Qt::TabFocusReason);
        }
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QPointer<HistoryList> list_;
    int row_;
};

class ListInterface final : public QAccessibleWidget {
public:
    explicit ListInterface(HistoryList *list) : QAccessibleWidget(list, QAccessible::List), list_(list) {}
    ~ListInterface() override {
        for (const QAccessible::Id id : std::as_const(rows_))
            QAccessible::deleteAccessibleInterface(id);
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.focused = state.focused && list_->currentRow() < 0; // else a row has it
        return state;
    }

    int childCount() const override { return static_cast<int>(list_->rows().size()); }
    QAccessibleInterface *child(int row) const override {
        if (row < 0 || row >= childCount())
            return nullptr;
        if (const auto known = rows_.constFind(row); known != rows_.constEnd())
            return QAccessible::accessibleInterface(*known);
        auto *made = new RowInterface(list_, row);
        rows_.insert(row, QAccessible::registerAccessibleInterface(made));
        return made;
    }
    QAccessibleInterface *childAt(int x, int y) const override {
        return child(list_->rowAt(list_->mapFromGlobal(QPoint(x, y))));
    }
    int indexOfChild(const QAccessibleInterface *child) const override {
        const auto *row = dynamic_cast<const RowInterface *>(child);
        return row ? row->row() : -1;
    }
    QAccessibleInterface *focusChild() const override {
        return list_->hasFocus() ? child(list_->currentRow()) : nullptr;
    }

private:
    HistoryList *list_;
    /// The rows that somebody has asked for.
    mutable QHash<int, QAccessible::Id> rows_;
};

QAccessibleInterface *makeInterface(const QString &, QObject *object) {
    auto *list = qobject_cast<HistoryList *>(object);
    return list ? new ListInterface(list) : nullptr;
}

} // namespace

void installHistoryListAccessibility() {
    QAccessible::installFactory(makeInterface); // Qt keeps each factory once
}

void announceCurrentRow(HistoryList &list) {
    if (!QAccessible::isActive() || list.currentRow() < 0)
        return;
    QAccessibleEvent event(&list, QAccessible::Focus);
    event.setChild(list.currentRow());
    QAccessible::updateAccessibility(&event);
}

} // namespace quorbit
