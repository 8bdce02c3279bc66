#include "ui/controls/ChoiceBar.h"

#include "ui/access/FocusRing.h"
#include "ui/look/ControlStyle.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>

#include <optional>

namespace quorbit {

ChoiceItem::ChoiceItem(ChoiceBar *bar, double ringRadius) : Pressable(bar), bar_(bar) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    FocusRing::install(this, ringRadius, -2);
}

void ChoiceItem::setChoice(const Choice &choice) {
    if (choice == choice_)
        return;
    choice_ = choice;
    updateGeometry();
    update();
    accessibleNameChanged();
}

void ChoiceItem::setCurrent(bool current) {
    if (current == current_)
        return;
    current_ = current;
    update();
    QAccessible::State changed;
    (accessibleRole() == QAccessible::PageTab ? changed.selected : changed.checked) = true;
    accessibleStateChanged(changed);
}

QSize ChoiceItem::sizeHint() const {
    return bar_->itemSize(choice_);
}

QAccessible::Role ChoiceItem::accessibleRole() const {
    return bar_->itemRole();
}

void ChoiceItem::addAccessibleState(QAccessible::State &state) const {
    Pressable::addAccessibleState(state);
    if (accessibleRole() == QAccessible::PageTab) {
        state.selectable = true;
        state.selected = current_;
    } else {
        state.checkable = true;
        state.checked = current_;
    }
}

void ChoiceItem::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    dimIfDisabled(painter, *this);
    bar_->paintItem(painter, *this);
}

void ChoiceItem::keyPressEvent(QKeyEvent *event) {
    // The focus is on the current choice, which needs no choosing: Return is left to the default button.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        event->ignore();
    else if (!bar_->moveFrom(*this, event->key()))
        Pressable::keyPressEvent(event);
}

ChoiceBar::ChoiceBar(double ringRadius, int spacing, QMargins margins, QWidget *parent)
    : QWidget(parent), AccessibleControl(this), ringRadius_(ringRadius) {
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(margins);
    row->setSpacing(spacing);
}

void ChoiceBar::setChoices(const QList<Choice> &choices) {
    while (items_.size() > choices.size())
        delete items_.takeLast();
    while (items_.size() < choices.size()) {
        auto *item = new ChoiceItem(this, ringRadius_);
        const int index = static_cast<int>(items_.size());
        connect(item, &QAbstractButton::clicked, this, [this, index] {
            if (index != current_)
                Q_EMIT picked(index);
        });
        static_cast<QHBoxLayout *>(layout())->insertWidget(layout()->indexOf(items_.value(index - 1)) + 1,
                                                           item);
        items_ << item;
    }
    for (qsizetype i = 0; i < choices.size(); ++i)
        items_[i]->setChoice(choices[i]);
    updateFocusStops();
}

void ChoiceBar::setCurrent(int index) {
    if (index == current_)
        return;
    const bool focused = current_ >= 0 && current_ < items_.size() && items_[current_]->hasFocus();
    current_ = index;
    updateFocusStops();
    if (focused && index >= 0 && index < items_.size())
        items_[index]->setFocus(Qt::TabFocusReason);
}

void ChoiceBar::updateFocusStops() {
    const qsizetype stop = current_ >= 0 && current_ < items_.size() ? current_ : 0;
    for (qsizetype i = 0; i < items_.size(); ++i) {
        items_[i]->setCurrent(i == current_);
        items_[i]->setFocusPolicy(i == stop ? Qt::TabFocus : Qt::NoFocus);
    }
}

bool ChoiceBar::moveFrom(const ChoiceItem &item, int key) {
    const int last = static_cast<int>(items_.size()) - 1;
    const int here = static_cast<int>(items_.indexOf(&item));
    const int forward = layoutDirection() == Qt::RightToLeft ? -1 : 1;
    std::optional<int> target;
    if (key == Qt::Key_Right)
        target = here + forward;
    else if (key == Qt::Key_Left)
        target = here - forward;
    else if (key == Qt::Key_Home)
        target = 0;
    else if (key == Qt::Key_End)
        target = last;
    if (!target)
        return false;
    if (*target >= 0 && *target <= last && *target != current_)
        Q_EMIT picked(*target);
    return true;
}

} // namespace quorbit
