#include "ui/text/SymbolLabel.h"

#include "ui/look/ControlStyle.h"
#include "ui/look/Symbol.h"
#include "ui/look/TextStyle.h"
#include "ui/look/Theme.h"

#include <QPainter>

#include <cmath>

namespace quorbit {

SymbolLabel::SymbolLabel(const QString &name, double size, TextColor color, QWidget *parent)
    : QWidget(parent), AccessibleControl(this), name_(name), size_(size), color_(color) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SymbolLabel::setSymbol(const QString &name) {
    if (name == name_)
        return;
    name_ = name;
    update();
}

void SymbolLabel::setColor(TextColor color) {
    if (color == color_)
        return;
    color_ = color;
    update();
}

void SymbolLabel::setColumnWidth(double width) {
    if (width == columnWidth_)
        return;
    columnWidth_ = width;
    updateGeometry();
}

QSize SymbolLabel::sizeHint() const {
    const double scale = fontScale(font());
    const double width = columnWidth_ > 0 ? columnWidth_ : size_;
    return {static_cast<int>(std::ceil(width * scale)), static_cast<int>(std::ceil(size_ * scale))};
}

void SymbolLabel::addAccessibleState(QAccessible::State &state) const {
    if (accessibleName().isEmpty())
        state.invisible = true;
}

void SymbolLabel::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    dimIfDisabled(painter, *this);
    // A glyph may be a little wider than its column; its own square has a margin that allows it.
    const double side = size_ * fontScale(font());
    QRectF square(0, 0, side, side);
    square.moveCenter(QRectF(rect()).center());
    paintSymbol(painter, square, name_, shapeColor(palette(), color_));
}

} // namespace quorbit
