#include "ui/controls/Button.h"

#include "ui/access/FocusRing.h"
#include "ui/controls/ProgressIndicator.h"
#include "ui/look/ControlStyle.h"
#include "ui/look/Frame.h"
#include "ui/look/Symbol.h"
#include "ui/look/Theme.h"

#include <QPainter>

namespace quorbit {

namespace {

struct Metrics {
    TextStyle text;
    double height;
    double padding;
    double symbol;
    double radius;
};
constexpr Metrics regularMetrics{TextStyle::body, 27, 13, 16, 6};
constexpr Metrics smallMetrics{TextStyle::callout, 22, 10, 14, 5};
constexpr Metrics captionMetrics{TextStyle::caption, 16, 0, 12, 4};
constexpr double symbolGap = 6;

const Metrics &metricsOf(ButtonKind kind, ButtonSize size) {
    if (kind == ButtonKind::destructiveCaption)
        return captionMetrics;
    return size == ButtonSize::small ? smallMetrics : regularMetrics;
}

struct Look {
    QColor fill, edge, text;
};

/// A button under the pointer (`shading` 0 to 1) has a face that is moved away from its text, and text that
/// is read on that face.
Look lookOf(ButtonKind kind, const QPalette &palette, double shading) {
    const ThemeColors colors = themeColors(palette);
    const QColor face = composed(withAlpha(colors.dark ? Qt::white : Qt::black, shading), colors.control);
    const auto filled = [shading](const QColor &fill, const QColor &text) {
        const QColor away = text.lightnessF() > 0.5F ? Qt::black : Qt::white;
        return Look{composed(withAlpha(away, shading), fill), Qt::transparent, text};
    };
    switch (kind) {
    case ButtonKind::prominent:
        return filled(colors.accentFill, colors.onAccent);
    case ButtonKind::bordered:
        break;
    case ButtonKind::destructive:
        return {face, colors.controlEdge, textOn(palette, TextColor::red, face)};
    case ButtonKind::destructiveProminent:
        return filled(fillUnder(Qt::white, colors.red, palette), Qt::white);
    case ButtonKind::destructiveCaption:
        return {Qt::transparent, Qt::transparent, textColor(palette, TextColor::red)};
    }
    return {face, colors.controlEdge, colors.primary};
}

} // namespace

Button::Button(const QString &label, ButtonKind kind, ButtonSize size, QWidget *parent)
    : Pressable(parent), label_(label), kind_(kind), size_(size) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    FocusRing::install(this, metricsOf(kind, size).radius);
}

void Button::setSymbol(const QString &name) {
    if (name == symbol_)
        return;
    symbol_ = name;
    updateGeometry();
    update();
}

void Button::setBusy(bool busy) {
    if (busy == static_cast<bool>(busy_))
        return;
    if (busy) {
        busy_ = new ProgressIndicator(isFilled() ? TextColor::onAccent : TextColor::secondary, this);
        busy_->setGeometry(rect());
        busy_->setMaximumSize(busy_->sizeHint());
        busy_->move((width() - busy_->width()) / 2, (height() - busy_->height()) / 2);
        busy_->show();
    } else {
        delete busy_;
        busy_ = nullptr;
    }
    update();
    QAccessible::State changed;
    changed.busy = true;
    accessibleStateChanged(changed);
}

QFont Button::ownFont() const {
    return textFont(metricsOf(kind_, size_).text, font());
}

bool Button::isFilled() const {
    return kind_ == ButtonKind::prominent || kind_ == ButtonKind::destructiveProminent;
}

int Button::symbolWidth() const {
    if (symbol_.isEmpty())
        return 0;
    return scaled(metricsOf(kind_, size_).symbol + (label_.isEmpty() ? 0 : symbolGap), font());
}

QSize Button::sizeHint() const {
    const Metrics &metrics = metricsOf(kind_, size_);
    return {textWidth(ownFont(), label_) + symbolWidth() + scaled(2 * metrics.padding, font()),
            scaled(metrics.height, font())};
}

void Button::addAccessibleState(QAccessible::State &state) const {
    Pressable::addAccessibleState(state);
    state.busy = busy_ != nullptr;
}

void Button::paintEvent(QPaintEvent *) {
    const Metrics &metrics = metricsOf(kind_, size_);
    const Look look = lookOf(kind_, palette(), !isLit() ? 0 : isDown() ? 0.12 : 0.04);
    QPainter painter(this);
    dimIfDisabled(painter, *this);
    paintFrame(painter, rect(), metrics.radius, look.fill, look.edge);
    if (busy_)
        return;

    painter.setFont(ownFont());
    if (isLit() && kind_ == ButtonKind::destructiveCaption) {
        QFont underlined = painter.font();
        underlined.setUnderline(true);
        painter.setFont(underlined);
    }
    painter.setPen(look.text);
    const int text = textWidth(painter.font(), label_);
    const int symbol = symbolWidth();
    QRect content(0, 0, symbol + text, height());
    content.moveCenter(rect().center());
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    if (symbol > 0) {
        const double side = metrics.symbol * fontScale(font());
        QRectF square(mirrored ? content.right() + 1 - side : content.left(), (height() - side) / 2, side,
                      side);
        paintSymbol(painter, square, symbol_, look.text);
    }
    content.adjust(mirrored ? 0 : symbol, 0, mirrored ? -symbol : 0, 0);
    painter.drawText(content, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip, label_);
}

void Button::resizeEvent(QResizeEvent *) {
    if (busy_)
        busy_->move((width() - busy_->width()) / 2, (height() - busy_->height()) / 2);
}

} // namespace quorbit
