#include "ui/controls/MenuPicker.h"

#include "ui/access/FocusRing.h"
#include "ui/look/ControlStyle.h"
#include "ui/look/Frame.h"
#include "ui/look/Symbol.h"
#include "ui/look/TextStyle.h"
#include "ui/look/Theme.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {
constexpr double pickerHeight = 22;
constexpr double leading = 10;
constexpr double gap = 6;
constexpr double chevrons = 14;
constexpr double trailing = 11;
constexpr double radius = 5;
constexpr double leastTextWidth = 12;

/// An ampersand in a title stands for itself, not for a mnemonic.
QString literal(QString title) {
    return title.replace(u'&', "&&"_L1);
}
} // namespace

MenuPicker::MenuPicker(QWidget *parent) : Pressable(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    FocusRing::install(this, radius);
    connect(this, &QAbstractButton::clicked, this, &MenuPicker::openMenu);
}

void MenuPicker::setOptions(const QStringList &titles) {
    if (titles == options_)
        return;
    options_ = titles;
    updateGeometry();
    update();
    updateMenu();
}

void MenuPicker::setCurrent(int index) {
    if (index == current_)
        return;
    current_ = index;
    updateGeometry();
    update();
    updateMenu();
    accessibleValueChanged(accessibleText());
}

QSize MenuPicker::sizeHint() const {
    constexpr double beside = leading + gap + chevrons + trailing;
    const int text = textWidth(textFont(TextStyle::callout, font()), options_.value(current_));
    return {std::max(scaled(leastTextWidth + beside, font()), text + scaled(beside, font())),
            scaled(pickerHeight, font())};
}

void MenuPicker::addAccessibleState(QAccessible::State &state) const {
    Pressable::addAccessibleState(state);
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = menu_ != nullptr;
    state.collapsed = menu_ == nullptr;
}

QWidget *MenuPicker::accessiblePopup() const {
    return menu_;
}

QStringList MenuPicker::accessibleActions() const {
    return {QAccessibleActionInterface::showMenuAction(), QAccessibleActionInterface::pressAction()};
}

void MenuPicker::openMenu() {
    if (menu_ || options_.isEmpty())
        return;
    menu_ = new QMenu(this);
    menu_->setAccessibleName(accessibleName());
    menu_->installEventFilter(this);
    // A click on the button that closes the menu must not open it again.
    menu_->setAttribute(Qt::WA_NoMouseReplay);
    menu_->setFont(textFont(TextStyle::body, font()));
    connect(menu_, &QMenu::triggered, this, [this](QAction *action) {
        const int chosen = action->data().toInt();
        // Assistive technology chooses without closing the menu.
        if (menu_)
            menu_->close();
        Q_EMIT picked(chosen);
    });
    connect(menu_, &QMenu::aboutToHide, this, [this] {
        menu_->deleteLater();
        menu_ = nullptr;
        update();
    });
    updateMenu();
    // The menu opens at the button's leading edge, below it where there is room.
    menu_->setMinimumWidth(width());
    const QPoint corner = layoutDirection() == Qt::RightToLeft
                              ? rect().bottomRight() - QPoint(menu_->sizeHint().width() - 1, 0)
                              : rect().bottomLeft();
    menu_->popup(mapToGlobal(corner + QPoint(0, 3)));
    if (QAction *chosen = menu_->actions().value(current_))
        menu_->setActiveAction(chosen);
}

void MenuPicker::updateMenu() {
    if (!menu_)
        return;
    QList<QAction *> actions = menu_->actions();
    while (actions.size() > options_.size())
        delete actions.takeLast();
    while (actions.size() < options_.size())
        actions << menu_->addAction(QString());
    for (qsizetype i = 0; i < actions.size(); ++i) {
        actions[i]->setText(literal(options_[i]));
        actions[i]->setData(static_cast<int>(i));
        actions[i]->setCheckable(true);
        actions[i]->setChecked(i == current_);
    }
}

void MenuPicker::paintEvent(QPaintEvent *) {
    const ThemeColors colors = themeColors(palette());
    const double scale = fontScale(font());
    QPainter painter(this);
    dimIfDisabled(painter, *this);
    paintFrame(painter, rect(), radius, colors.control, colors.controlEdge);
    if (isLit() || menu_)
        paintFrame(painter, rect(), radius, withAlpha(colors.primary, menu_ ? 0.08 : 0.04), Qt::transparent);

    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const double side = chevrons * scale;
    const double edge = trailing * scale;
    const QRectF square(mirrored ? edge : width() - edge - side, (height() - side) / 2, side, side);
    paintSymbol(painter, square, u"chevron.up.chevron.down"_s, colors.primary);

    painter.setFont(textFont(TextStyle::callout, font()));
    painter.setPen(colors.primary);
    const double reserved = edge + side;
    const QRectF text = mirrored ? QRectF(rect()).adjusted(reserved, 0, -leading * scale, 0)
                                 : QRectF(rect()).adjusted(leading * scale, 0, -reserved, 0);
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, // mirrored with the layout
                     options_.value(current_));
}

void MenuPicker::keyPressEvent(QKeyEvent *event) {
    if (event->key() != Qt::Key_Up && event->key() != Qt::Key_Down)
        Pressable::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        openMenu();
}

void MenuPicker::mousePressEvent(QMouseEvent *event) {
    // A menu opens on the press, so that one gesture may press, drag to an option and release.
    if (event->button() == Qt::LeftButton)
        openMenu();
}

bool MenuPicker::eventFilter(QObject *watched, QEvent *event) {
    // The Return key that opened the menu must not choose from it while it is still held.
    if (watched == menu_ && event->type() == QEvent::KeyPress) {
        const auto &pressed = *static_cast<QKeyEvent *>(event);
        if (pressed.isAutoRepeat() && (pressed.key() == Qt::Key_Return || pressed.key() == Qt::Key_Enter))
            return true;
    }
    return QAbstractButton::eventFilter(watched, event);
}

} // namespace quorbit
