#include "settings/AppIcon.h"

#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr int side = 112;
/// Up to this size the drawing with fewer and larger parts is used.
constexpr int smallSide = 24;

QString drawingPath(int size) {
    return size <= smallSide ? u":/quorbit/icons/quorbit-small.svg"_s : u":/quorbit/icons/quorbit.svg"_s;
}

} // namespace

QIcon applicationIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        QSvgRenderer(drawingPath(size)).render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

AppIcon::AppIcon(QWidget *parent)
    : QWidget(parent), AccessibleControl(this), drawing_(new QSvgRenderer(drawingPath(side), this)) {
    setFixedSize(side, side);
}

void AppIcon::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    drawing_->render(&painter, rect());
}

} // namespace quorbit
