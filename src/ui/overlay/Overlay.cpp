#include "ui/overlay/Overlay.h"

#include "ui/controls/Button.h"
#include "ui/look/Frame.h"
#include "ui/look/TextStyle.h"
#include "ui/look/Theme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

namespace quorbit {

namespace {

constexpr double dimming = 0.28;
constexpr double panelRadius = 10;
constexpr int shadowReach = 18;
constexpr int windowMargin = 12;

/// Takes mouse events from the panel's empty places.
class Panel final : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override {
        const ThemeColors colors = themeColors(palette());
        QPainter painter(this);
        paintFrame(painter, rect(), panelRadius, colors.window, colors.cardEdge);
    }
};

} // namespace

Overlay::Overlay(QWidget *over)
    : KeyboardArea(over->window())
    , AccessibleControl(this)
    , panel_(new Panel(this))
    , scroller_(new QScrollArea(panel_))
    , column_(new QVBoxLayout(new QWidget)) {
    hide();
    QWidget *content = column_->parentWidget();
    scroller_->setFrameShape(QFrame::NoFrame);
    scroller_->setFocusPolicy(Qt::NoFocus);
    scroller_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller_->setWidgetResizable(true);
    scroller_->setWidget(content);
    scroller_->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    content->installEventFilter(this);
    parentWidget()->installEventFilter(this);
}

bool Overlay::covers(const QWidget &widget) {
    const auto overlays = widget.window()->findChildren<Overlay *>(QString(), Qt::FindDirectChildrenOnly);
    return std::any_of(overlays.begin(), overlays.end(), [&](const Overlay *overlay) {
        return overlay->open_ && overlay != &widget && !overlay->isAncestorOf(&widget);
    });
}

void Overlay::setPanelSize(QSize size) {
    panelSize_ = size;
    place();
}

void Overlay::setDefaultButton(Button *button) {
    defaultButton_ = button;
}

void Overlay::open() {
    if (open_)
        return;
    open_ = true;
    pauseBelow();
    place();
    show();
    raise();
    if (QAccessible::isActive()) {
        QAccessibleEvent event(this, accessibleRole() == QAccessible::AlertMessage
                                         ? QAccessible::Alert
                                         : QAccessible::DialogStart);
        QAccessible::updateAccessibility(&event);
    }
}

void Overlay::dismiss() {
    if (!open_)
        return;
    open_ = false;
    resumeBelow();
    hide();
    Q_EMIT dismissed();
    deleteLater();
}

void Overlay::addAccessibleState(QAccessible::State &state) const {
    state.modal = true;
    state.focusable = true; // it has the focus while none of its controls does
}

void Overlay::place() {
    setGeometry(parentWidget()->rect());
    const int width = std::min(scaled(panelSize_.width(), font()), this->width() - 2 * windowMargin);
    const int content = column_->hasHeightForWidth() ? column_->totalHeightForWidth(width)
                                                     : column_->totalMinimumSize().height();
    const int height = std::max(content, scaled(panelSize_.height(), font()));
    panel_->setGeometry((this->width() - width) / 2, std::max(0, (this->height() - height) / 2), width,
                        std::min(height, this->height()));
    scroller_->setGeometry(panel_->rect());
    column_->parentWidget()->setMinimumHeight(content);
}

bool Overlay::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == (watched == parentWidget() ? QEvent::Resize : QEvent::LayoutRequest))
        place();
    return QWidget::eventFilter(watched, event);
}

bool Overlay::event(QEvent *event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
        // Nothing below may be reached.
        event->accept();
        return true;
    case QEvent::ShortcutOverride:
        // It comes as a key then, whatever shortcut of the window it is.
        event->accept();
        return true;
    case QEvent::LayoutRequest:
    case QEvent::FontChange:
        place();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void Overlay::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.fillRect(rect(), withAlpha(Qt::black, dimming));
    for (int reach = shadowReach; reach > 0; reach -= 2) {
        const QRect shadow = panel_->geometry().adjusted(-reach, -reach + 6, reach, reach + 6);
        paintFrame(painter, shadow, panelRadius + reach, withAlpha(Qt::black, 0.025), Qt::transparent);
    }
}

void Overlay::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape) {
        dismiss();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (defaultButton_ && !event->isAutoRepeat())
            defaultButton_->click();
    }
    // Keys that nobody here wants must not reach the window below.
    event->accept();
}

} // namespace quorbit
