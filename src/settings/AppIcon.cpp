#include "settings/AppIcon.h"

#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {
constexpr int side = 112;
} // namespace

AppIcon::AppIcon(QWidget *parent)
    : QWidget(parent)
    , AccessibleControl(this)
    , drawing_(new QSvgRenderer(u":/quorbit/icons/quorbit.svg"_s, this)) {
    setFixedSize(side, side);
}

void AppIcon::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    drawing_->render(&painter, rect());
}

} // namespace quorbit
